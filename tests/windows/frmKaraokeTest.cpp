#include "windows/PlayerRig.h"

#include "fakes/SmfBuilder.h"
#include "settings/basRegistry.h"

#include <QFrame>
#include <QMenuBar>
#include <QPointer>
#include <functional>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

using testing::ElementsAre;

constexpr Colour Unsung = 8421376;
constexpr Colour Sung = 0xFFFFFF;

constexpr const char* kWithoutASong =
    "Song informations|Play|Pause|Stop|Song &Properties|&Play|&Pause/continue|&Stop|slider";
constexpr const char* kAtItsStart = "Pause|Stop|&Pause/continue|&Stop|";
constexpr const char* kPlaying =
    "Open|Song informations|Video calibration|Options|Play|"
    "&Open|Cali&brate...|Song &Properties|&Play|&Start|slider";

/// The main window and a song of 30.4 seconds whose page is sung from second 1 to second 4.
class frmKaraokeTest : public testing::Test, protected PlayerRig {
  protected:
    void SetUp() override {
        Store("Opzioni", "Autoplay", "0");
        rig.folder.Write("song.lyk",
                         "Cantabelle1.0\r\n*TIRondini\r\n00000 1Uno$Edue$Etre$Equattro\r\n"
                         "00010 23\r\n00020 28\r\n00030 213\r\n00040 222\r\n");
        SmfBuilder song(1, 500);
        rig.folder.Write("song.mid", song.Note(0, 500, 60).Note(30000, 400, 62).Bytes());
    }
    void OpenSong() { Open((rig.folder / "song.lyk").string()); }
    void Key(Qt::Key key) { QTest::keyClick(window.get(), key); }
    /// The commands and position controls that are out of use.
    std::string OutOfUse() const {
        return test::OutOfUse(*window) + (slider->isEnabled() ? "" : "slider");
    }
    std::string Label(int index) const {
        const auto labels = window->findChild<QFrame*>("SSPanel1")->findChildren<QLabel*>();
        return labels.at(index)->text().toStdString();
    }
    int Pixels(Colour colour) const { return Count(Shot(*lyrics), colour); }
};

TEST_F(frmKaraokeTest, AFirstStartCalibratesInViewAndThenLoadsTheLibrary) {
    Store("Opzioni", "Compensazione", "-1");
    ScriviChiave(registry, RegistryRoot::LocalMachine, R"(SOFTWARE\Classes\.lyk)", "", "");
    const auto note = [this](const std::string& step) {
        const QWidgetList all = QApplication::topLevelWidgets();
        const auto shown = std::count_if(all.begin(), all.end(),
                                         [](const QWidget* one) { return one->isVisible(); });
        others.called.push_back(step + (shown > (window->isVisible() ? 1 : 0) ? ", splash" : "") +
                                (window->isVisible() ? ", window" : "") +
                                (events.pointer == Pointer::Busy ? ", busy" : ""));
    };
    shell.whileRegistering = [&] { note("register"); };
    events.whileWaiting = [&] { note("wait"); };
    msgBox.whileShown = [&] { note("calibrate"); };
    msgBox.answers = {Answer::Cancel};
    Open("");
    EXPECT_THAT(others.called, ElementsAre("register, splash, busy", "wait, splash, busy",
                                           "calibrate, window", "load library"));
    EXPECT_NEAR(rig.clock.TimeOfDay(), 3, 0.51) << "the splash stays";
    EXPECT_EQ(events.pointer, Pointer::Normal);
}

TEST_F(frmKaraokeTest, StartsWithoutASongWithItsMenusAndTheirKeys) {
    Open("");
    EXPECT_TRUE(msgBox.shown.empty());
    EXPECT_EQ(window->windowTitle(), "Sonnel Player 98 4.1 beta");
    EXPECT_EQ(QRect(window->pos(), window->size()), QRect(20, 40, 600, 500));
    EXPECT_EQ(OutOfUse(), kWithoutASong);
    QTest::mouseClick(lyrics, Qt::LeftButton);
    EXPECT_FALSE(Playing());
    std::string tree;
    for (const QAction* top : window->menuBar()->actions()) {
        tree += top->text().toStdString() + ": ";
        for (const QAction* item : top->menu()->actions()) {
            const std::string key = item->shortcut().toString().toStdString();
            tree += item->isSeparator() ? "-" : item->text().toStdString();
            tree += (key.empty() ? "" : " " + key) + "; ";
        }
    }
    EXPECT_EQ(tree,
              "&File: &Open Ctrl+O; -; &Reload index F5; &Update index Ctrl+F5; -; &Exit Ctrl+X; "
              "&View: &Volume control Ctrl+V; Cali&brate... Ctrl+C; -; Song &Properties Ctrl+I; -; "
              "&Options...; "
              "&Karaoke: &Play F2; &Pause/continue F3; &Stop F4; "
              "&Help: &Sonnel home page; Sonnel &links; -; &About Sonnel Player F1; ");

    others.called.clear();
    msgBox.answers = {Answer::Cancel, Answer::Cancel};
    msgBox.whileShown = [this] { others.called.emplace_back("calibrate"); };
    for (const char* keys : {"Ctrl+O", "F5", "Ctrl+F5", "Ctrl+C", "Ctrl+I", "Ctrl+V"}) {
        QTest::keySequence(window.get(), QKeySequence(keys));
    }
    for (const int button : {1, 4, 5, 6, 7}) {
        window->tlbBar_ButtonClick(button);
    }
    EXPECT_THAT(others.called, ElementsAre("choose", "reload", "update", "calibrate", "choose",
                                           "calibrate", "options"));
    EXPECT_EQ(shell.opened.size(), 1U);
    EXPECT_EQ(shell.starts, 2);
}

