#include "fakes/SmfBuilder.h"
#include "platform/Text.h"
#include "platform/files/LineReader.h"
#include "song/LetturaEsatta.h"

#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

/// A MIDI file from a small score, whose ticks are tenths of a second: events are separated by
/// '|' and consist of a letter, the tick and what belongs to it: t text, l lyric, q tempo
/// (microseconds a quarter note), a new track. In texts \r \n \0 are written ^R ^N ^0.
std::string Score(const std::string& score, int format = 1) {
    SmfBuilder song(format, 5);
    std::istringstream events(score);
    for (std::string event; std::getline(events, event, '|');) {
        std::size_t read = 0;
        const auto tick =
            event[0] == 'a' ? 0U : static_cast<std::uint32_t>(std::stoul(event.substr(1), &read));
        std::string text = event.substr(std::min(event.size(), read + 2));
        for (const auto& [mark, byte] : {std::pair{"^R", '\r'}, {"^N", '\n'}, {"^0", '\0'}}) {
            for (std::size_t at = 0; (at = text.find(mark)) != std::string::npos;) {
                text.replace(at, 2, 1, byte);
            }
        }
        switch (event[0]) {
            case 'a':
                song.Track();
                break;
            case 'q':
                song.Tempo(tick, std::stoi(text));
                break;
            default:
                song.Text(tick, event[0] == 't' ? 1 : 5, text);
        }
    }
    return song.Bytes();
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
std::string SameWords(char kind, int count, int distance, const std::string& word) {
    std::string score;
    for (int i = 0; i < count; ++i) {
        score += std::string("|") + kind + std::to_string(100 + i * distance) + " " + word;
    }
    return score;
}

TEST(LeggiEsatto, ChoosesTheEventsThatAreWords) {
    const std::vector<std::pair<std::string, std::string>> scores{
        {"a|t0 @Lx|t5 junk|t100 \\Te|t105 xt |t110 /A|a|l100 \\Ly|l105 /ric |l110 s",
         "80:Text $EA|"},
        {"a|t100 \\one|a|l100 \\Ly|l105 /ric |l110 s|a|l100 more|l105 of|l110 it|l120 ",
         "80:Ly$Eric s|"},
        {"a|l100 few|a|l100 mo|l105 re |a" + SameWords('t', 25, 2, "no "), "80:more |"},
        {"a|t0 Title|t0 by me" + SameWords('t', 20, 1, "w "),
         "80:w w w w w w w w w w w w w w w w $Ew w w w |"},
        {"a" + SameWords('t', 19, 1, "w "), "it has no words"},
        {"a|l100 %a|l110 -|l120  |l130 @b", "it has no words"},
        {"a|t0 \\|t0 /", "it has no words"},
    };
    for (const auto& [score, pages] : scores) {
        EXPECT_EQ(Pages(Score(score)), pages) << score;
    }
    EXPECT_EQ(Pages(Score("a|l100 \\Ly|t100 \\Te|l105 ric|t105 /xt |l110 /s", 0)), "80:Te$Ext |");
    EXPECT_EQ(Pages(std::string("RIFF@\0\0\0RMIDdata \0\0\0", 20) + Score("a|l100 Word", 0)),
              "80:Word |");
}

TEST(LeggiEsatto, ReadsMarksHyphensAndBlanks) {
    const std::vector<std::pair<std::string, std::string>> scores{
        // Marks of both kinds, before, after and alone.
        {"a|l100 \\A |l110 /B |l120 C ^R|l130 D |l140 ^R^N|l150 E |l160 ^NF ",
         "80:A $EB C $ED $EE |155:F |"},
        {"a|l100 \\A ^N|l110 /B |l120 ^N|l130 C ", "80:A $EB $EC |"},
        {"a|l100 \\A |l110 /|l115  |l120 \\/B |l130 C^RD ", "80:A |105:B C$ED |"},
        // A joint in more than one of ten; the blanks before it stay.
        {"a|l100 \\hel-|l110 lo |l120 /on -  |l130 ward ", "80:hello $Eon ward |"},
        {"a|l100 \\a- |l110 /b |l120 c |l130 d |l140 e |l150 f |l160 g |l170 h |l180 i |l190 j ",
         "80:a- $Eb c d e f g h i j |"},
        // No blank in nineteen of twenty syllables.
        {"a|l100 \\hel-|l110 lo|l120 /my|l130 dear", "80:hello $Emy dear |"},
        {"a|l100 \\one|l110 /two |l115 -|l120 x", "80:one $Etwo x |"},
        {"a|l100 \\N^0U|l110 /L ", "80:NU$EL |"},
        {"a|l100 \\$Ever |l110 /$|l120 Es ", "80:$ Ever $E$ Es |"},
        {"a|l100 \\perch\xE9 |l110 /no ", "80:perch\xC3\xA9 $Eno |"},
        {"a|l100 \\\xC3\xA9 |l110 /\xE2\x82\xAC ", "80:\xC3\xA9 $E\xE2\x82\xAC |"},
    };
    for (const auto& [score, pages] : scores) {
        EXPECT_EQ(Pages(Score(score)), pages) << score;
    }
}

TEST(LeggiEsatto, LaysOutWhatHasNoMarksOrIsTooLong) {
    const std::string ten = "123456789 ";
    const std::vector<std::pair<std::string, std::string>> scores{
        {"a|l100 a |l114 b |l129 c |l168 d |l208 e ", "80:a b $Ec $Ed |188:e |"},
        {"a" + SameWords('l', 5, 10, ten), "80:" + ten + ten + ten + ten + "$E" + ten + "|"},
        {"a|l100 " + ten + ten + ten + "x|l110  y|l120 z ", "80:" + ten + ten + ten + "x $Eyz |"},
        {"a|l100 \\" + ten + ten + ten + ten + "|l110 x |l120 /y ",
         "80:" + ten + ten + "$E" + ten + ten + "x $Ey |"},
        {"a|l100 \\x|l110 /y" + std::string(50, '-') + "z ",
         "80:x$Ey" + std::string(50, '-') + "z |"},
        // Five lines in parts of three and two, the cut moved to the longer pause.
        {"a|l100 \\A |l110 /B |l120 /C |l130 /D |l140 /E ", "80:A $EB $EC |125:D $EE |"},
        {"a|l100 \\A |l110 /B |l120 /C |l130 /D |l150 /E ", "80:A $EB $EC $ED |135:E |"},
        {"a|l100 \\A |l110 /B |l130 /C |l140 /D |l150 /E ", "80:A $EB |115:C $ED $EE |"},
        {"a|l100 \\A |l500 /B |l510 /C |l520 /D |l530 /E ", "80:A |120:|480:B $EC $ED $EE |"},
    };
    for (const auto& [score, pages] : scores) {
        EXPECT_EQ(Pages(Score(score)), pages) << score;
    }
}

TEST(LeggiEsatto, TakesTimesFromTheWholeTempoMap) {
    using testing::ElementsAre;
    // 120 beats a minute, then 60 from tick 100 and 240 from tick 160, in another track.
    EXPECT_THAT(Read(Score("a|q100 1000000|q160 250000|a|l90 \\A |l130 /B |l155 C |l200 D ")),
                ElementsAre("0007001A $EB C D ", "00090022", "00160026", "00210028", "002400210"));
    EXPECT_THAT(Read(Score("a|l1 \\A |l4 \\B |l4 \\C |l30 \\D |l131 \\E |l231 \\F ")),
                ElementsAre("0000001A ", "00001022", "0000201B ", "00004022", "0000401C ",
                            "00004022", "0001001D ", "00030022", "0005001", "0011101E ", "00131022",
                            "0021101F ", "00231022"));
    EXPECT_THAT(Read(Score("a|l100 A |l1000000 B ")),
                ElementsAre(testing::StartsWith("it has words after 9,999.9 seconds")));
    const std::string many = "a" + SameWords('l', 32760, 1, "w ");
    EXPECT_THAT(Read(Score(many)), ElementsAre(testing::HasSubstr("32,750 events")));
}

TEST(LeggiEsatto, TakesTitleAndAuthorFromTheFileOrItsName) {
    const std::string word = "|l100 A |l110 B ";
    const auto header = [&word](const std::string& fields, const std::string& name) {
        std::string found;
        std::string score = "a";
        score.append(fields).append(word);
        for (const std::string& line : Read(Score(score), name)) {
            if (line.starts_with('*')) {
                found.append(line).append(";");
            }
        }
        return found;
    };
    EXPECT_EQ(header("|t0 @TNoel|t0 @TPere|t0 @IMe|t0 @IYou", "x - y"), "*TINoel;*AUPere;*BYMe;");
    EXPECT_EQ(header("|t0 @TNoel|t0 @T", "Pere - Song - live"), "*TINoel;*AUPere;");
    EXPECT_EQ(header("", "Pere - Song - live"), "*TISong - live;*AUPere;");
    EXPECT_EQ(header("", "Song"), "*TISong;");
}

}  // namespace
}  // namespace sonnel::test
