#include "convert/EstraiParole.h"
#include "convert/ScriviLyk.h"
#include "fakes/DemoSong.h"
#include "fakes/KarScore.h"
#include "fakes/TempDirectory.h"
#include "generator/Lyk.h"

#include <cerrno>
#include <sstream>

namespace sonnel::test {
namespace {

using namespace std::string_literals;
using std::chrono::year;

constexpr std::string_view FirstLine = "Cantabelle1.0 by Sonnel Karaoke Player\r\n";

/// What a file becomes: the lines of its LYK after the first one, and the number of the error that
/// ended its opening or its extraction.
std::string Converted(const std::string& bytes) {
    Midifile midifile;
    if (const auto error = midifile.OpenContent(bytes)) {
        return "open " + std::to_string(error->number);
    }
    const auto base = BaseTempi::Leggi(midifile);
    if (!base) {
        return "open " + std::to_string(base.error().number);
    }
    const Estrazione result = EstraiParole(midifile, *base, year(2026) / 11 / 16);
    EXPECT_TRUE(result.Testo.starts_with(FirstLine));
    std::string text = result.Testo.substr(FirstLine.size());
    for (std::size_t at = 0; (at = text.find("\r\n", at)) != std::string::npos;) {
        text.replace(at, 2, "\n");
    }
    return text + (result.Errore ? "error " + std::to_string(result.Errore->number) : "");
}

struct Golden {
    const char* what;
    const char* score;
    const char* lines;
    int division = 480;
};

TEST(ConversioneKar, TurnsScoresIntoPages) {
    const std::vector<Golden> cases = {
        {"the header", R"(0 tempo 500000
0 @KMIDI KARAOKE FILE
0 @V0100
0 @ISomebody
0 @TThe Title
0 @T
0 @TThe Author
0 @Tmore
0 @Imore
0 @
1 dropped
5 \Hel
7 lo)",
         "*VESPConv 4.1.11\n*DA16/11/26\n*BYSomebody\n*TIThe Title\n*AU\n*AUThe Author\n"
         "0000001Hello\n00005023\n00007025\n"},
        {"no title yet", "0 tempo 500000\n0 @T\n0 @TThe Title\n0 @K\n0 @K",
         "*TI\n*TIThe Title\n*VESPConv 4.1.11\n*DA16/11/26\n*VESPConv 4.1.11\n*DA16/11/26\n"},
        {"a page after another", R"(0 tempo 500000
100 \One
110  two
120 \Hello
125  world
132 /again)",
         "0008001One two\n00100023\n00110027\n"
         "0011101Hello world$Eagain\n00120025\n001250211\n001320218\n"},
        {"three lines a page, begun in any way", "0 tempo 500000\n20 /a\n30 /b\n40 /c\n50 /d",
         "0000001a$Eb$Ec\n00020021\n00030024\n00040027\n0004101d\n00050021\n"},
        {"pauses of 1, 1, 2, 20, 21, 100 and 101", R"(0 tempo 500000
0 \a
1 \b
2 c
3 \d
5 e
7 \f
27 \g
48 \h
148 \i
249 \j)",
         "0000001a\n00000021\n0000101bc\n00001021\n00002022\n0000301de\n00004021\n00005022\n"
         "0000601f\n00007021\n0000801g\n00027021\n0002801h\n00048021\n0012801i\n00148021\n"
         "0016801\n0022901j\n00249021\n"},
        {"a late header, an empty text", "0 tempo 500000\n10 \\a\n20 \n30 \\b\n40 @Tlate",
         "0000001a\n00010021\n00020021\n*TIlate\n0002101b\n00030021\n"},
        {"halves go to the even tenth", "0 tempo 500000\n=48 \\a\n=144 b\n=1000 c\n=1440 d",
         "0000001abcd\n00001021\n00002022\n00010023\n00015024\n"},
        {"187.5 beats are 188", "0 tempo 320000\n=15040 \\a", "0008001a\n00100021\n"},
        {"312.5 beats are 312", "0 tempo 192000\n=24960 \\a", "0008001a\n00100021\n"},
        {"a tempo begins at its tick", R"(0 tempo 500000
=700 note
=960 tempo 500000
=1920 tempo 1000000
track
=1919 \a
=1920 b)",
         "0000001ab\n00020021\n00040022\n"},
        {"one tempo a text, repeated ones not counted", R"(0 tempo 500000
=960 tempo 500000
=1920 tempo 1000000
=2880 tempo 250000
track
=5000 \a
=5000 b)",
         "0008401ab\n00104021\n00026022\n"},
        {"words among notes and before the texts of other tracks", R"(0 tempo 500000
50 @Tx
100 note
track
5 note
10 \a
15 note
20 b
track
30 \c)",
         "*TIx\n0000001ab\n00010021\n00020022\n"},
        {"times of six digits", "0 tempo 500000\n100001 \\a", "9998101a\n100001021\n"},
        {"SMPTE division", "0 tempo 500000\n=118352 \\a", "0000001a\n00010021\n", 0xE728},
        {"no tempo", "0 @K\n10 \\a", "open 1102"},
        {"tempo in a later track", "0 @K\ntrack\n0 tempo 500000\n10 \\a", "open 1102"},
        {"tempo 0", "0 tempo 0\n10 \\a", "open 1103"},
        {"tempo 0 later", "0 tempo 500000\n0 @Tx\n10 tempo 0\n10 \\a", "*TIx\nerror 1103"},
        {"division 0", "0 tempo 500000\n0 @Tx\n10 \\a", "error 1104", 0},
        {"a time past 32 bits", "0 tempo 16777215\n=268435455 \\a", "error 1105", 1},
        {"no track", "", "open 1003"},
    };
    for (const Golden& c : cases) {
        EXPECT_EQ(Converted(KarScore(c.score, c.division).Bytes()), c.lines) << c.what;
    }
    EXPECT_EQ(Converted(SmfBuilder().Text(0, kMetaTempo, "\x07\xA1").Bytes()), "open 1101");
    EXPECT_EQ(Converted("MThd\0\0\0\6\0\1\xFF\xFF\1\xE0"s), "open 1003");
}

