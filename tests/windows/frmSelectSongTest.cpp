#include "fakes/ClockedEvents.h"
#include "fakes/ScriptedDialog.h"
#include "fakes/ScriptedMsgBox.h"
#include "fakes/TempDirectory.h"
#include "library/CaricaIndice.h"
#include "library/frmSelectSong.h"
#include "settings/Config.h"

#include <QListView>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <set>
#include <tuple>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

using testing::ElementsAre;

constexpr const char* Index =
    "[Songs]\r\n"
    "tune=Mare|Rossi|Estate\r\n"
    "stella=stella|Verdi|?\r\n"
    "abete=Abete|Neri|Boschi\r\n"
    "zero=\xC8 tardi|Bianchi|?\r\n";

/// The selection window over a library of four songs on disk.
class frmSelectSongTest : public testing::Test {
  protected:
    void SetUp() override {
        folder.Write("sonnel.snl", Index);
        CaricaIndice(library);
        Show();
    }
    /// Shows the window and lets it take the keys.
    void Show() {
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    QListView& List() const { return *window.findChild<QListView*>(); }
    std::vector<std::string> Lines() const {
        std::vector<std::string> lines;
        for (int i = 0; i < List().model()->rowCount(); ++i) {
            lines.push_back(List().model()->index(i, 0).data().toString().toStdString());
        }
        return lines;
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&List(), key, modifiers);
    }
    void Button(int index) { window.findChild<QToolBar*>()->actions().at(index - 1)->trigger(); }
    std::string Pressed() const {
        std::string pressed;
        for (const QAction* action : window.findChild<QToolBar*>()->actions()) {
            pressed += action->isChecked() ? action->text().toStdString() : "";
        }
        return pressed;
    }
    /// The commands that cannot be used.
    std::set<std::string> Unusable() const {
        std::set<std::string> names;
        for (const QAction* action : window.findChildren<QAction*>()) {
            if (!action->isEnabled() && !action->text().isEmpty()) {
                names.insert(action->text().toStdString());
            }
        }
        for (const QPushButton* button : window.findChildren<QPushButton*>()) {
            if (!button->isEnabled()) {
                names.insert(button->text().toStdString());
            }
        }
        return names;
    }
    /// The window is closed, with this answer; it is shown again.
    void ExpectClosed(const std::string& tag) {
        EXPECT_FALSE(window.isVisible());
        EXPECT_EQ(window.Tag, tag);
        Show();
    }

    TempDirectory folder;
    Config config = [this] {
        Config made;
        made.OpenDir = folder.Path().string() + "/";
        return made;
    }();
    TabellaBrani table;
    ScriptedMsgBox msgBox;
    ManualClock clock;
    ClockedEvents events{clock};
    Libreria library{config, table, msgBox, events};
    ScriptedDialog dialog;
    std::mt19937 random{1};  // NOLINT(bugprone-random-generator-seed): the same every time
    // The table is filled after the window is made, as when the program starts without a library.
    frmSelectSong window{{library, dialog, random}};
};

const std::set<std::string> NeedASong = {"&Ok",         "&Open",   "&Properties",
                                         "Delete song", "&Delete", "Edit song properties"};

TEST_F(frmSelectSongTest, AnEmptyLibraryOffersNoSong) {
    std::set<std::string> none = NeedASong;
    none.insert({"Open &random song", "Open a random song"});
    EXPECT_EQ(window.windowTitle(), "Song selection - 0 songs");
    EXPECT_EQ(Unusable(), none);
    Key(Qt::Key_Return);
    Key(Qt::Key_Delete);
    EXPECT_TRUE(window.isVisible() && msgBox.shown.empty());
    window.AggiornaLista();
    EXPECT_EQ(window.windowTitle(), "Song selection - 4 songs");
    EXPECT_EQ(Unusable(), NeedASong);
    const frmSelectSong filled({library, dialog, random});
    EXPECT_EQ(filled.BranoSelezionato(), 3) << "the first line's song";
}

