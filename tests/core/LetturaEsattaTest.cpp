#include "fakes/KarScore.h"
#include "platform/Text.h"
#include "platform/files/LineReader.h"
#include "song/LetturaEsatta.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

using namespace std::string_literals;

/// A MIDI file from a small score, see KarScore.
std::string Score(const std::string& score, char format = 1) {
    std::string bytes = KarScore(score).Bytes();
    bytes[9] = format;
    return bytes;
}

/// The lines of the song text after its first one; or the reason for which there is none.
std::vector<std::string> Read(const std::string& bytes, const std::string& name = "") {
    const auto file = ReadSmf(bytes);
    const auto made = file ? LeggiEsatto(*file, name) : file.error();
    if (!made) {
        return {made.error().text};
    }
    std::vector<std::string> found;
    LineReader lines(made->Testo);
    EXPECT_EQ(lines.Next(), "Cantabelle1.0 by Sonnel Karaoke Player");
    while (const auto line = lines.Next()) {
        found.emplace_back(*line);
    }
    return found;
}

/// The pages only, each as "time:text", separated by blanks.
std::string Pages(const std::string& bytes) {
    std::string pages;
    for (const std::string& line : Read(bytes)) {
        const bool page = line.size() > 6 && line.substr(5, 2) == "01";
        pages += page ? std::to_string(std::stoi(line.substr(0, 5))) + ":" + line.substr(7) + "|"
                      : (line.size() > 6 && line.substr(5, 2) == "02" ? "" : line);
    }
    return pages;
}

/// A score of words with the same distance.
std::string SameWords(int count, int distance, const std::string& word) {
    std::string score;
    for (int i = 0; i < count; ++i) {
        score.append("|").append(std::to_string(100 + i * distance)).append(" ").append(word);
    }
    return score;
}

TEST(LeggiEsatto, ChoosesTheEventsThatAreWords) {
    const std::vector<std::pair<std::string, std::string>> scores{
        {"track|0 @Lx|5 junk|100 \\Te|105 xt |110 /A|track|100 lyric \\Ly|105 lyric /ric |110 "
         "lyric s",
         "80:Text $EA|"},
        {"track|100 \\one|track|100 lyric \\Ly|105 lyric /ric |110 lyric s|track|100 lyric "
         "more|105 lyric of|110 lyric it|120 lyric ",
         "80:Ly$Eric s|"},
        {"track|100 lyric few|track|100 lyric mo|105 lyric re |track" + SameWords(25, 2, "no "),
         "80:more |"},
        {"track|0 Title|0 by me" + SameWords(20, 1, "w "),
         "80:w w w w w w w w w w w w w w w w $Ew w w w |"},
        {"track" + SameWords(19, 1, "w "), "it has no words"},
        {"track|100 lyric %a|110 lyric -|120 lyric  |130 lyric @b", "it has no words"},
        {"track|0 \\|0 /", "it has no words"},
    };
    for (const auto& [score, pages] : scores) {
        EXPECT_EQ(Pages(Score(score)), pages) << score;
    }
    EXPECT_EQ(Pages(Score("track|100 lyric \\Ly|100 \\Te|105 lyric ric|105 /xt |110 lyric /s", 0)),
              "80:Te$Ext |");
    EXPECT_EQ(
        Pages(std::string("RIFF@\0\0\0RMIDdata \0\0\0", 20) + Score("track|100 lyric Word", 0)),
        "80:Word |");
}

TEST(LeggiEsatto, ReadsMarksHyphensAndBlanks) {
    const std::vector<std::pair<std::string, std::string>> scores{
        // Marks of both kinds, before, after and alone.
        {"track|100 lyric \\A |110 lyric /B |120 lyric C \r|130 lyric D |140 lyric \r\n|150 lyric "
         "E |160 lyric \nF ",
         "80:A $EB C $ED $EE |155:F |"},
        {"track|100 lyric \\A \n|110 lyric /B |120 lyric \n|130 lyric C ", "80:A $EB $EC |"},
        {"track|100 lyric \\A |110 lyric /|115 lyric  |120 lyric \\/B |130 lyric C\rD ",
         "80:A |105:B C$ED |"},
        // A joint in more than one of ten; the blanks before it stay.
        {"track|100 lyric \\hel-|110 lyric lo |120 lyric /on -  |130 lyric ward ",
         "80:hello $Eon ward |"},
        {"track|100 lyric \\a- |110 lyric /b |120 lyric c |130 lyric d |140 lyric e |150 lyric f "
         "|160 lyric g |170 lyric h |180 lyric i |190 lyric j ",
         "80:a- $Eb c d e f g h i j |"},
        // No blank in nineteen of twenty syllables.
        {"track|100 lyric \\hel-|110 lyric lo|120 lyric /my|130 lyric dear",
         "80:hello $Emy dear |"},
        {"track|100 lyric \\one|110 lyric /two |115 lyric -|120 lyric x", "80:one $Etwo x |"},
        {"track|100 lyric \\N\0U|110 lyric /L "s, "80:NU$EL |"},
        {"track|100 lyric \\$Ever |110 lyric /$|120 lyric Es ", "80:$ Ever $E$ Es |"},
        {"track|100 lyric \\perch\xE9 |110 lyric /no ", "80:perch\xC3\xA9 $Eno |"},
        {"track|100 lyric \\\xC3\xA9 |110 lyric /\xE2\x82\xAC ", "80:\xC3\xA9 $E\xE2\x82\xAC |"},
    };
    for (const auto& [score, pages] : scores) {
        EXPECT_EQ(Pages(Score(score)), pages) << score;
    }
}

