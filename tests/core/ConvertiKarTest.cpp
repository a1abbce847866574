#include "convert/ConvertiKar.h"
#include "fakes/KarScore.h"
#include "fakes/ScriptedDialog.h"
#include "fakes/SongLibrary.h"
#include "library/AggiungiBrani.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using Log = std::vector<std::string>;
using Names = std::set<std::string>;
using enum Answer;

/// A message box: icon (x critical, i information), buttons, number of the preselected one, text.
std::string Told(const Message& box) {
    constexpr std::array Buttons{"OK", "OK/Cancel", "Yes/No", "Retry/Cancel"};
    return std::string(1, " x?!i"[static_cast<std::size_t>(box.icon)]) + "|" +
           Buttons.at(static_cast<std::size_t>(box.buttons)) + "|" +
           std::to_string(box.defaultButton) + "|" + box.text;
}

std::string Failed(const std::string& step) {
    return "x|Retry/Cancel|1|Warning! An error occured while " + step +
           " Correct the problem and click on Retry, or click on Cancel to abort the conversion.";
}
std::string Copying(int error) {
    return Failed("copying the file to be converted (error " + std::to_string(error) +
                  "): the disk is full or one or more files are locked or opened by another "
                  "application.");
}
const std::string kOpening = Failed(
    "opening the file to be converted (the file is currently opened by another application?).");
const std::string kWriting = Failed("writing to LYK file (disk full?).");
constexpr auto kConverting =
    "x|OK|1|Warning! An error occured while converting the song (error 1104)! This file is not a "
    "standard MIDI Karaoke file or is damaged. Click on Cancel to abort the conversion.";
constexpr auto kSameDirectory =
    "!|OK|1|You can't convert KAR stored in the same directory of the karaoke database! Move the "
    "files to be converted to another directory before trying again: Sonnel Player will "
    "automatically copy the required files for you after a successful conversion.";
constexpr auto kExists = "?|OK/Cancel|2|The LYK file aready exists: do you want to overwrite it?";
constexpr auto kNotAccepted =
    "i|OK|1|Conversion failed: this KAR file isn't either in standard Midi Karaoke format or it's "
    "incompatible with this converter version.";
constexpr auto kDone =
    "i|OK|1|Conversion completed. both the LYK and MID files have been stored in the same "
    "directory where the corresponding KAR resides.\r\n\r\nPlease note not all KAR songs can be "
    "correctly converted, sometimes it is necessary to manually edit LYK files (using Notepad or, "
    "better, a LYK editor).";
constexpr auto kAdd = "?|Yes/No|1|Do you want to add the converted song to the current database?";
constexpr auto kLater =
    "i|OK|1|Remember you can import it later using the \"Add a song\" button of the sng selecion "
    "panel.";
constexpr auto kStored = "!|OK|1|Selected song is already stored in the current database!";
const std::string kBadName = std::string("!|OK|1|") + NomeBranoImpossibile;
constexpr auto kRemove =
    "?|Yes/No|1|The song has been imported. Do you want to remove the old KAR file?";

std::string Kar(const std::string& words = "0 @KMIDI KARAOKE FILE|0 @TNew|20 \\la") {
    return KarScore("0 tempo 500000|" + words).Bytes();
}

struct Conversion : SongLibrary {
    /// Converts a file. A box that `answers` does not name gets Ok, Yes or, where it offers Retry,
    /// Cancel. Returns the boxes and what happened to the windows and the pointer between them.
    Log Convert(const fs::path& file, const std::map<std::string, Answer>& answers = {}) {
        msgBox.whileShown = [&] {
            const Message& box = msgBox.shown.back();
            EXPECT_EQ(box.title, "Sonnel Karaoke Player");
            const auto named = answers.find(windows.log.emplace_back(Told(box)));
            const auto usual =
                std::array{Ok, Ok, Yes, Cancel}.at(static_cast<std::size_t>(box.buttons));
            msgBox.answers = {named != answers.end() ? named->second : usual};
            onBox(windows.log.back());
        };
        dialog.files = {file.empty() ? std::vector<fs::path>() : std::vector{file}};
        ConvertiKar(libreria, {dialog, windows, [](const std::string&) { return std::string(); },
                               [this] { windows.log.emplace_back("properties"); }});
        return std::exchange(windows.log, {});
    }
    TempDirectory other;
    ScriptedDialog dialog;
    std::function<void(const std::string&)> onBox = [](const std::string&) {};
};

const Log kWhole{"busy", "normal", kDone,      kAdd,    "busy",
                 "list", "normal", "select 1", kRemove, "properties"};

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