TEST_F(frmSelectSongTest, OrdersKeepTheSelectedSong) {
    window.AggiornaLista();
    window.SelezionaBrano(2);
    const std::vector<std::string> byTitle = {"Abete (Neri) - Boschi",
                                              "\xC3\x88 tardi (Bianchi) - <None>",
                                              "Mare (Rossi) - Estate", "stella (Verdi) - <None>"};
    const std::vector<std::string> byAuthor = {"Bianchi: \xC3\x88 tardi - <None>",
                                               "Neri: Abete - Boschi", "Rossi: Mare - Estate",
                                               "Verdi: stella - <None>"};
    const std::vector<std::string> byAlbum = {"<None> : \xC3\x88 tardi (Bianchi)",
                                              "<None> : stella (Verdi)", "Boschi : Abete (Neri)",
                                              "Estate : Mare (Rossi)"};
    for (const auto& [key, button, lines, name] :
         {std::tuple{Qt::Key_F6, 10, byAuthor, "Sort by Author"},
          {Qt::Key_F7, 11, byAlbum, "Sort by Album"},
          {Qt::Key_F5, 9, byTitle, "Sort by Title"}}) {
        Key(key);
        EXPECT_EQ(Lines(), lines);
        Button(button == 9 ? 11 : button - 1);
        Button(button);
        EXPECT_EQ(Lines(), lines);
        EXPECT_EQ(Pressed(), name);
        EXPECT_EQ(window.BranoSelezionato(), 2);
        window.AggiornaLista();
        EXPECT_EQ(Pressed(), name);
        EXPECT_EQ(events.pointer, Pointer::Normal);
    }
    window.SelezionaBrano(9);
    EXPECT_EQ(window.BranoSelezionato(), 2) << "no line shows it";
}

TEST_F(frmSelectSongTest, EveryWayOutLeavesItsAnswer) {
    window.AggiornaLista();
    window.SelezionaBrano(1);
    const auto button = [this](const char* name) {
        for (auto* found : window.findChildren<QPushButton*>()) {
            if (found->text() == name) {
                QTest::mouseClick(found, Qt::LeftButton);
            }
        }
    };
    const auto doubleClick = [this](int line) {
        const QPoint place = List().visualRect(List().model()->index(line, 0)).center();
        QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, place);
    };
    const std::vector<std::pair<std::function<void()>, std::string>> ways = {
        {[&] { Key(Qt::Key_Return); }, "1"},
        {[&] { Key(Qt::Key_Escape); }, ""},
        {[&] { Key(Qt::Key_F2); }, "1"},  // the line is selected still
        {[&] { Key(Qt::Key_Q, Qt::ControlModifier); }, ""},
        {[&] { button("&Ok"); }, "1"},
        {[&] { button("Cancel"); }, ""},
        {[&] { doubleClick(3); }, "2"},
        {[&] { window.close(); }, ""},
        {[&] { QTest::keyClicks(&List(), "ma"), Key(Qt::Key_Return); }, "1"}};
    for (const auto& [wayOut, answer] : ways) {
        wayOut();
        ExpectClosed(answer);
    }
    QTimer once;
    once.setSingleShot(true);
    QObject::connect(&once, &QTimer::timeout, [this] { Key(Qt::Key_Return); });
    once.start(0);
    window.hide();
    window.exec();
    ExpectClosed("1");
}

TEST_F(frmSelectSongTest, ARandomSongIsOneOfTheList) {
    window.AggiornaLista();
    window.SelezionaBrano(2);
    std::set<std::string> picked;
    for (int i = 0; i < 60; ++i) {
        Button(4);
        picked.insert(window.Tag);
        EXPECT_EQ(window.BranoSelezionato(), 2);
        ExpectClosed(window.Tag);
    }
    EXPECT_THAT(picked, ElementsAre("1", "2", "3", "4"));
}

