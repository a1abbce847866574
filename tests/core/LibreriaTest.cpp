#include "fakes/SongLibrary.h"
#include "library/AggiornaIndice.h"
#include "library/SincronizzaDB.h"

#include <deque>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

struct LibreriaTest : ::testing::Test, SongLibrary {};

TEST_F(LibreriaTest, LoadsTheIndexWithoutLookingAtTheSongs) {
    Index("[Songs]\r\nz=Zoo|Z|Hits\r\na=||?\r\nk\r\n[Album]\r\nHits=|\r\n");
    CaricaIndice(libreria);
    EXPECT_THAT(Table(), ElementsAre("z=Zoo|Z|Hits", "a=||?", "k=||"));
    EXPECT_TRUE(msgBox.shown.empty());
    EXPECT_THAT(windows.log, ElementsAre("busy", "normal"));
    EXPECT_EQ(windows.turns, 0);
}

TEST_F(LibreriaTest, TellsWhyThereIsNothingToLoad) {
    const std::string missing = "Specified karaoke database directory doesn't exist";
    const std::string noIndex = "The karaoke index file does not exist: to create";
    const std::string notReady = "The karaoke database drive is not ready: if +cancel";
    const std::string givenUp = "If the directory is wrong or no longer exists,";
    using enum StatoIndice;
    using A = Answer;
    struct Case {
        std::vector<StatoIndice> found;  ///< none: what is really on disk
        std::string openDir;
        std::deque<Answer> answers;
        std::vector<std::string> shown;
    };
    const std::string here = config.OpenDir;
    for (const Case& c :
         std::vector<Case>{{{}, here, {}, {noIndex}},
                           {{}, here + "none/inside/", {}, {missing}},
                           {{DispositivoPerso}, here, {A::Ok}, {missing + " +cancel"}},
                           {{UnitaNonPronta, UnitaNonPronta, UnitaNonPronta, UnitaNonPronta},
                            here,
                            {A::Ok, A::Ok, A::Ok, A::Cancel},
                            {notReady, notReady, notReady, notReady, givenUp}},
                           {{UnitaNonPronta, Assente}, here, {A::Ok}, {notReady, noIndex}}}) {
        brani.InserisciBrano({"old", "", "", ""});
        config.OpenDir = c.openDir;
        msgBox.shown.clear();
        msgBox.answers = c.answers;
        msgBox.whileShown = [this] { EXPECT_EQ(windows.pointer, Pointer::Normal); };
        std::size_t looked = 0;
        libreria.cercaIndice = [&](const fs::path& index) {
            return c.found.empty() ? CercaIndice(index) : c.found.at(looked++);
        };
        CaricaIndice(libreria);
        EXPECT_EQ(looked, c.found.size());
        EXPECT_EQ(brani.NumBrani(), 0);
        ASSERT_EQ(msgBox.shown.size(), c.shown.size());
        for (std::size_t i = 0; i < c.shown.size(); ++i) {
            const Message& m = msgBox.shown[i];
            const std::size_t cancel = c.shown[i].find(" +");
            EXPECT_THAT(m.text, StartsWith(c.shown[i].substr(0, cancel)));
            EXPECT_EQ(m.buttons == Buttons::OkCancel, cancel != std::string::npos);
            EXPECT_EQ(m.icon, Icon::Exclamation);
            EXPECT_EQ(m.title, "Sonnel Karaoke Player");
        }
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
    ASSERT_EQ(msgBox.shown.size(), 1U);
    EXPECT_EQ(msgBox.shown[0].text,
              "The karaoke database holds 32770 songs: the first 32767 are shown, the other 3 are "
              "not.");
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
    const EsitoAggiornamento result = AggiornaIndice(libreria);
    EXPECT_TRUE(result.saltati.empty());
    EXPECT_FALSE(result.errore);
    EXPECT_EQ(Index(),
              "[Songs]\r\nCaf\xE9=Caf\xE9|AC|DC|Bar\r\n[live] tune=||?\r\n"
              "new=New|Singer|Hits\r\n"
              "[Album]\r\nOld=0\r\nBar=|\r\nHits=|\r\nDC|Bar=|\r\n?=|\r\n");
    EXPECT_THAT(Table(), ElementsAre("Caf\u00E9=Caf\u00E9|AC|DC|Bar", "[live] tune=||?",
                                     "new=New|Singer|Hits"));
    EXPECT_THAT(windows.log, ElementsAre("busy", "normal"));
    EXPECT_EQ(windows.turns, 3 + 5);  // files, then keys
    EXPECT_TRUE(msgBox.shown.empty());
}

TEST_F(LibreriaTest, ARebuildPassesOverWhatItCannotIndex) {
    for (const char* name :
         {"a.lyk", "B.lyk", "b.lyk", "c.lyk", "d.lyk", "e=f.lyk", "g\n.lyk", "h.LYK", "h.lyk"}) {
        Lyk(name, std::string("*TI") + name + "\r\n");
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
    EXPECT_THAT(result.saltati,
                ElementsAre(HasSubstr("/b.lyk: another song's name differs only in letter case."),
                            HasSubstr("/c.lyk: Input/output error."), HasSubstr("/d.lyk: No such"),
                            HasSubstr("/e=f.lyk: its name holds \"=\"."),
                            HasSubstr("/g\n.lyk: its name holds control characters."),
                            HasSubstr("/h.LYK: another song's name")));
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

}  // namespace
}  // namespace sonnel::test
