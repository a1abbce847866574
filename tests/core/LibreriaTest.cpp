#include "fakes/ScriptedDialog.h"
#include "fakes/SongLibrary.h"
#include "library/AggiornaIndice.h"
#include "library/AggiungiBrani.h"
#include "library/SincronizzaDB.h"

#include <chrono>
#include <string>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

struct LibreriaTest : ::testing::Test, SongLibrary {};

TEST_F(LibreriaTest, SaysWhyThereIsNothingToLoad) {
    using enum StatoIndice;
    const std::string missing = "Specified karaoke database directory doesn't exist";
    const std::string noIndex = "The karaoke index file does not exist: to create";
    const std::string notReady = "The karaoke database drive is not ready: if";
    const std::string givenUp = "If the directory is wrong or no longer exists,";
    const auto Ok = Buttons::Ok;
    const auto OkCancel = Buttons::OkCancel;
    // Below the karaoke directory, what is found there at each look, and what is shown.
    using Shown = std::vector<std::pair<Buttons, std::string>>;
    const std::vector<std::tuple<std::string, std::vector<StatoIndice>, Shown>> cases{
        {"", {CercaIndice(directory / "sonnel.snl")}, {{Ok, noIndex}}},
        {"none/", {Assente}, {{Ok, missing}}},
        {"", {DispositivoPerso}, {{OkCancel, missing}}},
        {"", {UnitaNonPronta}, {{OkCancel, notReady}, {Ok, givenUp}}},
        {"", {UnitaNonPronta, Assente}, {{OkCancel, notReady}, {Ok, noIndex}}}};
    for (const auto& [below, found, expected] : cases) {
        brani.InserisciBrano({"old", "", "", ""});
        config.OpenDir = directory.Path().string() + "/" + below;
        auto next = found.begin();
        const auto end = found.end();
        libreria.cercaIndice = [&next](const fs::path&) { return *next++; };
        msgBox.whileShown = [&] {
            EXPECT_EQ(windows.pointer, Pointer::Normal);
            msgBox.answers = {next == end ? Answer::Cancel : Answer::Ok};
        };
        CaricaIndice(libreria);
        EXPECT_EQ(brani.NumBrani(), 0);
        ASSERT_EQ(msgBox.shown.size(), expected.size());
        for (std::size_t i = 0; i < expected.size(); ++i) {
            EXPECT_EQ(msgBox.shown[i].buttons, expected[i].first);
            EXPECT_THAT(msgBox.shown[i].text, StartsWith(expected[i].second));
        }
        msgBox.shown.clear();
    }
}

