#include "convert/ConvertiKar.h"
#include "convert/EstraiParole.h"
#include "convert/ScriviLyk.h"
#include "fakes/KarScore.h"
#include "fakes/ScriptedDialog.h"
#include "fakes/SongLibrary.h"
#include "fakes/TempDirectory.h"
#include "ui/basCommon.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using enum Answer;
using namespace std::string_literals;

using Names = std::set<std::string>;

/// The message boxes: icon (x critical, i information), buttons, number of the preselected one, and
/// how the text begins.
const std::map<std::string, std::string> kBoxes{
    {"x|Retry/Cancel|1|Warning! An error occured while opening the file", "opening"},
    {"x|Retry/Cancel|1|Warning! An error occured while writing to LYK file", "writing"},
    {"x|Retry/Cancel|1|Warning! An error occured while copying the file to be converted (error " +
         std::to_string(EISDIR) + ")",
     "copying"},
    {"x|OK|1|Warning! An error occured while converting the song (error 1104)!", "converting"},
    {"!|OK|1|You can't convert KAR stored in the same directory", "directory"},
    {"?|OK/Cancel|2|The LYK file aready exists", "exists"},
    {"i|OK|1|Conversion failed: this KAR file isn't", "refused"},
    {"i|OK|1|Conversion completed.", "done"},
    {"?|Yes/No|1|Do you want to add the converted song", "add"},
    {"i|OK|1|Remember you can import it later", "later"},
    {"!|OK|1|Selected song is already stored", "stored"},
    {"!|OK|1|The name of this song's files holds characters", "name"},
    {"?|Yes/No|1|The song has been imported.", "remove"},
};

/// The short name of a box; all of it when it is none of them.
std::string Named(const Message& box) {
    constexpr std::array Buttons{"OK", "OK/Cancel", "Yes/No", "Retry/Cancel"};
    const std::string shown = std::string(1, " x?!i"[static_cast<std::size_t>(box.icon)]) + "|" +
                              Buttons.at(static_cast<std::size_t>(box.buttons)) + "|" +
                              std::to_string(box.defaultButton) + "|" + box.text;
    const auto known = std::find_if(kBoxes.begin(), kBoxes.end(), [&](const auto& candidate) {
        return shown.starts_with(candidate.first);
    });
    return known != kBoxes.end() ? known->second : shown;
}

std::string Kar(const std::string& words = "0 @KMIDI KARAOKE FILE|0 @TNew|20 \\la") {
    return KarScore("0 tempo 500000|" + words).Bytes();
}

struct Conversion : SongLibrary {
    /// Converts a file. A box that `answers` does not name gets Ok, Yes or, where it offers Retry,
    /// Cancel. Returns the boxes and what happened to the windows and the pointer between them.
    std::string Convert(const fs::path& file, const std::map<std::string, Answer>& answers = {}) {
        msgBox.whileShown = [&] {
            const Message& box = msgBox.shown.back();
            EXPECT_EQ(box.title, "Sonnel Karaoke Player");
            const auto given = answers.find(windows.log.emplace_back(Named(box)));
            const auto usual =
                std::array{Ok, Ok, Yes, Cancel}.at(static_cast<std::size_t>(box.buttons));
            msgBox.answers = {given != answers.end() ? given->second : usual};
            onBox(windows.log.back());
        };
        dialog.files = {file.empty() ? std::vector<fs::path>() : std::vector{file}};
        ConvertiKar(libreria, {dialog, windows, [](const std::string&) { return std::string(); },
                               [this](std::int16_t song) {
                                   windows.log.push_back("properties " + std::to_string(song));
                               }});
        std::string log;
        for (const std::string& entry : std::exchange(windows.log, {})) {
            log += entry + " ";
        }
        return log;
    }
    TempDirectory other;
    ScriptedDialog dialog;
    std::function<void(const std::string&)> onBox = [](const std::string&) {};
};

const std::string kWhole = "busy normal done add busy list normal select 1 remove properties 1 ";

