#include "fakes/ClockedEvents.h"
#include "fakes/ScriptedDialog.h"
#include "fakes/ScriptedMsgBox.h"
#include "fakes/TempDirectory.h"
#include "library/frmSelectSong.h"

#include <QTest>
#include <functional>
#include <map>
#include <set>
#include <tuple>
#include <utility>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

using testing::ElementsAre;

/// The selection window over a library of four songs on disk, still empty as it is when the table
/// is loaded after the window is made.
class frmSelectSongTest : public testing::Test {
  protected:
    struct Commands : ComandiSelezione {
        void ConvertiKar() override { ++conversions; }
        void SincronizzaDB() override { rebuild(); }
        int conversions = 0;
        std::function<void()> rebuild;
    };
    void SetUp() override {
        folder.Write("sonnel.snl",
                     "[Songs]\r\ntune=Mare|Rossi|Estate\r\nstella=mare|Verdi|?\r\n"
                     "abete=Abete|Neri|Boschi\r\nzero=\xC8 tardi|Bianchi|?\r\n");
        config.OpenDir = folder.Path().string() + "/";
        CaricaIndice(library);
        Show();
    }
    /// Shows the window and lets it take the keys.
    void Show() {
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    void Fill(std::int16_t selected) {
        window.AggiornaLista();
        window.SelezionaBrano(selected);
    }
    QListView& List() const { return *window.findChild<QListView*>(); }
    std::string Lines() const {
        std::string lines;
        for (int i = 0; i < List().model()->rowCount(); ++i) {
            lines += List().model()->index(i, 0).data().toString().toStdString() + '|';
        }
        return lines;
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&List(), key, modifiers);
    }
    QAction* Button(int index) const {
        return window.findChild<QToolBar*>()->actions().at(index - 1);
    }
    /// The menu items and toolbar buttons that cannot be used.
    std::set<QString> Unusable() const {
        std::set<QString> names;
        for (const QAction* action : window.findChildren<QAction*>()) {
            if (!action->isEnabled() && !action->text().isEmpty()) {
                names.insert(action->text());
            }
        }
        return names;
    }
    /// The window is closed, with this answer and the song it means; it is shown again.
    void ExpectClosed(const std::string& tag, const std::string& base) {
        EXPECT_FALSE(window.isVisible());
        EXPECT_EQ(window.Tag, tag);
        EXPECT_EQ(window.Scelta() ? window.Scelta()->base : "", base);
        Show();
    }

    TempDirectory folder;
    Config config;
    TabellaBrani table;
    ScriptedMsgBox msgBox;
    ManualClock clock;
    ClockedEvents events{clock};
    Libreria library{config, table, msgBox, events};
    ScriptedDialog dialog;
    std::mt19937 random{1};  // NOLINT(bugprone-random-generator-seed): the same every time
    Commands commands;
    frmSelectSong window{{library, dialog, random, commands}};
};

const std::set<QString> NeedASong = {"&Open", "&Properties", "Delete song", "&Delete",
                                     "Edit song properties"};

TEST_F(frmSelectSongTest, AnEmptyLibraryOffersNoSong) {
    std::set<QString> needSongs = NeedASong;
    needSongs.insert({"Open &random song", "Open a random song"});
    EXPECT_EQ(window.windowTitle(), "Song selection - 0 songs");
    EXPECT_EQ(Unusable(), needSongs);
    window.AggiornaLista();
    EXPECT_EQ(window.windowTitle(), "Song selection - 4 songs");
    EXPECT_EQ(Unusable(), NeedASong);
    List().clearFocus();
    List().setFocus();
    Key(Qt::Key_Down);
    EXPECT_EQ(window.BranoSelezionato(), 3) << "the keys begin with the first line";
    EXPECT_EQ(frmSelectSong({library, dialog, random, commands}).BranoSelezionato(), 3)
        << "the first line";
}

TEST_F(frmSelectSongTest, OrdersKeepTheSelectedSong) {
    Fill(2);
    for (const auto& [key, button, lines] :
         {std::tuple{Qt::Key_F6, 10,
                     "Bianchi: \xC3\x88 tardi - <None>|Neri: Abete - Boschi|Rossi: Mare - Estate|"
                     "Verdi: mare - <None>|"},
          {Qt::Key_F7, 11,
           "<None> : \xC3\x88 tardi (Bianchi)|<None> : mare (Verdi)|Boschi : Abete (Neri)|"
           "Estate : Mare (Rossi)|"},
          {Qt::Key_F5, 9,
           "Abete (Neri) - Boschi|\xC3\x88 tardi (Bianchi) - <None>|Mare (Rossi) - Estate|"
           "mare (Verdi) - <None>|"}}) {
        Key(key);
        EXPECT_EQ(Lines(), lines);
        Button(button == 9 ? 11 : 9)->trigger();
        Button(button)->trigger();
        window.AggiornaLista();
        EXPECT_EQ(Lines(), lines);
        EXPECT_TRUE(Button(button)->isChecked());
        EXPECT_EQ(window.BranoSelezionato(), 2);
    }
    window.SelezionaBrano(9);
    EXPECT_EQ(window.BranoSelezionato(), 2) << "no line shows it";
}

