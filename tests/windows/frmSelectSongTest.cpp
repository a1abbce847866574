#include "windows/Look.h"

#include "fakes/ScriptedDialog.h"
#include "fakes/SongLibrary.h"
#include "library/frmSelectSong.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <array>
#include <functional>
#include <random>
#include <stdexcept>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

using testing::ElementsAre;

/// The selection window over a library of four songs on disk, still empty as it is when the table
/// is loaded after the window is made.
class frmSelectSongTest : public testing::Test, protected SongLibrary, protected ComandiSelezione {
  protected:
    void ConvertiKar() override { ++conversions; }
    void SincronizzaDB() override { rebuild(); }
    std::optional<std::string> Accoda(std::int16_t position) override {
        queued += std::to_string(position);
        return "Added";
    }
    void AggiungiFile(const std::vector<std::filesystem::path>& /*files*/) override {}
    void SetUp() override {
        Index(
            "[Songs]\r\ntune=Mare|Rossi|Estate\r\nstella=mare|Verdi|?\r\n"
            "abete=Abete|Neri|Boschi\r\nzero=\xC8 tardi|Bianchi|?\r\n");
        CaricaIndice(libreria);
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
    std::string Lines() const {
        std::string lines;
        for (int i = 0; i < list.model()->rowCount(); ++i) {
            lines += list.model()->index(i, 0).data().toString().toStdString() + '|';
        }
        return lines;
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&list, key, modifiers);
    }
    QAction* Button(int index) const {
        return window.findChild<QToolBar*>()->actions().at(index - 1);
    }
    /// How the window was closed: its answer and the song this means. It is shown again.
    std::string Closed() {
        EXPECT_FALSE(window.isVisible());
        std::string answer = window.Tag + (window.Scelta() ? " " + window.Scelta()->base : "");
        Show();
        return answer;
    }

    ScriptedDialog dialog;
    std::mt19937 random{1};  // NOLINT(bugprone-random-generator-seed): the same every time
    std::string queued;
    int conversions = 0;
    std::function<void()> rebuild;
    frmSelectSong window{{libreria, dialog, random, *this}};
    QListView& list = *window.findChild<QListView*>();
};

constexpr const char* kNeedASong = "&Open|&Properties|&Delete|Edit song properties|Delete song|";

