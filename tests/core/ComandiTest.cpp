#include "player/AbilitaFunzioni.h"
#include "player/FormattaTempo.h"
#include "player/PostoFinestra.h"
#include "player/RigaComando.h"

#include <map>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

using Lines = std::map<std::string, std::string>;

TEST(CommandLineTest, OneQuoteInFrontTakesTheLastCharacterWithIt) {
    const Lines cases{{"", ""},        {"\"", ""},     {"\"\"", ""},   {"\"a b\"", "a b"},
                      {"\"a b", "a "}, {"a\"", "a\""}, {"a b", "a b"}, {"\"\"a\"\"", "\"a\""}};
    for (const auto& [line, bare] : cases) {
        EXPECT_EQ(SenzaVirgolette(line), bare) << line;
    }
}

TEST(CommandLineTest, TheSongIsNamedWithoutApostrophesAndExtension) {
    // "ad.ly": any four characters of ".mid.lyk" in a row count as an extension.
    const Lines cases{{"/s/A.lyk", "/s/A"},
                      {"/s/A.mid", "/s/A"},
                      {"/s/A.LYK", "/s/A.LYK"},
                      {"'/s/A.lyk'", "/s/A"},
                      {"'A.lyk", "A"},
                      {"A'", "A"},
                      {"''A b''", "'A b'"},
                      {"ad.ly", "a"},
                      {".lyk", ""},
                      {"più.lyk", "più"},
                      {"", ""},
                      {"'", ""},
                      {"d", "d"},
                      {"'.ly'", ".ly"}};
    for (const auto& [line, song] : cases) {
        EXPECT_EQ(BranoDaRiga(line), song) << line;
    }
}

TEST(TimeTextTest, MinutesAndTwoDigitsOfSeconds) {
    const std::vector<std::tuple<std::int32_t, std::string>> cases{
        {0, "0' 00\""},           {9, "0' 09\""},   {59, "0' 59\""},
        {60, "1' 00\""},          {187, "3' 07\""}, {3600, "60' 00\""},
        {2147484, "35791' 24\""}, {-1, "-1' 59\""}, {-60, "-1' 00\""}};
    for (const auto& [seconds, text] : cases) {
        EXPECT_EQ(FormattaTempo(seconds), text);
    }
}

/// The usable commands, one letter each: Open, Calibrate, Play, pAuse, Stop, Info, oPtions button,
/// sLider, Timer of the slider.
std::string Usable(MciMode mode, const std::string& file, std::int32_t position) {
    const StatoComandi state = AbilitaFunzioni(mode, file, position);
    const std::vector<std::pair<bool, char>> commands{
        {state.FileLoad, 'O'},       {state.VisCalibratura, 'C'}, {state.SoundPlay, 'P'},
        {state.SoundPause, 'A'},     {state.SoundStop, 'S'},      {state.VisInfo, 'I'},
        {state.BottoneOpzioni, 'p'}, {state.Cursore, 'L'},        {state.TimerCursore, 'T'}};
    std::string usable;
    for (const auto& [on, letter] : commands) {
        usable += on ? std::string(1, letter) : "";
    }
    return usable;
}

TEST(CommandStatesTest, FollowTheSequencer) {
    EXPECT_EQ(Usable(MciMode::NotReady, "", 0), "OCp");
    EXPECT_EQ(Usable(MciMode::Stopped, "a.MID", 0), "OCPIpL") << "never started: no Stop";
    EXPECT_EQ(Usable(MciMode::Stopped, "a.MID", 1), "OCPSIpL");
    EXPECT_EQ(Usable(MciMode::Paused, "a.MID", 1), "OCPSIpL");
    EXPECT_EQ(Usable(MciMode::Seeking, "a.MID", 1), "OCPSIpL");
    EXPECT_EQ(Usable(MciMode::Open, "a.MID", 0), "OCPIpL");
    EXPECT_EQ(Usable(MciMode::Playing, "a.MID", 0), "AT");
    EXPECT_EQ(Usable(MciMode::Playing, "a.MID", 1), "AST");
    EXPECT_EQ(Usable(MciMode::Recording, "a.MID", 1), "AST");
}

TEST(WindowPlaceTest, AWindowOpensWhereItCanBeSeen) {
    constexpr int Far = 2147483647;
    constexpr int Minimum = 8300;
    const std::vector<Rettangolo> screens{{0, 0, 15000, 12000}, {15000, 0, 15000, 12000}};
    // The place it was closed at, and the place it gets.
    const std::vector<std::pair<Rettangolo, Rettangolo>> cases{
        {{300, 600, 9000, 7500}, {300, 600, 9000, 7500}},
        {{-6000, -100, 9000, 7500}, {-6000, -100, 9000, 7500}},
        {{15100, 600, 9000, 7500}, {15100, 600, 9000, 7500}},
        {{30100, 600, 9000, 7500}, {0, 0, 9000, 7500}},
        {{-8900, 600, 9000, 7500}, {0, 0, 9000, 7500}},
        {{300, -7000, 9000, 7500}, {0, 0, 9000, 7500}},
        {{300, 11900, 9000, 7500}, {0, 0, 9000, 7500}},
        {{0, 0, Far, Far}, {0, 0, 15000, 12000}},
        {{Far, -Far - 1, Far, Far}, {0, 0, 15000, 12000}},
        {{-Far - 1, -Far - 1, -Far - 1, -Far - 1}, {0, 0, Minimum, 1440}}};
    for (const auto& [closed, opened] : cases) {
        const Rettangolo place = PostoVisibile(closed, Minimum, screens);
        EXPECT_EQ(place, opened) << closed.left << ' ' << closed.top << ": " << place.left << ' '
                                 << place.top << ' ' << place.width << ' ' << place.height;
    }
}

}  // namespace
}  // namespace sonnel::test