TEST(ConvertiKar, TakesFourCharactersOffTheNameAndTellsWhatCameOfIt) {
    struct Case {
        std::string file;
        std::string content;
        std::map<std::string, Answer> answers;
        Log log;
        Names other;
        Names library;
    };
    const Names imported{"a.lyk", "a.mid", "sonnel.snl"};
    const Log later{"busy", "normal", kDone, kAdd, kLater};
    const Log badName{"busy", "normal", kDone, kAdd, kBadName};
    const Log copying{"busy", "normal", kDone, kAdd, "busy", "normal", Copying(ENOENT)};
    const Log opening{"busy", "normal", kOpening};
    const Log notAccepted{"busy", "normal", kNotAccepted};
    const std::string noDivision = KarScore("0 tempo 500000|0 @K|0 \\la", 0).Bytes();
    const std::vector<Case> cases{
        {"a.kar", Kar(), {{kRemove, No}}, kWhole, {"a.kar"}, imported},
        {"a.kar", Kar(), {{kAdd, No}}, later, {"a.kar", "a.lyk", "a.mid"}, {}},
        {"a.MID", Kar(), {}, kWhole, {}, imported},
        {"a.midi", Kar(), {}, copying, {"a..lyk", "a.midi"}, {}},
        {"a=b.kar", Kar(), {}, badName, {"a=b.kar", "a=b.lyk", "a=b.mid"}, {}},
        {"a.kar", "", {}, opening, {"a.kar"}, {}},
        {"a.kar", Kar("20 \\la"), {}, notAccepted, {"a.kar", "a.lyk"}, {}},
        {"a.kar", noDivision, {}, {"busy", "normal", kConverting}, {"a.kar", "a.lyk"}, {}},
    };
    for (const Case& c : cases) {
        Conversion run;
        EXPECT_EQ(run.Convert(run.other.Write(c.file, c.content), c.answers), c.log) << c.file;
        EXPECT_EQ(run.other.Names(), c.other) << c.file;
        EXPECT_EQ(run.directory.Names(), c.library) << c.file;
    }
}

TEST(ConvertiKar, RefusesTheLibraryItselfAndLosesNoFileThatIsThere) {
    Conversion run;
    EXPECT_EQ(run.Convert({}), Log{}) << "cancelled";
    EXPECT_THAT(run.Convert(run.directory.Write("a.kar", Kar())), ElementsAre(kSameDirectory));
    EXPECT_EQ(run.directory.Names(), Names{"a.kar"});

    run.other.Write("A.lyk", "mine");
    const fs::path kar = run.other.Write("a.kar", Kar());
    EXPECT_THAT(run.Convert(kar, {{kExists, Cancel}}), ElementsAre(kExists));
    EXPECT_EQ(Content(run.other / "A.lyk"), "mine");
    EXPECT_EQ(run.other.Names(), (Names{"a.kar", "A.lyk"}));

    fs::rename(run.directory / "a.kar", run.directory / "A.LYK");
    EXPECT_THAT(run.Convert(kar), ElementsAre(kExists, "busy", "normal", kDone, kAdd, kStored));
    EXPECT_EQ(Content(run.directory / "A.LYK"), Kar());
    EXPECT_EQ(run.directory.Names(), Names{"A.LYK"});
    EXPECT_EQ(run.other.Names(), (Names{"a.kar", "A.lyk", "a.mid"}));
}

TEST(ConvertiKar, AStepThatFailsIsTriedAgainUntilItSucceedsOrIsGivenUp) {
    struct Case {
        const char* hindrance;  ///< a directory where a file should be
        std::string box;
        std::ptrdiff_t step;  ///< place in the log of a whole conversion
        Names left;           ///< in the other directory, when it is given up
    };
    const std::string copying = Copying(EISDIR);
    const std::vector<Case> cases{{"a.kar", kOpening, 1, {"a.kar"}},
                                  {"a.lyk", kWriting, 1, {"a.kar", "a.lyk"}},
                                  {"a.mid", copying, 2, {"a.kar", "a.lyk", "a.mid"}},
                                  {"a.mid", copying, 5, {"a.kar", "a.lyk", "a.mid"}},
                                  {"sonnel.snl", copying, 5, {"a.kar"}}};
    for (const Case& c : cases) {
        for (const Answer answer : {Cancel, Retry}) {
            Conversion run;
            const fs::path kar = run.other.Write("a.kar", Kar());
            const fs::path hindrance = (c.step == 5 ? run.directory : run.other) / c.hindrance;
            fs::remove(hindrance);
            fs::create_directory(hindrance);
            run.onBox = [&, boxes = 0](const std::string& box) mutable {
                if (box == c.box && ++boxes == 2) {
                    fs::remove(hindrance);
                    run.other.Write("a.kar", Kar());
                }
            };
            const Log failure = c.step == 2 ? Log{c.box, c.box}
                                            : Log{"normal", c.box, "busy", "normal", c.box, "busy"};
            Log log = kWhole;
            log.insert(log.begin() + c.step, failure.begin(), failure.end());
            if (answer == Cancel) {
                log.erase(std::find(log.begin(), log.end(), c.box) + 1, log.end());
            }
            log.insert(log.begin(), c.box == kWriting ? 1 : 0, kExists);
            EXPECT_EQ(run.Convert(kar, {{c.box, answer}}), log) << hindrance;
            EXPECT_EQ(run.other.Names(), answer == Cancel ? c.left : Names{}) << hindrance;
        }
    }
}

}  // namespace
}  // namespace sonnel::test