TEST_F(frmSelectSongTest, AnEmptyLibraryOffersNoSong) {
    EXPECT_EQ(window.windowTitle(), "Song selection - 0 songs");
    EXPECT_EQ(OutOfUse(window),
              "&Open|Open &random song|&Properties|&Delete|Edit song properties|"
              "Delete song|Open a random song|");
    window.AggiornaLista();
    EXPECT_EQ(window.windowTitle(), "Song selection - 4 songs");
    EXPECT_EQ(OutOfUse(window), kNeedASong);
    list.clearFocus();
    list.setFocus();
    Key(Qt::Key_Down);
    EXPECT_EQ(window.BranoSelezionato(), 3) << "the keys begin with the first line";
    EXPECT_EQ(frmSelectSong({libreria, dialog, random, *this}).BranoSelezionato(), 3)
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

TEST_F(frmSelectSongTest, FindsLinesByTheWordsInThem) {
    auto& words = *window.findChild<QLineEdit*>();
    Fill(1);
    const std::string all = Lines();
    const auto title = [this] { return window.windowTitle().toStdString(); };
    EXPECT_FALSE(words.isVisible());
    Key(Qt::Key_Slash);
    ASSERT_TRUE(words.hasFocus());
    QTest::keyClicks(&words, "BIAN e");
    EXPECT_EQ(Lines(), "\u00C8 tardi (Bianchi) - <None>|");
    EXPECT_EQ(title(), "Song selection - 1 songs");
    EXPECT_EQ(window.BranoSelezionato(), libreria.brani.NumBrani()) << "the first one listed";
    window.AggiornaLista();
    EXPECT_EQ(title(), "Song selection - 1 songs");
    QTest::keyClick(&words, Qt::Key_Down);
    EXPECT_TRUE(list.hasFocus());
    Key(Qt::Key_Escape);
    EXPECT_FALSE(words.isVisible());
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(Lines(), all);
    QTest::keySequence(&window, QKeySequence("Ctrl+F"));
    QTest::keyClicks(&words, "abete xyz");
    EXPECT_EQ(Lines(), "");
    Key(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(queued, "") << "there is no line";
    QTest::keyClick(&words, Qt::Key_Escape);
    Key(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(queued, std::to_string(window.BranoSelezionato()));
    Key(Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(frmSelectSongTest, ASongThatNoLongerHoldsTheWordsKeepsItsProperties) {
    Fill(1);
    Key(Qt::Key_Slash);
    auto& words = *window.findChild<QLineEdit*>();
    words.setText("estate");
    ASSERT_EQ(window.BranoSelezionato(), 1);
    const Later renamed(1, [] {
        QWidget& properties = *QApplication::activeModalWidget();
        QLineEdit& album = *properties.findChild<QComboBox*>()->lineEdit();
        album.selectAll();
        QTest::keyClicks(&album, "Inverno");
        Find<QPushButton>(properties, "&Rename").click();
        Find<QPushButton>(properties, "&Ok").click();
        properties.close();
    });
    Key(Qt::Key_F4);
    EXPECT_EQ(brani.Brani(1).Album, "Inverno");
    words.setText("mare");
    window.SelezionaBrano(1);
    brani.Cambia(1).Titolo = "Onda";
    window.AggiornaLista();
    EXPECT_EQ(window.BranoSelezionato(), 2) << "the first one listed";
}

TEST_F(frmSelectSongTest, EveryWayOutLeavesItsAnswer) {
    Fill(1);
    const auto buttons = window.findChildren<QPushButton*>();
    const QPoint fourth = list.visualRect(list.model()->index(3, 0)).center();
    const std::string first = "1 " + config.OpenDir + "tune";
    const std::vector<std::pair<std::function<void()>, std::string>> ways = {
        {[&] { Key(Qt::Key_Return); }, first},
        {[&] { Key(Qt::Key_Escape); }, ""},
        {[&] { Key(Qt::Key_F2); }, first},  // the line is selected still
        {[&] { Key(Qt::Key_Q, Qt::ControlModifier); }, ""},
        {[&] { buttons.at(0)->click(); }, first},
        {[&] { buttons.at(1)->click(); }, ""}};
    for (const auto& [wayOut, answer] : ways) {
        wayOut();
        EXPECT_EQ(Closed(), answer);
    }
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, fourth);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, fourth);
    EXPECT_EQ(Closed(), "2 " + config.OpenDir + "stella");
    window.close();
    EXPECT_EQ(Closed(), "");
    QTest::keyClicks(&list, "ma");
    Key(Qt::Key_Return);
    EXPECT_EQ(Closed(), first);
}

TEST_F(frmSelectSongTest, ARandomLineOpensItsSong) {
    Fill(2);
    const std::array<std::string, 4> songsOfLines{"3 abete", "4 zero", "1 tune", "2 stella"};
    std::mt19937 same = random;
    for (int i = 0; i < 20; ++i) {
        Button(4)->trigger();
        const std::string& song = songsOfLines.at(same() >> 30U);  // a quarter of its range each
        EXPECT_EQ(Closed(), song.substr(0, 2) + config.OpenDir + song.substr(2));
        EXPECT_EQ(window.BranoSelezionato(), 2);
    }
}

TEST_F(frmSelectSongTest, SongsFromElsewhereAreOpenedAddedAndConverted) {
    dialog.files = {{directory.Write("a.lyk", "")}, {directory.Write("b\xC3\xA8.LYK", "")}};
    directory.Write("B\xC3\xA8.Mid", "");
    Key(Qt::Key_F2, Qt::ShiftModifier);
    EXPECT_THAT(
        Messages(),
        ElementsAre(testing::StartsWith("Can't load the selected song: MID file missing!\r\nTo ")));
    EXPECT_EQ(dialog.asked[0].title + dialog.asked[0].name, "Open a LYK file*.lyk");
    EXPECT_TRUE(window.isVisible());
    Button(6)->trigger();
    const std::string base = config.OpenDir + "b\xC3\xA8";
    EXPECT_EQ(Closed(), "F=" + base + " " + base);
    Key(Qt::Key_Insert, Qt::ControlModifier);
    Button(1)->trigger();
    EXPECT_EQ(dialog.asked.at(3).title, "Add a new LYK song");
    Key(Qt::Key_F3);
    Button(7)->trigger();
    EXPECT_EQ(conversions, 2);
}

TEST_F(frmSelectSongTest, DeletingASongLeavesTheNextOneSelected) {
    for (const char* name : {"tune.lyk", "tune.MID", "zero.lyk"}) {
        directory.Write(name, "");
    }
    Fill(1);
    msgBox.answers = {Answer::Cancel};
    Key(Qt::Key_Delete);
    EXPECT_EQ(directory.Names().size(), 4U);
    Button(3)->trigger();
    const Message& asked = msgBox.shown.at(1);
    EXPECT_EQ(asked.text,
              "Delete the song \"Mare\"?\r\nWarning: both LYK and MID files will be removed!");
    EXPECT_TRUE(asked.buttons == Buttons::OkCancel && asked.defaultButton == 2);
    EXPECT_THAT(directory.Names(), ElementsAre("sonnel.snl", "zero.lyk"));
    EXPECT_EQ(window.windowTitle(), "Song selection - 3 songs");
    EXPECT_EQ(brani.Brani(window.BranoSelezionato()).NomeFile, "stella");

    window.SelezionaBrano(3);
    Key(Qt::Key_Delete);
    EXPECT_EQ(window.BranoSelezionato(), 0);
    EXPECT_EQ(OutOfUse(window), kNeedASong);
}

TEST_F(frmSelectSongTest, ReloadAndRebuildTakeNoInputUntilTheyEndOrFail) {
    Fill(2);
    Index("[Songs]\r\na=One|x|?\r\nb=Two|x|?\r\n");
    Key(Qt::Key_F8);
    EXPECT_EQ(Lines(), "One (x) - <None>|Two (x) - <None>|");
    EXPECT_EQ(window.BranoSelezionato(), 2);

    int rebuilds = 0;
    rebuild = [&] {
        ++rebuilds;
        for (const Qt::Key key : {Qt::Key_F9, Qt::Key_F2, Qt::Key_Escape}) {
            QTest::keyClick(window.windowHandle(), key);
        }
        window.close();
        EXPECT_TRUE(window.isVisible());
    };
    Key(Qt::Key_F9);
    EXPECT_TRUE(rebuilds == 1 && window.isEnabled() && list.hasFocus());

    rebuild = [this] { sonnel::SincronizzaDB(libreria, windows.Windows()); };
    Lyk("song.lyk");
    windows.log.clear();
    windows.onTurn = [](int) { throw std::runtime_error("out of memory"); };
    EXPECT_THROW(window.mnuDataRebuild_Click(), std::runtime_error);
    EXPECT_TRUE(window.isEnabled());
    EXPECT_THAT(windows.log, ElementsAre("busy", "disable", "progress Updating, please wait...",
                                         "enable", "close", "normal"));
}

}  // namespace
}  // namespace sonnel::test
