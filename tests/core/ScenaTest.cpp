#include "fakes/ScriptedMsgBox.h"
#include "player/Scena.h"
#include "song/LeggiKaraoke.h"

#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

/// A page "ab / cd" from 2 s on, sung at 4, 4.5, 9 and 9.2 s; cleared at 12 s; a page "ef" at 18 s,
/// sung at 20 s.
Timeline SceneSong() {
    Timeline timeline;
    InformazioniBrano info;
    ScriptedMsgBox msgBox;
    (void)LeggiRighe(
        "Cantabelle1.0\r\n0002001ab$Ecd\r\n00040021\r\n00045022\r\n00090025\r\n00092026\r\n"
        "0012001\r\n0018001ef\r\n00200022\r\n",
        true, timeline, info, msgBox);
    return timeline;
}

/// A scene as "title", the page's lines with '/', the characters sung, ">" the next line, dots.
std::string Shown(double seconds, const MostraScena& what = {}) {
    const Timeline song = SceneSong();
    const Scena scene = ScenaA(song, seconds * 10, what);
    std::ostringstream text;
    for (std::size_t i = 0; i < scene.righe.size(); ++i) {
        text << (i > 0 ? "/" : "") << scene.righe[i];
    }
    if (!scene.righe.empty()) {
        text << " " << scene.cantati;
    }
    text << (scene.titolo ? "title" : "") << (scene.prossima.empty() ? "" : " >" + scene.prossima)
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

}  // namespace
}  // namespace sonnel::test