TEST_F(frmSelectSongTest, ASongFromElsewhereNeedsItsMusic) {
    for (const char* name : {"a.lyk", "b.lyk", "b.MID"}) {
        folder.Write(name, "");
    }
    dialog.files = {{}, {folder / "a.lyk"}, {folder / "b.lyk"}};
    Key(Qt::Key_F2, Qt::ShiftModifier);
    Button(6);
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(msgBox.shown.size(), 1U);
    Button(6);
    ExpectClosed("F=" + (folder / "b").string());
}

TEST_F(frmSelectSongTest, DeletingASongLeavesTheNextOneSelected) {
    for (const char* name : {"tune.lyk", "tune.MID", "tune.bak", "zero.lyk"}) {
        folder.Write(name, "");
    }
    window.AggiornaLista();
    window.SelezionaBrano(1);
    msgBox.answers = {Answer::Cancel};
    Key(Qt::Key_Delete);
    EXPECT_EQ(Lines().size(), 4U);
    EXPECT_EQ(folder.Names().size(), 5U);
    Button(3);
    ASSERT_EQ(msgBox.shown.size(), 2U);
    const Message& asked = msgBox.shown[1];
    EXPECT_EQ(asked.text,
              "Delete the song \"Mare\"?\r\nWarning: both LYK and MID files will be removed!");
    EXPECT_EQ(asked.title, "Sonnel Karaoke Player");
    EXPECT_TRUE(asked.icon == Icon::None && asked.buttons == Buttons::OkCancel &&
                asked.defaultButton == 2);
    EXPECT_THAT(folder.Names(), ElementsAre("sonnel.snl", "zero.lyk"));
    EXPECT_EQ(window.windowTitle(), "Song selection - 3 songs");
    EXPECT_EQ(window.BranoSelezionato(), 1);
    EXPECT_EQ(table.Brani(1).NomeFile, "stella");
    EXPECT_TRUE(List().hasFocus());

    window.SelezionaBrano(3);
    Key(Qt::Key_Delete);
    EXPECT_EQ(window.BranoSelezionato(), 0);
    EXPECT_EQ(Unusable(), NeedASong);
    EXPECT_THAT(folder.Names(), ElementsAre("sonnel.snl"));
}

TEST_F(frmSelectSongTest, ReloadAndRebuildTakeNoInput) {
    window.AggiornaLista();
    window.SelezionaBrano(2);
    folder.Write("sonnel.snl", "[Songs]\r\na=One|x|?\r\nb=Two|x|?\r\n");
    Key(Qt::Key_F8);
    EXPECT_THAT(Lines(), ElementsAre("One (x) - <None>", "Two (x) - <None>"));
    EXPECT_EQ(window.BranoSelezionato(), 2);

    int rebuilds = 0;
    window.SincronizzaDB = [&] {
        ++rebuilds;
        for (const Qt::Key key : {Qt::Key_F9, Qt::Key_F2, Qt::Key_Escape}) {
            QTest::keyClick(window.windowHandle(), key);
        }
        window.close();
        EXPECT_TRUE(window.isVisible());
    };
    Key(Qt::Key_F9);
    EXPECT_EQ(rebuilds, 1);
    Button(14);
    EXPECT_EQ(rebuilds, 2);
    EXPECT_TRUE(window.isEnabled() && List().hasFocus());
}

TEST_F(frmSelectSongTest, CommandsOfOthersAreCarriedOut) {
    std::string done;
    Key(Qt::Key_F3);
    Button(1);
    window.AggiungiBrani = [&] { done += 'a'; };
    window.ProprietaBrano = [&] { done += 'p'; };
    window.ConvertiKar = [&] { done += 'c'; };
    Key(Qt::Key_F4);
    EXPECT_EQ(done, "") << "no song is selected";
    window.AggiornaLista();
    window.SelezionaBrano(1);
    Key(Qt::Key_Insert, Qt::ControlModifier);
    Key(Qt::Key_F4);
    Key(Qt::Key_F3);
    for (const int index : {1, 2, 7}) {
        Button(index);
    }
    EXPECT_EQ(done, "apcapc");
}

}  // namespace
}  // namespace sonnel::test