TEST_F(frmKaraokeTest, ShowsTheSongOfTheCommandLineInTheMiddleBelowTheToolbar) {
    Open("\"" + (rig.folder / "song.mid").string() + "\"");
    EXPECT_TRUE(msgBox.shown.empty());
    EXPECT_EQ(window->windowTitle(), "Sonnel Player 98 4.1 beta - Rondini");
    EXPECT_EQ(Label(1), "0' 30\"");
    EXPECT_EQ(slider->maximum(), 30);
    EXPECT_EQ(OutOfUse(), kAtItsStart);
    EXPECT_EQ(events.pointer, Pointer::Normal);
    EXPECT_GT(Pixels(Unsung), 500);
    EXPECT_EQ(Pixels(Sung), 0);

    const QWidget* area = window->centralWidget();
    const int strip = window->findChild<QToolBar*>()->parentWidget()->height();
    const double line = (lyrics->Measure("T").height + 25) / double{Scale};
    EXPECT_NEAR(lyrics->height(), 4 * line, 0.6);
    EXPECT_NEAR(lyrics->y(), strip + (area->height() - strip - 4 * line) / 2, 0.6);
    constexpr Colour Chosen = 0x2040FF;
    others.options = [this] { config.ColoreSfondo = Chosen; };
    window->mnuVisOpzioni_Click();
    EXPECT_EQ(Shot(*window).pixelColor(10, 490), ToQColor(Chosen)) << "around the words too";
    window->resize(100, 200);
    EXPECT_EQ(lyrics->width(), 554) << "8300 twips";
    EXPECT_EQ(lyrics->y(), strip);
    Store("Opzioni", "Autoplay", "-1");
    OpenSong();
    EXPECT_TRUE(Playing());
}

/// How far a window's middle is from the screen's, in pixels.
int FromTheMiddle(const QWidget& window) {
    return (window.geometry().center() - window.screen()->geometry().center()).manhattanLength();
}

TEST_F(frmKaraokeTest, ASongThatIsMissingIsReportedInABoxThatOutlivesTheSplash) {
    QPointer<frmSplash> splash;
    const auto endSplash = [&] {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            splash = splash ? splash.get() : dynamic_cast<frmSplash*>(widget);
        }
        EXPECT_LE(FromTheMiddle(*splash), 20);
        QTest::keyClick(splash, Qt::Key_Escape);
        EXPECT_TRUE(splash->isVisible());
        splash->tmrClose_Timer();
    };
    const auto endBox = [&] {
        EXPECT_FALSE(splash);
        EXPECT_LE(FromTheMiddle(*QApplication::activeModalWidget()), 20);
        QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return);
    };
    msgBox.whileShown = [&] {
        if (msgBox.shown.size() == 1) {
            const Later first(1, endSplash);
            const Later then(50, endBox);
            QtMsgBox().Show(msgBox.shown.front());
        }
    };
    const std::string line = "\"" + (rig.folder / "none.lyk").string() + "\"";
    Open(line);
    ASSERT_EQ(msgBox.shown.size(), 2U);
    EXPECT_THAT(msgBox.shown[0].text, testing::StartsWith("Can't load the selected song: LYK "));
    EXPECT_EQ(msgBox.shown[1].text, "Wrong parameter: '" + line + "'");
    EXPECT_EQ(msgBox.shown[1].icon, Icon::Critical);
    EXPECT_EQ(OutOfUse(), kWithoutASong);
}