TEST_F(LibreriaTest, LoadsAsManySongsAsTheTableHolds) {
    std::string index = "[Songs]\r\n";
    for (int i = 1; i <= 32'770; ++i) {
        index += std::to_string(i) + "=||?\r\n";
    }
    Index(index);
    CaricaIndice(libreria);
    EXPECT_EQ(brani.NumBrani(), 32'767);
    EXPECT_THAT(Messages(), ElementsAre("The karaoke database holds 32770 songs: the first 32767 "
                                        "are shown, the other 3 are not."));
}

TEST_F(LibreriaTest, RebuildsFromTheSongFiles) {
    Lyk("new.lyk", "*TINew\r\n*AUSinger\r\n*ALHits\r\n");
    Lyk("Caf\u00E9.LYK", "*TICaf\xE9\r\n*AUAC|DC\r\n*ALBar\r\n");
    Lyk("[live] tune.lyk");
    directory.Write("new.lyk.bak", "*TIx");
    directory.Write("other.mid", "x");
    fs::create_directory(directory / "folder.lyk");
    Index(
        "[Songs]\r\n../new=Outside||?\r\ngone=Gone||?\r\ncaf\xC9=Old|Old|Old\r\n"
        "[Album]\r\nOld=0\r\n");
    EXPECT_TRUE(AggiornaIndice(libreria).saltati.empty());
    EXPECT_EQ(Index(),
              "[Songs]\r\nCaf\xE9=Caf\xE9|AC|DC|Bar\r\n[live] tune=||?\r\n"
              "new=New|Singer|Hits\r\n"
              "[Album]\r\nOld=0\r\nBar=|\r\nHits=|\r\nDC|Bar=|\r\n?=|\r\n");
    EXPECT_THAT(windows.log, ElementsAre("busy", "normal"));
    EXPECT_EQ(windows.turns, 3 + 5);  // files, then keys
}

TEST_F(LibreriaTest, ARebuildPassesOverWhatItCannotIndex) {
    for (const std::string name :
         {"a.lyk", "B.lyk", "b.lyk", "c.lyk", "d.lyk", "e=f.lyk", "g\n.lyk", "h.LYK", "h.lyk"}) {
        Lyk(name, "*TI" + name + "\r\n");
    }
    Index("[Songs]\r\nc=Kept||?\r\nd=Gone||?\r\n");
    windows.onTurn = [this](int turn) {
        if (turn == 1) {
            fs::remove(directory / "c.lyk");
            fs::create_symlink("/proc/self/mem", directory / "c.lyk");
            fs::remove(directory / "d.lyk");
        }
    };
    const EsitoAggiornamento result = AggiornaIndice(libreria);
    EXPECT_THAT(Table(), ElementsAre("c=Kept||?", "a=a.lyk||?", "B=B.lyk||?", "h=h.lyk||?"));
    const std::string otherCase = ": another song's name differs only in letter case.";
    EXPECT_THAT(
        result.saltati,
        ElementsAre(EndsWith("/b.lyk" + otherCase), EndsWith("/c.lyk: Input/output error."),
                    HasSubstr("/d.lyk: No such"), EndsWith("/e=f.lyk: its name holds \"=\"."),
                    EndsWith("/g\n.lyk: its name holds control characters."),
                    EndsWith("/h.LYK" + otherCase)));
}

TEST_F(LibreriaTest, TheCommandsKeepTheSelectionByPosition) {
    Lyk("a.lyk");
    Index("[Songs]\r\ngone=||?\r\n");
    msgBox.whileShown = [this] { windows.log.push_back(msgBox.shown.back().text); };
    msgBox.answers = {Answer::Cancel};
    SincronizzaDB(libreria, windows.Windows());
    EXPECT_THAT(windows.log, ElementsAre(StartsWith("Updating the index means reading")));
    EXPECT_EQ(msgBox.shown[0].icon, Icon::Question);
    EXPECT_EQ(msgBox.shown[0].buttons, Buttons::OkCancel);
    EXPECT_EQ(msgBox.shown[0].defaultButton, 2);

    windows.selected = 2;
    windows.log.clear();
    SincronizzaDB(libreria, windows.Windows());
    EXPECT_THAT(windows.log, ElementsAre(StartsWith("Updating the"), "busy", "disable",
                                         "progress Updating, please wait...", "list", "select 2",
                                         "enable", "close", "normal", "Index update completed."));
    EXPECT_EQ(msgBox.shown.back().icon, Icon::Information);
    EXPECT_THAT(Table(), ElementsAre("a=||?"));

    fs::remove(directory / "a.lyk");
    windows.selected = 0;
    windows.log.clear();
    RileggiDB(libreria, windows);
    EXPECT_THAT(windows.log, ElementsAre("busy", "list", "normal"));
    EXPECT_THAT(Table(), ElementsAre("a=||?"));
}

struct AggiungiBraniTest : ::testing::Test, SongLibrary {
    /// The two files of a song in the other directory.
    void Source(const std::string& name) const {
        source.Write(name + ".lyk", "Cantabelle1.0\r\n*TIT\r\n*ALNew\r\n0001001x\r\n");
        source.Write(name + ".mid", "music of " + name);
    }
    void Import(const std::vector<fs::path>& files) {
        dialog.files.push_back(files);
        (void)AggiungiBrani(libreria, dialog, windows);
        EXPECT_EQ(windows.pointer, Pointer::Normal);
    }
    TempDirectory source;
    ScriptedDialog dialog;
};

TEST_F(AggiungiBraniTest, CopiesAndIndexesTheSongs) {
    Source("b");
    Source("a");
    source.Write("c.LYK", "not a song");
    source.Write("C.Mid", "music");
    directory.Write("B.MID", "an orphan");
    const auto time = fs::file_time_type::clock::now() - std::chrono::hours(24 * 1000);
    fs::last_write_time(source / "a.mid", time);
    Import({source / "b.lyk", source / "a.lyk", source / "c.LYK"});
    EXPECT_THAT(Table(), ElementsAre("b=T||New", "a=T||New", "c=||?"));
    EXPECT_THAT(Index(), HasSubstr("[Album]\r\n?=|\r\nNew=|\r\n"));
    EXPECT_EQ(Content(directory / "a.lyk"), Content(source / "a.lyk"));
    EXPECT_EQ(fs::last_write_time(directory / "a.mid"), time);
    EXPECT_EQ(Content(directory / "B.MID"), "music of b");
    EXPECT_THAT(windows.log, ElementsAre("busy", "list", "normal"));
    EXPECT_THAT(Messages(), ElementsAre(StartsWith("3 songs have been correctly imported.")));
}

TEST_F(AggiungiBraniTest, RefusesTheLibraryItselfAndTooManyFiles) {
    directory.Write("song.lyk", "M");
    const fs::path path = directory.Path();
    fs::create_symlink(path, source / "link");
    for (const fs::path& spelling : {path, source / "link", path / ".." / path.filename()}) {
        Import({spelling / "song.lyk"});
        EXPECT_THAT(Messages(), ElementsAre(StartsWith("You can't add a song from the same")))
            << spelling;
    }
    // The directory takes 192 characters and each name 100, with a NUL after it.
    std::vector<fs::path> files(80, "/" + std::string(190, 'd') + "/" + std::string(99, 'n'));
    Import(files);
    EXPECT_EQ(Messages().size(), 80U);  // all of them lack the music
    files.back() += "n";
    Import(files);
    EXPECT_THAT(Messages(), ElementsAre(HasSubstr("too many files!")));
    EXPECT_EQ(Content(directory / "song.lyk"), "M");
}

TEST_F(AggiungiBraniTest, GoesOnAfterASongItCannotTakeUntilACopyFails) {
    directory.Write("there.lyk", "M");
    for (const char* name : {"there", "a=b", "good", "big", "z"}) {
        Source(name);
    }
    source.Write("alone.lyk", "M");
    fs::create_directory(directory / "big.mid");
    Import({source / "alone.lyk", source / "THERE.lyk", source / "a=b.lyk", source / "good.lyk",
            source / "big.lyk", source / "z.lyk"});
    EXPECT_EQ(msgBox.shown[0].title, "alone");
    const auto failed = StartsWith("Can't write the file " + (directory / "big.mid").string() +
                                   ": Is a directory.\r\n\r\n");
    EXPECT_THAT(Messages(),
                ElementsAre(HasSubstr("MID file missing!"), HasSubstr("is already stored"),
                            HasSubstr("can't store"), failed, StartsWith("One song has been")));
    EXPECT_THAT(Table(), ElementsAre("good=T||New"));
    EXPECT_THAT(directory.Names(),
                ElementsAre("big.mid", "good.lyk", "good.mid", "sonnel.snl", "there.lyk"));

    fs::remove(directory / "sonnel.snl");
    fs::create_directory(directory / "sonnel.snl");
    Import({source / "z.lyk"});
    EXPECT_THAT(Messages(), ElementsAre(HasSubstr("copied, but the index of the database can't")));
}

}  // namespace
}  // namespace sonnel::test
