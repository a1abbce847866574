#ifdef SONNEL_TOOL  // a build may lack it
#include "windows/KaraokeWindow.h"
#include "windows/LyricsPicture.h"

#include <chrono>
#include <cstdio>

#include <nlohmann/json.hpp>

namespace sonnel::test {
namespace {

using TraceTest = KaraokeWindow;
using nlohmann::json;

/// The steps that the command-line companion foretells for a song.
json Foretold(const std::string& song) {
    const std::string command =
        "'" SONNEL_TOOL "' trace '" + song + "' --json --report-ms 20 --compensation 3";
    std::FILE* const pipe = popen(command.c_str(), "r");
    const json trace = json::parse(pipe, nullptr, false);
    EXPECT_EQ(pclose(pipe), 0) << command;
    return trace["steps"];
}

TEST_F(TraceTest, AWholeSongIsShownAsForetoldPixelByPixel) {
    registry.Put(RegistryRoot::CurrentUser, Opzioni, "Compensazione", "3");
    for (const std::string song : {SONNEL_SONGS "/Row Your Boat", SONNEL_SONGS "/Frere Jacques"}) {
        const json steps = Foretold(song);
        ASSERT_GT(steps.size(), 80U) << song;
        window.reset();
        Open("\"" + song + ".lyk\"");
        window->mnuSoundPlay_Click();
        Lines page;
        Lines sung;
        std::size_t next = 0;
        QImage wanted = LyricsPicture(Lyrics(), Lyrics().width(), config, page, sung);
        for (int ms = 0; Playing(); ms += 20) {
            for (; next < steps.size() && steps[next]["ms"] == ms; ++next) {
                sung.clear();
                (steps[next]["kind"] == 1 ? page : sung) = steps[next]["lines"].get<Lines>();
                wanted = LyricsPicture(Lyrics(), Lyrics().width(), config, page, sung);
            }
            ASSERT_TRUE(Shot(Lyrics()) == wanted) << song << " at " << ms << " ms";
            rig.output.Ask(rig.output.rate / 50);
            rig.clock.Advance(std::chrono::milliseconds(20));
            rig.timer.Fire();
        }
        EXPECT_EQ(next, steps.size());
    }
}

}  // namespace
}  // namespace sonnel::test
#endif
