#include "convert/EstraiParole.h"
#include "convert/ScriviLyk.h"
#include "fakes/KarScore.h"
#include "fakes/TempDirectory.h"
#include "ui/basCommon.h"

#include <cerrno>
#include <utility>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

using namespace std::string_literals;

constexpr std::string_view FirstLine = "Cantabelle1.0 by Sonnel Karaoke Player\r\n";

Estrazione Extracted(Midifile& midifile) {
    const auto day = [](const std::string& name) {
        return name == "SOURCE_DATE_EPOCH" ? "1794873599"s : ""s;
    };
    return EstraiParole(midifile, *BaseTempi::Leggi(midifile), DataOdierna(day));
}

/// What a file becomes: the lines of its LYK after the first one, each with "|" at its end, and the
/// number of the error that ended its opening or its extraction.
std::string Converted(const std::string& bytes) {
    Midifile midifile;
    EXPECT_FALSE(midifile.OpenContent(bytes));
    if (const auto base = BaseTempi::Leggi(midifile); !base) {
        return "open " + std::to_string(base.error().number);
    }
    const Estrazione result = Extracted(midifile);
    EXPECT_TRUE(result.Testo.starts_with(FirstLine));
    std::string text = result.Testo.substr(FirstLine.size());
    SostituisciTesto(text, "\r\n", "|");
    return text + (result.Errore ? "error " + std::to_string(result.Errore->number) : "");
}

struct Golden {
    const char* score;
    const char* lines;
    int division = 480;
};

TEST(ConversioneKar, TurnsScoresIntoPages) {
    const std::vector<Golden> cases = {
        {"0 tempo 500000|0 @KMIDI KARAOKE FILE|0 @V0100|0 @ISomebody|0 @TThe Title|0 @T|"
         "0 @TThe Author|0 @Tmore|0 @Imore|0 @|1 dropped|5 \\Hel|7 lo",
         "*VESPConv 4.1.11|*DA16/11/26|*BYSomebody|*TIThe Title|*AU|*AUThe Author|"
         "0000001Hello|00005023|00007025|"},
        {"0 tempo 500000|100 \\One|110  two|120 \\Hello|125  world|132 /again",
         "0008001One two|00100023|00110027|"
         "0011101Hello world$Eagain|00120025|001250211|001320218|"},
        // Three lines a page, begun in any way.
        {"0 tempo 500000|20 /a|30 /b|40 /c|50 /d",
         "0000001a$Eb$Ec|00020021|00030024|00040027|0004101d|00050021|"},
        // Pauses of 1, 1, 1, 2, 20, 21, 100 and 101.
        {"0 tempo 500000|0 \\a|1 \\b|2 c|3 \\d|5 e|7 \\f|27 \\g|48 \\h|148 \\i|249 \\j",
         "0000001a|00000021|0000101bc|00001021|00002022|0000301de|00004021|00005022|"
         "0000601f|00007021|0000801g|00027021|0002801h|00048021|0012801i|00148021|"
         "0016801|0022901j|00249021|"},
        {"0 tempo 500000|10 \\a|20 |30 \\b|40 @Tlate",
         "0000001a|00010021|00020021|*TIlate|0002101b|00030021|"},
        // Halves go to the even tenth, and to the even beat: 187.5 and 312.5 of them.
        {"0 tempo 500000|=48 \\a|=144 b|=1000 c|=1440 d",
         "0000001abcd|00001021|00002022|00010023|00015024|"},
        {"0 tempo 320000|=15040 \\a|=15041 tempo 192000|=25085 b", "0008001ab|00100021|00101022|"},
        // A tempo begins with the first text at its tick, one tempo a text.
        {"0 tempo 500000|=700 note|=960 tempo 500000|=1920 tempo 1000000|track|=1919 \\a|=1920 b",
         "0000001ab|00020021|00040022|"},
        // Words among notes, and before the texts of other tracks.
        {"0 tempo 500000|0 @K|5 note|10 \\a|12 lyric x|15 note|=1500 tempo 1000000|20 b|25 @K|30 "
         "/c",
         "*VESPConv 4.1.11|*DA16/11/26|*VESPConv 4.1.11|*DA16/11/26|"
         "0000001ab$Ec|00010021|00040022|00060025|"},
        // The tempo that the texts of one track have reached goes on counting in the next one.
        {"0 tempo 500000|=1920 tempo 1000000|=1920 @Tx|track|=960 \\a|=1920 b",
         "*TIx|0000001ab|00020021|00040022|"},
        {"0 tempo 500000|100001 \\a", "9998101a|100001021|"},
        {"0 tempo 500000|=118352 \\a", "0000001a|00010021|", 0xE728},
        {"0 @K|track|0 tempo 500000|10 \\a", "open 1102"},
        {"0 tempo 0|10 \\a", "open 1103"},
        {"0 tempo 500000|0 @Tx|10 tempo 0|10 \\a", "*TIx|error 1103"},
        {"0 tempo 500000|0 @Tx|10 \\a", "error 1104", 0},
        {"0 tempo 16777215|=268435455 \\a", "error 1105", 1},
    };
    for (const Golden& c : cases) {
        std::string bytes = KarScore(c.score, c.division).Bytes();
        EXPECT_EQ(Converted(bytes), c.lines) << c.score;
        bytes[9] = 0;  // the format, which tells the music apart and not the words
        EXPECT_EQ(Converted(bytes), c.lines) << c.score;
    }
}

TEST(ConversioneKar, UsesFiftyTemposAnd255WordsAPage) {
    SmfBuilder song;
    for (int i = 1; i < 60; ++i) {
        song.Tempo(0, i == 50 ? 1000000 : 250000 + i);
    }
    song.Text(96000, 1, "\\a");
    for (int i = 0; i < 300; ++i) {
        song.Text(96000, 1, i < 256 ? "b" : "/c");
    }
    const std::string page = Converted(song.Bytes());
    EXPECT_EQ(std::count(page.begin(), page.end(), '|'), 256) << "one text, 255 marks";
    EXPECT_TRUE(page.ends_with("|0200002255|")) << page;
}

TEST(ConversioneKar, NoTextBreaksTheLinesAndNoCharacterIsLost) {
    const std::vector<std::array<std::string, 3>> cases = {
        {"\xE9\r\n0", "", "0000001caf\xE9  0\r\n00010023\r\n00020027\r\n"},
        {"\u00E9\0"s, "", "0000001caf\xE9 \r\n00010023\r\n00020025\r\n"},
        {"\u0436", "\xEF\xBB\xBF", "0000001caf\u0436\r\n00010023\r\n00020024\r\n"}};
    for (const auto& [word, mark, lines] : cases) {
        const TempDirectory directory;
        SmfBuilder song = KarScore("0 tempo 500000|10 \\caf");
        Midifile midifile;
        midifile.SetFileName(directory.Write("a.kar", song.Text(1920, 1, word).Bytes()));
        ASSERT_FALSE(midifile.SetAction(MidifileAction::Open));
        const Estrazione result = Extracted(midifile);
        const auto file = directory.Write("a.lyk", "old");
        EXPECT_EQ(ScriviLyk(file, result.Testo, false)->number, EEXIST);
        EXPECT_EQ(Content(file), "old");
        EXPECT_FALSE(ScriviLyk(file, result.Testo, true));
        EXPECT_EQ(Content(file), std::string(mark).append(FirstLine).append(lines));
    }
}

}  // namespace
}  // namespace sonnel::test
