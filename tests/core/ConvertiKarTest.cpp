#include "convert/ConvertiKar.h"
#include "fakes/KarScore.h"
#include "fakes/ScriptedDialog.h"
#include "fakes/SongLibrary.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr Answer Ok = Answer::Ok;
constexpr Answer Yes = Answer::Yes;
constexpr Answer No = Answer::No;
constexpr Answer Retry = Answer::Retry;
constexpr Answer Cancel = Answer::Cancel;

const auto kOpening = StartsWith("Warning! An error occured while opening the file");
const auto kFailed = StartsWith("Conversion failed: this KAR file");
const auto kDone = StartsWith("Conversion completed. both the LYK and MID files");
const auto kAdd = StartsWith("Do you want to add the converted song");

struct ConvertiKarTest : ::testing::Test, SongLibrary {
    std::string Kar(const std::string& words = "0 @KMIDI KARAOKE FILE|0 @TNew|20 \\la") const {
        return KarScore("0 tempo 500000|" + words).Bytes();
    }
    /// Converts a file of the other directory, answering the boxes in turn.
    void Convert(const fs::path& file, std::deque<Answer> answers) {
        msgBox.answers = std::move(answers);
        dialog.files.push_back({file});
        ConvertiKar(libreria, {dialog, windows, [](const std::string&) { return std::string(); },
                               [this] { windows.log.emplace_back("properties"); }});
        EXPECT_EQ(windows.pointer, Pointer::Normal);
        EXPECT_TRUE(msgBox.answers.empty());
    }
    TempDirectory other;
    ScriptedDialog dialog;
};

TEST_F(ConvertiKarTest, MakesASongAndMovesItIntoTheLibrary) {
    Lyk("old.lyk");
    Index("[Songs]\r\nold=Old||?\r\n");
    const fs::path kar = other.Write("My song.kar", Kar());
    Convert(kar, {Ok, Yes, Yes});
    ASSERT_EQ(msgBox.shown.size(), 3U);
    EXPECT_EQ(msgBox.shown[0].icon, Icon::Information);
    for (const std::size_t question : {1U, 2U}) {
        EXPECT_EQ(msgBox.shown[question].icon, Icon::Question);
        EXPECT_EQ(msgBox.shown[question].buttons, Buttons::YesNo);
    }
    EXPECT_THAT(Messages(), ElementsAre(kDone, kAdd, HasSubstr("remove the old KAR file?")));
    EXPECT_TRUE(other.Names().empty());
    EXPECT_THAT(directory.Names(),
                ElementsAre("My song.lyk", "My song.mid", "old.lyk", "sonnel.snl"));
    EXPECT_EQ(Content(directory / "My song.mid"), Kar());
    EXPECT_THAT(Table(), ElementsAre("old=Old||?", "My song=New||?"));
    EXPECT_THAT(windows.log, ElementsAre("busy", "list", "normal", "select 2", "properties"));
    EXPECT_EQ(dialog.asked.at(0).title, "Select KAR file to be converted");
}

TEST_F(ConvertiKarTest, AMidFileIsTheSongsMusicItself) {
    const fs::path mid = other.Write("a.MID", Kar());
    Convert(mid, {Ok, No, Ok});
    EXPECT_THAT(Messages(),
                ElementsAre(kDone, kAdd, StartsWith("Remember you can import it later")));
    EXPECT_THAT(other.Names(), ElementsAre("a.MID", "a.lyk"));
    Convert(mid, {Ok, Ok, Yes, No});
    EXPECT_THAT(Messages(), ElementsAre(StartsWith("The LYK file aready exists"), kDone, kAdd,
                                        HasSubstr("remove the old KAR file?")));
    EXPECT_TRUE(other.Names().empty()) << "the file chosen was moved";
    EXPECT_THAT(directory.Names(), ElementsAre("a.lyk", "a.mid", "sonnel.snl"));
}

