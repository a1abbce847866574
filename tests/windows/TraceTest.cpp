#ifdef SONNEL_TOOL  // a build may lack it
#include "windows/LyricsPicture.h"
#include "windows/PlayerRig.h"

#include <cstdio>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace sonnel::test {
namespace {

using nlohmann::json;

/// The steps that the command-line companion foretells for a song.
json Foretold(const std::string& song) {
    const std::string command =
        "'" SONNEL_TOOL "' trace '" + song + "' --json --report-ms 10 --compensation 3";
    std::FILE* const pipe = popen(command.c_str(), "r");
    const json trace = json::parse(pipe, nullptr, false);
    EXPECT_EQ(pclose(pipe), 0) << command;
    return trace["steps"];
}

TEST(TraceTest, AWholeSongIsShownAsForetoldPixelByPixel) {
    PlayerRig player;
    player.Store("Opzioni", "Compensazione", "3");
    for (const std::string song : {SONNEL_SONGS "/Row Your Boat", SONNEL_SONGS "/Frere Jacques"}) {
        const json steps = Foretold(song);
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