TEST(LeggiEsatto, LaysOutWhatHasNoMarksOrIsTooLong) {
    const std::string ten = "123456789 ";
    const std::vector<std::pair<std::string, std::string>> scores{
        {"track|100 lyric a |114 lyric b |129 lyric c |168 lyric d |208 lyric e ",
         "80:a b $Ec $Ed |188:e |"},
        {"track" + SameWords(5, 10, "lyric " + ten),
         "80:" + ten + ten + ten + ten + "$E" + ten + "|"},
        {"track|100 lyric " + ten + ten + ten + "x|110 lyric  y|120 lyric z ",
         "80:" + ten + ten + ten + "x $Eyz |"},
        {"track|100 lyric \\" + ten + ten + ten + ten + "|110 lyric x |120 lyric /y ",
         "80:" + ten + ten + "$E" + ten + ten + "x $Ey |"},
        {"track|100 lyric \\x|110 lyric /y" + std::string(50, '-') + "z ",
         "80:x$Ey" + std::string(50, '-') + "z |"},
        // Five lines in parts of three and two, the cut moved to the longer pause.
        {"track|100 lyric \\A |110 lyric /B |120 lyric /C |130 lyric /D |140 lyric /E ",
         "80:A $EB $EC |125:D $EE |"},
        {"track|100 lyric \\A |110 lyric /B |120 lyric /C |130 lyric /D |150 lyric /E ",
         "80:A $EB $EC $ED |135:E |"},
        {"track|100 lyric \\A |110 lyric /B |130 lyric /C |140 lyric /D |150 lyric /E ",
         "80:A $EB |115:C $ED $EE |"},
        {"track|100 lyric \\A |500 lyric /B |510 lyric /C |520 lyric /D |530 lyric /E ",
         "80:A |120:|480:B $EC $ED $EE |"},
    };
    for (const auto& [score, pages] : scores) {
        EXPECT_EQ(Pages(Score(score)), pages) << score;
    }
}

TEST(LeggiEsatto, TakesTimesFromTheWholeTempoMap) {
    using testing::ElementsAre;
    // 120 beats a minute, then 60 from tick 100 and 240 from tick 160, in another track.
    EXPECT_THAT(Read(Score("track|100 tempo 1000000|160 tempo 250000|track|90 lyric \\A |130 lyric "
                           "/B |155 lyric C |200 lyric D ")),
                ElementsAre("0007001A $EB C D ", "00090022", "00160026", "00210028", "002400210"));
    EXPECT_THAT(Read(Score("track|1 lyric \\A |4 lyric \\B |4 lyric \\C |30 lyric \\D |131 lyric "
                           "\\E |231 lyric \\F ")),
                ElementsAre("0000001A ", "00001022", "0000201B ", "00004022", "0000401C ",
                            "00004022", "0001001D ", "00030022", "0005001", "0011101E ", "00131022",
                            "0021101F ", "00231022"));
    EXPECT_THAT(Read(Score("track|100 lyric A |1000000 lyric B ")),
                ElementsAre(testing::StartsWith("it has words after 9,999.9 seconds")));
    const std::string many = "track" + SameWords(32760, 1, "lyric w ");
    EXPECT_THAT(Read(Score(many)), ElementsAre(testing::HasSubstr("32,750 events")));
}

TEST(LeggiEsatto, TakesTitleAndAuthorFromTheFileOrItsName) {
    const std::string word = "|100 lyric A |110 lyric B ";
    const auto header = [&word](const std::string& fields, const std::string& name) {
        std::string found;
        std::string score = "track";
        score.append(fields).append(word);
        for (const std::string& line : Read(Score(score), name)) {
            if (line.starts_with('*')) {
                found.append(line).append(";");
            }
        }
        return found;
    };
    EXPECT_EQ(header("|0 @TNoel|0 @TPere|0 @IMe|0 @IYou", "x - y"), "*TINoel;*AUPere;*BYMe;");
    EXPECT_EQ(header("|0 @TNoel|0 @T", "Pere - Song - live"), "*TINoel;*AUPere;");
    EXPECT_EQ(header("", "Pere - Song - live"), "*TISong - live;*AUPere;");
    EXPECT_EQ(header("", "Song"), "*TISong;");
}

}  // namespace
}  // namespace sonnel::test
