#include "fakes/ScriptedMsgBox.h"
#include "player/Scena.h"
#include "song/LeggiKaraoke.h"

#include <cstdint>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

/// A page "ab / cd" from 2 s on, sung at 4, 4.5, 9 and 9.2 s; cleared at 12 s; a page "ef" at 18 s,
/// sung at 20 s.
constexpr const char* kSong =
    "0002001ab$Ecd\r\n00040021\r\n00045022\r\n00090025\r\n00092026\r\n"
    "0012001\r\n0018001ef\r\n00200022\r\n";

/// A scene as "title", the page's lines with '/', the characters sung, ">" the next line, dots.
std::string Shown(double seconds, const MostraScena& what = {}, const std::string& lines = kSong) {
    Timeline song;
    InformazioniBrano info;
    ScriptedMsgBox msgBox;
    (void)LeggiRighe("Cantabelle1.0\r\n" + lines, true, song, info, msgBox);
    while (song.UltimoEvento < song.NumEventi() &&
           song.Eventi(static_cast<std::int16_t>(song.UltimoEvento + 1)).Tempo <= seconds * 10) {
        ++song.UltimoEvento;
    }
    const Scena scene = ScenaA(song, seconds * 10, what);
    std::ostringstream text;
    for (std::size_t i = 0; i < scene.righe.size(); ++i) {
        text << (i > 0 ? "/" : "") << scene.righe[i];
    }
    if (!scene.righe.empty()) {
        text << " " << scene.cantati;
    }
    text << (scene.titolo ? "title" : "") << (scene.annuncia ? " >" + scene.prossima : "")
         << std::string(static_cast<std::size_t>(scene.punti), '.');
    return text.str();
}

TEST(Scena, FollowsTheSong) {
    const std::vector<std::pair<double, std::string>> moments{
        {0, "title"},       {1.5, "title..."},      {2, "ab/cd 0.."},    {3.1, "ab/cd 0."},
        {4, "ab/cd 0"},     {4.25, "ab/cd 0.5"},    {4.5, "ab/cd 1"},    {4.9, "ab/cd 1.5"},
        {5.3, "ab/cd 2"},   {5.9, "ab/cd 2"},       {6.5, "ab/cd 2..."}, {8.5, "ab/cd 2."},
        {9, "ab/cd 2 >ef"}, {9.1, "ab/cd 3.5 >ef"}, {10, "ab/cd 6 >ef"}, {12, ""},
        {17.5, "..."},      {18, "ef 0.."},         {20.4, "ef 1"},      {99, "ef 2"}};
    for (const auto& [seconds, shown] : moments) {
        EXPECT_EQ(Shown(seconds), shown) << seconds;
    }
    const MostraScena nothing{false, false, false, false};
    EXPECT_EQ(Shown(1.5, nothing), "");
    EXPECT_EQ(Shown(4.25, nothing), "ab/cd 1");
    EXPECT_EQ(Shown(9.1, nothing), "ab/cd 5");
}

TEST(Scena, MakesTheBestOfBadSongs) {
    const std::vector<std::tuple<std::string, double, std::string>> songs{
        {"", 9, "title"},
        {"00090021\r\n", 8, "title"},                              // words without a page
        {"0001001a\r\n000100299999\r\n", 1.4, "a 1.5"},            // more than there are
        {"0001001abc\r\n00010023\r\n00020021\r\n", 2.4, "abc 3"},  // fewer than before
        {"0001001a$E$E\r\n0010001$E$Eb\r\n00100021\r\n", 9, "a 0."},
        {"0001001a\r\n00010021\r\n0010001$Eb\r\n", 2, "a 1 >b"}};
    for (const auto& [lines, seconds, shown] : songs) {
        EXPECT_EQ(Shown(seconds, {}, lines), shown) << lines;
    }
}

}  // namespace
}  // namespace sonnel::test