/// What a command shows in a dialog, which Escape closes then: its texts, and whether it has a
/// button.
std::string Seen(const std::function<void()>& command) {
    std::string seen;
    const Later close(1, [&seen] {
        QWidget* dialog = QApplication::activeModalWidget();
        for (const QFrame* label : dialog->findChildren<QFrame*>()) {
            for (const char* text : {"text", "plainText"}) {
                const QVariant shown = label->property(text);
                seen += shown.isValid() ? shown.toString().toStdString() + "|" : "";
            }
        }
        seen += dialog->findChild<QPushButton*>()->isVisible() ? "button" : "";
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    command();
    return seen;
}

TEST_F(frmKaraokeTest, SplashInformationAndWebPages) {
    OpenSong();
    const std::string splash = "Sonnel Player 98|Version 4.1.11beta|for Windows 95|";
    EXPECT_EQ(Seen([this] { window->mnuHelpAbout_Click(); }), splash) << "the one of the start";
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(Seen([this] { window->mnuHelpAbout_Click(); }), splash + "button");
    EXPECT_EQ(Seen([this] { window->tlbBar_ButtonClick(2); }),
              "Title|Rondini|Author/ performer||Karaoke made by||Karaoke editor version||"
              "Karaoke creation date||button");

    window->tlbBar_ButtonClick(7);
    shell.works = false;
    window->mnuHelpWebLinks_Click();
    EXPECT_THAT(shell.opened, ElementsAre("https://www.sonnel-player.example/",
                                          "https://www.sonnel-player.example/links.html"));
    ASSERT_EQ(msgBox.shown.size(), 1U);
    EXPECT_EQ(msgBox.shown[0].text,
              "Can't start the default browser!\r\n(no web browser installed?)");
    EXPECT_EQ(msgBox.shown[0].title, "Sonnel");
}

TEST_F(frmKaraokeTest, KeysButtonsAndClicksOnTheWordsPlayPauseAndStop) {
    OpenSong();
    Key(Qt::Key_F2);
    EXPECT_TRUE(Playing());
    rig.Run(2100);
    EXPECT_EQ(OutOfUse(), kPlaying);
    window->tmrSlider_Timer();
    EXPECT_EQ(Label(0), "0' 02\"");
    EXPECT_EQ(slider->value(), 2);
    Key(Qt::Key_F3);
    EXPECT_EQ(control.Mode(), MciMode::Paused);
    for (const bool playing : {true, false}) {
        QTest::mouseClick(lyrics, Qt::LeftButton);
        EXPECT_EQ(Playing(), playing);
    }
    buttons.at(8)->trigger();
    EXPECT_TRUE(Playing());
    buttons.at(9)->trigger();
    EXPECT_EQ(control.Mode(), MciMode::Paused);
    buttons.at(10)->trigger();
    EXPECT_EQ(control.Position(), 0);
    Key(Qt::Key_F2);
    rig.Run(1600);
    Key(Qt::Key_F4);
    EXPECT_EQ(control.Position(), 0);
    EXPECT_EQ(Label(0), "0' 00\"");
    EXPECT_EQ(slider->value(), 0);
    EXPECT_EQ(OutOfUse(), kAtItsStart);
}

TEST_F(frmKaraokeTest, SliderKeysSeekWhileTheSongDoesNotPlay) {
    OpenSong();
    for (const auto& [key, second] : {std::pair{Qt::Key_Right, 1},
                                      {Qt::Key_End, 30},
                                      {Qt::Key_Home, 0},
                                      {Qt::Key_PageUp, 10}}) {
        QTest::keyClick(slider, key);
        EXPECT_EQ(slider->value(), second);
        EXPECT_EQ(control.Position(), second * 1000);
        EXPECT_EQ(Pixels(Sung) > 0, second > 0);
    }
    Key(Qt::Key_F2);
    rig.Run(100);
    QTest::keyClick(slider, Qt::Key_Right);
    slider->setValue(20);
    rig.Run(100);
    EXPECT_TRUE(Playing());
    EXPECT_NEAR(control.Position(), 10200, 50);
}

TEST_F(frmKaraokeTest, TheLogoGoesRoundAndTheSongPausesWhenTheWindowIsPutAway) {
    OpenSong();
    const auto* logo = window->findChild<QLabel*>("imgLogo");
    const auto* timer = window->findChild<QTimer*>("tmrLogo");
    EXPECT_FALSE(timer->isActive());
    window->mnuSoundPlay_Click();
    rig.Run(20);
    EXPECT_TRUE(timer->isActive());
    const QImage first = logo->pixmap().toImage();
    for (const int stays : {800, 600, 600, 800}) {
        window->tmrLogo_Timer();
        EXPECT_EQ(timer->interval(), stays);
        EXPECT_EQ(logo->pixmap().toImage() == first, stays == 800);
    }
    QApplication::setActiveWindow(nullptr);
    EXPECT_EQ(control.Mode(), MciMode::Paused);
    window->mnuSoundPlay_Click();
    EXPECT_TRUE(Playing());
    window->showMinimized();
    EXPECT_EQ(control.Mode(), MciMode::Paused);
}

TEST_F(frmKaraokeTest, TheFullScreenHasOnlyTheWordsAsLargeAsTheyCanBe) {
    OpenSong();
    const double before = lyrics->Font().size;
    const QRect place(window->pos(), window->size());
    const QSize words = lyrics->size();
    Key(Qt::Key_F11);
    EXPECT_TRUE(window->isFullScreen());
    EXPECT_EQ(window->menuBar()->height(), 0);
    EXPECT_FALSE(slider->isVisible());
    EXPECT_TRUE(QTest::qWaitFor([&] { return lyrics->width() > words.width() + 50; }));
    EXPECT_GT(lyrics->Font().size, before + 8) << "no limit but the screen";
    EXPECT_LE(lyrics->geometry().bottom(), window->height());
    Key(Qt::Key_F2);
    EXPECT_TRUE(Playing()) << "the menu's keys live on";
    Key(Qt::Key_Escape);
    EXPECT_FALSE(window->isFullScreen());
    EXPECT_TRUE(slider->isVisible());
    EXPECT_EQ(lyrics->Font().size, before);
    OpenSong();
    Key(Qt::Key_F11);
    window->close();
    EXPECT_EQ(LeggiImpostazione(registry, "Finestra", "FullScreen", ""), "0");
    EXPECT_EQ(LeggiImpostazione(registry, "Finestra", "Width", ""),
              std::to_string(15 * place.width()));
}

TEST_F(frmKaraokeTest, ASongHandedOverIsOpenedAfterTheStartAndComesToTheFront) {
    msgBox.whileShown = [this] { window->RiceviBrano((rig.folder / "song.mid").string()); };
    Open("none");
    EXPECT_EQ(window->windowTitle(), "Sonnel Player 98 4.1 beta - Rondini");
    Key(Qt::Key_F11);
    window->showMinimized();
    window->RiceviBrano("");
    EXPECT_FALSE(window->isMinimized());
    EXPECT_TRUE(window->isFullScreen());
    EXPECT_TRUE(window->AccettaBrani());
    window->close();
    EXPECT_FALSE(window->AccettaBrani());
}

TEST_F(frmKaraokeTest, TheSingersKeysActAndSpacePlays) {
    OpenSong();
    QTest::keySequence(window.get(), QKeySequence("Ctrl+Up"));
    QTest::keySequence(window.get(), QKeySequence("Ctrl+Left"));
    EXPECT_EQ(control.Performed(), (Performance{1, 95}));
    EXPECT_EQ(Label(2), "key +1, tempo 95 %");
    QTest::keySequence(window.get(), QKeySequence("Ctrl+0"));
    EXPECT_EQ(Label(2), "");
    QTest::keyClick(lyrics, Qt::Key_Space);
    EXPECT_TRUE(Playing());
    QTest::keyClick(lyrics, Qt::Key_Space);
    EXPECT_FALSE(Playing());
    EXPECT_EQ(window->focusWidget(), slider);
    QTest::keyClick(slider, Qt::Key_Space);
    EXPECT_TRUE(Playing());
}

TEST_F(frmKaraokeTest, ClosingKeepsThePlaceOfTheWindow) {
    const auto closed = [this](Qt::WindowState state) {
        window->setWindowState(state);
        window->move(40, 60);
        window->resize(640, 420);
        window->mnuFileExit_Click();
        std::string stored;
        for (const char* name : {"Top", "Left", "Width", "Height", "FullScreen"}) {
            stored += LeggiImpostazione(registry, "Finestra", name, "none") + ' ';
            Store("Finestra", name, "2147483647");
        }
        return stored;
    };
    OpenSong();
    window->setEnabled(false);
    EXPECT_FALSE(window->close()) << "while it takes no input";
    EXPECT_NE(control.Mode(), MciMode::NotReady);
    window->setEnabled(true);
    EXPECT_EQ(closed(Qt::WindowNoState), "900 600 9600 6300 0 ");
    EXPECT_EQ(control.Mode(), MciMode::NotReady);
    const std::string untouched = "2147483647 ";
    EXPECT_EQ(closed(Qt::WindowMaximized), untouched + untouched + untouched + untouched + "-1 ");

    Store("Finestra", "FullScreen", "-1");
    Open("");
    EXPECT_TRUE(window->isMaximized());
    EXPECT_TRUE(QRect(0, 0, 800, 800).contains(window->normalGeometry())) << "an absurd place";
}

}  // namespace
}  // namespace sonnel::test
