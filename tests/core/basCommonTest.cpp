#include "fakes/ClockedEvents.h"
#include "fakes/ManualClock.h"
#include "ui/basCommon.h"

#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

TEST(basCommon, ReplacesEveryOccurrence) {
    const std::vector<std::tuple<std::string, std::string, std::string, std::string, int>> cases{
        {"a,b,,c", ",", ", ", "a, b, , c", 3},
        {"aaaa", "aa", "a", "aa", 2},
        {"abc", "", "x", "abc", 0},
        {"", "x", "y", "", 0},
        {"aXa", "x", "y", "aXa", 0},
        {std::string(40'000, 'x'), "x", "", "", 32'767}};
    for (const auto& [text, search, replacement, result, count] : cases) {
        std::string changed = text;
        EXPECT_EQ(SostituisciTesto(changed, search, replacement), count) << text;
        EXPECT_EQ(changed, result);
    }
}

TEST(basCommon, WaitsFromWholeSecondToWholeSecond) {
    using std::chrono::milliseconds;
    constexpr double Midnight = 86400;
    const std::vector<std::tuple<double, std::int16_t, double>> cases{
        {10.4, 3, 13},   {10.6, 3, 14}, {10.5, 3, 13},    {11.5, 3, 15},
        {10.4, 0, 10.4}, {10.6, 0, 11}, {10.6, -2, 10.6}, {Midnight - 0.7, 3, Midnight + 2}};
    for (const auto& [start, seconds, end] : cases) {
        for (const milliseconds event : {milliseconds(70), milliseconds::max()}) {
            ManualClock clock;
            clock.startOfDay = start;
            ClockedEvents events(clock);
            events.nextEvent = event;
            Attendi(seconds, clock, events);
            const double now = start + std::chrono::duration<double>(clock.now).count();
            EXPECT_NEAR(now, end + 0.001, 0.0011) << start;
            EXPECT_TRUE(events.turns <= 1 || event == milliseconds(70)) << "turns without an event";
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