TEST(ConversioneKar, KeepsItsLimits) {
    SmfBuilder words = KarScore("0 tempo 500000\n10 \\a");
    for (int i = 0; i < 300; ++i) {
        words.Text(1920, 1, i < 256 ? "b" : "/c");
    }
    const std::string page = Converted(words.Bytes());
    EXPECT_EQ(std::count(page.begin(), page.end(), '\n'), 256) << "one text, 255 marks";
    EXPECT_TRUE(page.ends_with("\n0002002255\n")) << page;

    SmfBuilder tempos;
    for (int i = 1; i < 60; ++i) {
        tempos.Tempo(0, i == 50 ? 1000000 : 250000 + i);
    }
    tempos.Text(96000, 1, "\\a");
    for (int i = 0; i < 70; ++i) {
        tempos.Text(96000, 1, "");
    }
    EXPECT_TRUE(Converted(tempos.Bytes()).ends_with("\n02000021\n"));
}

TEST(ConversioneKar, NoTextBreaksTheLinesAndNoCharacterIsLost) {
    struct Case {
        std::string word;
        std::string file;
    };
    for (const Case& c : std::vector<Case>{
             {"\xE9\r\n0"s, "0000001caf\xE9  0\r\n00010023\r\n00020027\r\n"},
             {"\u00E9\0"s, "0000001caf\xE9 \r\n00010023\r\n00020025\r\n"},
             {"\u0436"s, "0000001caf\u0436\r\n00010023\r\n00020024\r\n"},
         }) {
        Midifile midifile;
        ASSERT_FALSE(midifile.OpenContent(
            KarScore("0 tempo 500000\n10 \\caf").Text(1920, 1, c.word).Bytes()));
        const auto result = EstraiParole(midifile, *BaseTempi::Leggi(midifile), {});
        const TempDirectory directory;
        const auto file = directory.Write("a.lyk", "old");
        EXPECT_EQ(ScriviLyk(file, result.Testo, false)->number, EEXIST);
        EXPECT_EQ(Content(file), "old");
        EXPECT_FALSE(ScriviLyk(file, result.Testo, true));
        const bool utf8 = c.word == "\u0436";
        EXPECT_EQ(Content(file), (utf8 ? "\xEF\xBB\xBF" : "") + std::string(FirstLine) + c.file);
    }
}

TEST(ConversioneKar, TellsTheFileThatCannotBeOpened) {
    Midifile midifile;
    midifile.SetFileName("/nowhere/a.kar");
    const auto error = midifile.SetAction(MidifileAction::Open);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->number, ENOENT);
    EXPECT_EQ(error->text, "Can't convert the file /nowhere/a.kar: No such file or directory.");
}

TEST(ConversioneKar, TakesTheDayFromTheEnvironment) {
    const auto day = DataOdierna(
        [](const std::string& name) { return name == "SOURCE_DATE_EPOCH" ? "1794873599"s : ""s; });
    EXPECT_EQ(day, year(2026) / 11 / 16);
}

/// The lines of a LYK text that are events.
std::vector<std::string> EventLines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream all(text);
    for (std::string line; std::getline(all, line);) {
        if (line.starts_with('0')) {
            lines.push_back(line);
        }
    }
    return lines;
}

// A demo song's karaoke file has one tempo and at most three lines a page; its own LYK is made for
// comparison from an arrangement that is likewise.
TEST(ConversioneKar, DemoSongsBecomeTheirOwnLyk) {
    for (const auto& score : DemoScores()) {
        DemoSong demo(score);
        Midifile midifile;
        ASSERT_FALSE(midifile.OpenContent(songs::WriteKar(demo.score, demo.song)));
        const Estrazione result = EstraiParole(midifile, *BaseTempi::Leggi(midifile), {});
        EXPECT_TRUE(result.Accettata()) << score;
        demo.song.tempos.resize(1);
        std::vector<songs::SungPage> pages;
        for (const songs::SungPage& page : demo.song.pages) {
            const auto half = page.begin() + (page.size() == 4 ? 2 : 0);
            pages.emplace_back(half, page.end());
            if (half != page.begin()) {
                pages.emplace(pages.end() - 1, page.begin(), half);
            }
        }
        demo.song.pages = pages;
        const auto expected = EventLines(songs::WriteLyk(demo.score, demo.song));
        const auto converted = EventLines(result.Testo);
        ASSERT_EQ(converted.size(), expected.size()) << score;
        for (std::size_t i = 0; i < expected.size(); ++i) {
            EXPECT_EQ(converted[i].substr(5), expected[i].substr(5)) << score;
            EXPECT_NEAR(std::stoi(converted[i].substr(0, 5)), std::stoi(expected[i].substr(0, 5)),
                        1);
        }
    }
}

}  // namespace
}  // namespace sonnel::test