TEST_F(ConvertiKarTest, AFileOfAnotherKindIsNeverMoved) {
    Convert(other.Write("song.midi", Kar()), {Ok, Yes, Cancel});
    EXPECT_THAT(Messages(), ElementsAre(kDone, kAdd, HasSubstr("while copying the file")));
    EXPECT_TRUE(other.Names().contains("song.midi"));
    EXPECT_TRUE(directory.Names().empty());
}

TEST_F(ConvertiKarTest, TellsWhyNoSongCameOfIt) {
    struct Case {
        std::string content;
        std::vector<Answer> answers;
        std::string message;
        bool lyk;
    };
    const std::vector<Case> cases{
        {"", {Retry, Retry, Cancel}, "while opening the file", false},
        {KarScore("20 \\la").Bytes(), {Cancel}, "while opening the file", false},
        {Kar("20 \\la"), {Ok}, "Conversion failed: this KAR file isn't", true},
        {Kar("0 @KMIDI KARAOKE FILE"), {Ok}, "Conversion failed: this KAR file isn't", true},
        {KarScore("0 tempo 500000|0 @K|0 \\la", 0).Bytes(),
         {Ok},
         "converting the song (error 1104)",
         true}};
    for (const Case& c : cases) {
        const fs::path kar = other.Write("a.kar", c.content);
        Convert(kar, {c.answers.begin(), c.answers.end()});
        EXPECT_EQ(msgBox.shown.size(), c.answers.size());
        for (const std::string& text : Messages()) {
            EXPECT_THAT(text, HasSubstr(c.message));
        }
        EXPECT_EQ(other.Names().contains("a.lyk"), c.lyk) << c.message;
        EXPECT_FALSE(other.Names().contains("a.mid"));
        fs::remove(other / "a.lyk");
    }
    Convert(other / "gone.kar", {Cancel});
    EXPECT_THAT(Messages(), ElementsAre(kOpening));
}

TEST_F(ConvertiKarTest, RefusesWhatWouldBeLost) {
    const fs::path here = directory.Write("a.kar", Kar());
    Convert(here, {Ok});
    EXPECT_THAT(Messages(), ElementsAre(StartsWith("You can't convert KAR stored in the same")));
    EXPECT_THAT(directory.Names(), ElementsAre("a.kar"));

    other.Write("a.lyk", "mine");
    const fs::path kar = other.Write("a.kar", Kar());
    Convert(kar, {Cancel});
    EXPECT_EQ(msgBox.shown.at(0).defaultButton, 2);
    EXPECT_EQ(Content(other / "a.lyk"), "mine");
    EXPECT_FALSE(other.Names().contains("a.mid"));

    fs::remove(other / "a.lyk");
    Messages();
    directory.Write("A.LYK", "theirs");
    Convert(kar, {Ok, Yes, Ok});
    EXPECT_THAT(Messages(),
                ElementsAre(kDone, kAdd, StartsWith("Selected song is already stored")));
    EXPECT_EQ(Content(directory / "A.LYK"), "theirs");
    EXPECT_THAT(other.Names(), ElementsAre("a.kar", "a.lyk", "a.mid"));
}

TEST_F(ConvertiKarTest, AStepThatFailsIsTriedAgain) {
    const fs::path kar = other.Write("a.kar", Kar());
    fs::create_directory(other / "a.lyk");
    int boxes = 0;
    msgBox.whileShown = [&] {
        if (++boxes == 3) {  // after the question and one attempt
            fs::remove(other / "a.lyk");
        }
    };
    Convert(kar, {Ok, Retry, Retry, Ok, No, Ok});
    EXPECT_THAT(Messages(),
                ElementsAre(HasSubstr("overwrite it?"), HasSubstr("writing to LYK file"),
                            HasSubstr("writing to LYK file"), kDone, kAdd, StartsWith("Remember")));
    fs::remove(other / "a.mid");
    fs::create_directory(other / "a.mid");
    Convert(kar, {Ok, Cancel});
    EXPECT_THAT(Messages(),
                ElementsAre(HasSubstr("overwrite it?"),
                            HasSubstr("while copying the file to be converted (error 21)")));
}

}  // namespace
}  // namespace sonnel::test
