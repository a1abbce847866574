#ifdef SONNEL_TOOL  // a build may lack it
#include "windows/LyricsPicture.h"
#include "windows/PlayerRig.h"

#include <QProcess>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace sonnel::test {
namespace {

using nlohmann::json;

/// The steps of a song as the command-line tool computes them. The window is handed the same steps
/// by the same code: what is tested is that it draws each of them, and when.
json Computed(const QString& song) {
    QProcess tool;
    tool.start(SONNEL_TOOL, {"trace", song, "--json", "--report-ms", "10", "--compensation", "3"});
    EXPECT_TRUE(tool.waitForFinished() && tool.exitCode() == 0);
    return json::parse(tool.readAllStandardOutput().toStdString(), nullptr, false)["steps"];
}

TEST(TraceTest, AWholeSongIsShownAsComputedPixelByPixel) {
    PlayerRig player;
    player.Store("Opzioni", "Compensazione", "3");
    for (const std::string song : {SONNEL_SONGS "/Row Your Boat", SONNEL_SONGS "/Frere Jacques"}) {
        const json steps = Computed(QString::fromStdString(song));
        ASSERT_GT(steps.size(), 80U) << song;
        player.Open("\"" + song + ".lyk\"");
        player.window->mnuSoundPlay_Click();
        Lines page;
        Lines sung;
        std::size_t next = 0;
        QImage wanted;
        for (int ms = 0; player.Playing(); ms += 10) {
            const bool first = wanted.isNull();
            const std::size_t before = next;
            for (; next < steps.size() && steps[next]["ms"] == ms; ++next) {
                sung.clear();
                (steps[next]["kind"] == 1 ? page : sung) = steps[next]["lines"].get<Lines>();
            }
            if (first || next != before) {
                wanted = LyricsPicture(*player.lyrics, player.lyrics->width(), player.config, page,
                                       sung);
            }
            if (ms % 20 == 0) {
                ASSERT_TRUE(Shot(*player.lyrics) == wanted) << song << " at " << ms << " ms";
            }
            player.rig.Run(10);
        }
        EXPECT_EQ(next, steps.size());
    }
}

}  // namespace
}  // namespace sonnel::test
#endif