TEST(ConvertiKar, MakesASongAndMovesItIntoTheLibrary) {
    Conversion run;
    run.other.Write("A b.kar", "another");
    EXPECT_EQ(run.Convert(run.other.Write("A b.KAR", Kar())), kWhole);
    EXPECT_EQ(run.other.Names(), Names{"A b.kar"});
    EXPECT_EQ(run.directory.Names(), (Names{"A b.lyk", "A b.mid", "sonnel.snl"}));
    EXPECT_EQ(Content(run.directory / "A b.mid"), Kar());
    EXPECT_THAT(run.Table(), ElementsAre("A b=New||?"));
    const FileRequest& asked = run.dialog.asked.at(0);
    EXPECT_EQ(asked.title + "|" + asked.extension + "|" + asked.name,
              "Select KAR file to be converted|kar|*.kar");
    EXPECT_THAT(asked.filters, ElementsAre("MIDI Karaoke file (*.kar)", "MIDI file (*.mid)"));
    EXPECT_TRUE(asked.mustExist && !asked.several && asked.directory.empty());
}

TEST(ConvertiKar, TakesFourCharactersOffTheNameAndReportsTheOutcome) {
    using Answers = std::map<std::string, Answer>;
    const Answers noImport{{"add", No}};
    const Names imported{"a.lyk", "a.mid", "sonnel.snl"};
    const std::string noDivision = KarScore("0 tempo 500000|0 @K|0 \\la", 0).Bytes();
    const std::string later = "busy normal done add later ";
    const std::string badName = "busy normal done add name ";
    // The file, its content, what happens, the files beside it and in the library, the answers.
    const std::vector<std::tuple<std::string, std::string, std::string, Names, Names, Answers>>
        cases{{"a.kar", Kar(), kWhole, {"a.kar"}, imported, {{"remove", No}}},
              {"a.kar", Kar(), later, {"a.kar", "a.lyk", "a.mid"}, {}, noImport},
              {"a.MID", Kar(), kWhole, {}, imported, {}},
              {"\xE4.kar", Kar(), kWhole, {}, {"\u00E4.lyk", "\u00E4.mid", "sonnel.snl"}, {}},
              {"\xE4.mid",
               Kar(),
               kWhole,
               {"\xE4.mid"},
               {"\u00E4.lyk", "\u00E4.mid", "sonnel.snl"},
               {}},
              {"a.midi", Kar(), later, {"a..lyk", "a.midi"}, {}, noImport},
              {"a=b.kar", Kar(), badName, {"a=b.kar", "a=b.lyk", "a=b.mid"}, {}, {}},
              {"a.kar", Kar("20 \\la"), "busy normal refused ", {"a.kar", "a.lyk"}, {}, {}},
              {"a.kar", noDivision, "busy normal converting ", {"a.kar", "a.lyk"}, {}, {}}};
    for (const auto& [file, content, log, other, library, answers] : cases) {
        Conversion run;
        EXPECT_EQ(run.Convert(run.other.Write(file, content), answers), log) << file;
        EXPECT_EQ(run.other.Names(), other) << file;
        EXPECT_EQ(run.directory.Names(), library) << file;
    }
}

TEST(ConvertiKar, RefusesTheLibraryItselfAndLosesNoFileThatIsThere) {
    Conversion run;
    EXPECT_EQ(run.Convert({}), "") << "cancelled";
    EXPECT_EQ(run.Convert(run.directory.Write("a.kar", Kar())), "directory ");
    EXPECT_EQ(run.directory.Names(), Names{"a.kar"});

    run.other.Write("A.lyk", "mine");
    const fs::path kar = run.other.Write("a.kar", Kar());
    EXPECT_EQ(run.Convert(kar, {{"exists", Cancel}}), "exists ");
    EXPECT_EQ(Content(run.other / "A.lyk"), "mine");

    fs::rename(run.directory / "a.kar", run.directory / "A.LYK");
    EXPECT_EQ(run.Convert(kar), "exists busy normal done add stored ");
    EXPECT_EQ(Content(run.directory / "A.LYK"), Kar());
    EXPECT_EQ(run.directory.Names(), Names{"A.LYK"});
    EXPECT_EQ(run.other.Names(), (Names{"a.kar", "A.lyk", "a.mid"}));
}

