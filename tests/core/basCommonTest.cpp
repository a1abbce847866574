#include "fakes/ClockedEvents.h"
#include "fakes/ManualClock.h"
#include "ui/basCommon.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

TEST(basCommon, ReplacesEveryOccurrence) {
    struct Case {
        std::string text, search, replacement, result;
        int count;
    };
    const std::vector<Case> cases{
        {"a,b,,c", ",", ", ", "a, b, , c", 3},
        {"aaaa", "aa", "a", "aa", 2},
        {"xx", "x", "xx", "xxxx", 2},
        {"abc", "", "x", "abc", 0},
        {"", "x", "y", "", 0},
        {"aXa", "x", "y", "aXa", 0},
        {"aba", "aba", "", "", 1},
        {std::string(40'000, 'x'), "x", "", "", 32'767},
    };
    for (const Case& c : cases) {
        std::string text = c.text;
        EXPECT_EQ(SostituisciTesto(text, c.search, c.replacement), c.count) << c.text;
        EXPECT_EQ(text, c.result);
    }
}

TEST(basCommon, WaitsFromWholeSecondToWholeSecond) {
    using std::chrono::milliseconds;
    struct Case {
        double start;
        std::int16_t seconds;
        double end;
    };
    constexpr double Midnight = 86400;
    const std::vector<Case> cases{
        {10.4, 3, 13},
        {10.6, 3, 14},
        {10.5, 3, 13},
        {11.5, 3, 15},
        {10.4, 0, 10.4},
        {10.6, 0, 11},
        {10.6, -2, 10.6},
        {Midnight - 0.7, 3, Midnight + 2},
        {Midnight - 0.2, 1, Midnight + 1},
    };
    for (const Case& c : cases) {
        for (const milliseconds event : {milliseconds(70), milliseconds::max()}) {
            ManualClock clock;
            clock.startOfDay = c.start;
            ClockedEvents events(clock);
            events.nextEvent = event;
            Attendi(c.seconds, clock, events);
            const double end = c.start + std::chrono::duration<double>(clock.now).count();
            EXPECT_GE(end, c.end);
            EXPECT_LE(end, c.end + 0.0021) << c.start;
            if (event == milliseconds::max()) {
                EXPECT_LE(events.turns, 1) << "sleeps instead of turning";
            }
        }
    }
}

TEST(basCommon, CentresAWindow) {
    const Posizione place = CentraForm(15000, 10001, 5000, 12000);
    EXPECT_EQ(place.left, 5000);
    EXPECT_EQ(place.top, -999.5F);
}

TEST(basCommon, EndsADirectoryWithASeparator) {
    const std::string separator(1, static_cast<char>(std::filesystem::path::preferred_separator));
    EXPECT_EQ(AggiungiBarra(""), separator);
    EXPECT_EQ(AggiungiBarra("Karaoke"), "Karaoke" + separator);
    EXPECT_EQ(AggiungiBarra("Karaoke" + separator), "Karaoke" + separator);
}

}  // namespace
}  // namespace sonnel::test