TEST_F(frmSelectSongTest, EveryWayOutLeavesItsAnswer) {
    Fill(1);
    const auto buttons = window.findChildren<QPushButton*>();
    const QPoint fourth = List().visualRect(List().model()->index(3, 0)).center();
    const std::vector<std::pair<std::function<void()>, std::string>> ways = {
        {[&] { Key(Qt::Key_Return); }, "1"},
        {[&] { Key(Qt::Key_Escape); }, ""},
        {[&] { Key(Qt::Key_F2); }, "1"},  // the line is selected still
        {[&] { Key(Qt::Key_Q, Qt::ControlModifier); }, ""},
        {[&] { buttons.at(0)->click(); }, "1"},
        {[&] { buttons.at(1)->click(); }, ""},
        {[&] {
             QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, fourth);
             QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, fourth);
         },
         "2"},
        {[&] { window.close(); }, ""},
        {[&] { QTest::keyClicks(&List(), "ma"), Key(Qt::Key_Return); }, "1"}};
    const std::map<std::string, std::string> files{{"1", "tune"}, {"2", "stella"}};
    for (const auto& [wayOut, answer] : ways) {
        wayOut();
        ExpectClosed(answer, answer.empty() ? "" : config.OpenDir + files.at(answer));
    }
}

TEST_F(frmSelectSongTest, ARandomSongIsOneOfTheList) {
    Fill(2);
    std::set<std::string> picked;
    for (int i = 0; i < 60; ++i) {
        Button(4)->trigger();
        picked.insert(window.Tag);
        EXPECT_EQ(window.BranoSelezionato(), 2);
        EXPECT_FALSE(window.isVisible());
    }
    EXPECT_THAT(picked, ElementsAre("1", "2", "3", "4"));
}

TEST_F(frmSelectSongTest, ASongFromElsewhereNeedsItsMusic) {
    dialog.files = {{folder.Write("a.lyk", "")}, {folder.Write("b\xC3\xA8.LYK", "")}};
    folder.Write("B\xC3\xA8.Mid", "");
    Key(Qt::Key_F2, Qt::ShiftModifier);
    ASSERT_EQ(msgBox.shown.size(), 1U);
    EXPECT_THAT(msgBox.shown[0].text,
                testing::StartsWith("Can't load the selected song: MID file missing!\r\nTo "));
    EXPECT_EQ(dialog.asked[0].title + dialog.asked[0].name, "Open a LYK file*.lyk");
    EXPECT_TRUE(window.isVisible());
    Button(6)->trigger();
    ExpectClosed("F=" + (folder / "b\xC3\xA8").string(), (folder / "b\xC3\xA8").string());
}

TEST_F(frmSelectSongTest, DeletingASongLeavesTheNextOneSelected) {
    for (const char* name : {"tune.lyk", "tune.MID", "zero.lyk"}) {
        folder.Write(name, "");
    }
    Fill(1);
    msgBox.answers = {Answer::Cancel};
    Key(Qt::Key_Delete);
    EXPECT_EQ(folder.Names().size(), 4U);
    Button(3)->trigger();
    const Message& asked = msgBox.shown.at(1);
    EXPECT_EQ(asked.text,
              "Delete the song \"Mare\"?\r\nWarning: both LYK and MID files will be removed!");
    EXPECT_TRUE(asked.buttons == Buttons::OkCancel && asked.defaultButton == 2);
    EXPECT_THAT(folder.Names(), ElementsAre("sonnel.snl", "zero.lyk"));
    EXPECT_EQ(window.windowTitle(), "Song selection - 3 songs");
    EXPECT_EQ(table.Brani(window.BranoSelezionato()).NomeFile, "stella");

    window.SelezionaBrano(3);
    Key(Qt::Key_Delete);
    EXPECT_EQ(window.BranoSelezionato(), 0);
    EXPECT_EQ(Unusable(), NeedASong);
}

TEST_F(frmSelectSongTest, ReloadAndRebuildTakeNoInput) {
    Fill(2);
    folder.Write("sonnel.snl", "[Songs]\r\na=One|x|?\r\nb=Two|x|?\r\n");
    Key(Qt::Key_F8);
    EXPECT_EQ(Lines(), "One (x) - <None>|Two (x) - <None>|");
    EXPECT_EQ(window.BranoSelezionato(), 2);

    int rebuilds = 0;
    commands.rebuild = [&] {
        ++rebuilds;
        for (const Qt::Key key : {Qt::Key_F9, Qt::Key_F2, Qt::Key_Escape}) {
            QTest::keyClick(window.windowHandle(), key);
        }
        window.close();
        EXPECT_TRUE(window.isVisible());
    };
    Key(Qt::Key_F9);
    EXPECT_TRUE(rebuilds == 1 && window.isEnabled() && List().hasFocus());
}

TEST_F(frmSelectSongTest, CommandsOfOthersAreCarriedOut) {
    Fill(1);
    dialog.files = {{}, {}};
    Key(Qt::Key_Insert, Qt::ControlModifier);
    Button(1)->trigger();
    EXPECT_EQ(dialog.asked.at(1).title, "Add a new LYK song");
    Key(Qt::Key_F3);
    Button(7)->trigger();
    EXPECT_EQ(commands.conversions, 2);
}

}  // namespace
}  // namespace sonnel::test