TEST(ConvertiKar, AStepThatFailsIsTriedAgainUntilItSucceedsOrIsGivenUp) {
    // A directory where a file should be, the box it leads to, what the log of a whole conversion
    // has before the step, and what is left in the other directory when it is given up.
    const std::string import = "busy normal done add busy ";
    const std::vector<std::tuple<std::string, std::string, std::string, Names>> cases{
        {"other/a.kar", "opening", "busy ", {"a.kar"}},
        {"other/a.lyk", "writing", "busy ", {"a.kar", "a.lyk"}},
        {"other/a.mid", "copying", "busy normal ", {"a.kar", "a.lyk", "a.mid"}},
        {"a.mid", "copying", import, {"a.kar", "a.lyk", "a.mid"}},
        {"sonnel.snl", "copying", import, {"a.kar"}}};
    for (const auto& [obstacle, step, before, left] : cases) {
        for (const Answer answer : {Cancel, Retry}) {
            Conversion run;
            const fs::path kar = run.other.Write("a.kar", Kar());
            fs::create_directory_symlink(run.other.Path(), run.directory / "other");
            const fs::path place = run.directory / obstacle;
            fs::remove(place);
            fs::create_directory(place);
            run.onBox = [&, boxes = 0, &failing = step](const std::string& box) mutable {
                if (box == failing && ++boxes == 2) {
                    fs::remove(place);
                    run.other.Write("a.kar", Kar());
                }
            };
            const bool busy = !before.ends_with("normal ");
            const std::string failure = busy ? "normal " + step + " busy " : step + " ";
            std::string log = before;
            log.append(failure).append(failure).append(kWhole, before.size());
            if (answer == Cancel) {
                log.resize(log.find(step) + step.size() + 1);
            }
            EXPECT_EQ(run.Convert(kar, {{step, answer}}),
                      (step == "writing" ? "exists " : "") + log);
            EXPECT_EQ(run.other.Names(), answer == Cancel ? left : Names{}) << place;
        }
    }
}

constexpr std::string_view FirstLine = "Cantabelle1.0 by Sonnel Karaoke Player\r\n";

/// What a file becomes: the lines of its LYK after the first one, each with "|" at its end, and the
/// number of the error that ended its opening or its extraction.
std::string Converted(const std::string& bytes) {
    Midifile midifile;
    EXPECT_FALSE(midifile.OpenContent(bytes));
    const auto base = BaseTempi::Leggi(midifile);
    if (!base) {
        return "open " + std::to_string(base.error().number);
    }
    const auto day = [](const std::string& name) {
        return name == "SOURCE_DATE_EPOCH" ? "1794873599" : "";
    };
    const Estrazione result = EstraiParole(midifile, *base, DataOdierna(day));
    EXPECT_TRUE(result.Testo.starts_with(FirstLine));
    std::string text = result.Testo.substr(FirstLine.size());
    SostituisciTesto(text, "\r\n", "|");
    return text + (result.Errore ? "error " + std::to_string(result.Errore->number) : "");
}

TEST(ConversioneKar, TurnsScoresIntoPages) {
    struct Golden {
        const char* score;
        const char* lines;
        int division = 480;
    };
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
        // A tempo begins with the first text at its tick, one tempo a text. One track has the
        // words.
        {"0 tempo 500000|=700 note|=960 tempo 500000|=1920 tempo 1000000|track|=1919 \\a|=1920 "
         "b|track|40 \\c",
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
        for (const char format : {'\0', '\2'}) {  // which tells the music apart and not the words
            bytes[9] = format;
            EXPECT_EQ(Converted(bytes), c.lines) << c.score;
        }
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
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"\xE9\r\n0", "0000001caf\xE9  0\r\n00010023\r\n00020027\r\n"},
        {"\u00E9\0"s, "0000001caf\xE9 \r\n00010023\r\n00020025\r\n"}};
    for (const auto& [word, lines] : cases) {
        const TempDirectory directory;
        SmfBuilder song = KarScore("0 tempo 500000|10 \\caf");
        Midifile midifile;
        midifile.SetFileName(directory.Write("a.kar", song.Text(1920, 1, word).Bytes()));
        ASSERT_FALSE(midifile.SetAction(MidifileAction::Open));
        const auto result = EstraiParole(midifile, *BaseTempi::Leggi(midifile), {});
        const auto file = directory.Write("a.lyk", "old");
        EXPECT_EQ(ScriviLyk(file, result.Testo, false)->number, EEXIST);
        EXPECT_EQ(Content(file), "old");
        EXPECT_FALSE(ScriviLyk(file, result.Testo, true));
        EXPECT_EQ(Content(file), std::string(FirstLine) + lines);
    }
}

}  // namespace
}  // namespace sonnel::test
