#include "convert/ConvertiKar.h"
#include "fakes/KarScore.h"
#include "fakes/ScriptedDialog.h"
#include "fakes/SongLibrary.h"

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
using Names = std::set<std::string>;
using enum Answer;

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
                               [this] { windows.log.emplace_back("properties"); }});
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

const std::string kWhole = "busy normal done add busy list normal select 1 remove properties ";

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
    struct Case {
        std::string file;
        std::string content;
        std::string log;
        Names other;
        Names library;
        std::map<std::string, Answer> answers;
    };
    const Names imported{"a.lyk", "a.mid", "sonnel.snl"};
    const std::string noDivision = KarScore("0 tempo 500000|0 @K|0 \\la", 0).Bytes();
    const std::vector<Case> cases{
        {"a.kar", Kar(), kWhole, {"a.kar"}, imported, {{"remove", No}}},
        {"a.kar",
         Kar(),
         "busy normal done add later ",
         {"a.kar", "a.lyk", "a.mid"},
         {},
         {{"add", No}}},
        {"a.MID", Kar(), kWhole, {}, imported, {}},
        {"a.midi", Kar(), "busy normal done add later ", {"a..lyk", "a.midi"}, {}, {{"add", No}}},
        {"a=b.kar", Kar(), "busy normal done add name ", {"a=b.kar", "a=b.lyk", "a=b.mid"}, {}, {}},
        {"a.kar", Kar("20 \\la"), "busy normal refused ", {"a.kar", "a.lyk"}, {}, {}},
        {"a.kar", noDivision, "busy normal converting ", {"a.kar", "a.lyk"}, {}, {}},
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
    struct Case {
        std::string hindrance;  ///< a directory where a file should be
        std::string box;
        std::string before;  ///< what the log of a whole conversion has before the step
        Names left;          ///< in the other directory, when it is given up
    };
    const std::string import = "busy normal done add busy ";
    const std::vector<Case> cases{
        {"other/a.kar", "opening", "busy ", {"a.kar"}},
        {"other/a.lyk", "writing", "busy ", {"a.kar", "a.lyk"}},
        {"other/a.mid", "copying", "busy normal ", {"a.kar", "a.lyk", "a.mid"}},
        {"a.mid", "copying", import, {"a.kar", "a.lyk", "a.mid"}},
        {"sonnel.snl", "copying", import, {"a.kar"}}};
    for (const Case& c : cases) {
        for (const Answer answer : {Cancel, Retry}) {
            Conversion run;
            const fs::path kar = run.other.Write("a.kar", Kar());
            fs::create_directory_symlink(run.other.Path(), run.directory / "other");
            const fs::path hindrance = run.directory / c.hindrance;
            fs::remove(hindrance);
            fs::create_directory(hindrance);
            run.onBox = [&, boxes = 0](const std::string& box) mutable {
                if (box == c.box && ++boxes == 2) {
                    fs::remove(hindrance);
                    run.other.Write("a.kar", Kar());
                }
            };
            const bool busy = !c.before.ends_with("normal ");
            const std::string failure = busy ? "normal " + c.box + " busy " : c.box + " ";
            std::string log = c.before + failure + failure + kWhole.substr(c.before.size());
            if (answer == Cancel) {
                log.resize(log.find(c.box) + c.box.size() + 1);
            }
            EXPECT_EQ(run.Convert(kar, {{c.box, answer}}),
                      (c.box == "writing" ? "exists " : "") + log);
            EXPECT_EQ(run.other.Names(), answer == Cancel ? c.left : Names{}) << hindrance;
        }
    }
}

}  // namespace
}  // namespace sonnel::test
