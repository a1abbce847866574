#include "windows/KaraokeWindow.h"

#include "fakes/SmfBuilder.h"

#include <QFrame>
#include <QMenuBar>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

constexpr Colour Unsung = 8421376;
constexpr Colour Sung = 0xFFFFFF;

constexpr const char* kWithoutASong =
    "Song &Properties &Play &Pause/continue &Stop | Song informations Play Pause Stop slider";
constexpr const char* kAtItsStart = "&Pause/continue &Stop | Pause Stop ";
constexpr const char* kPlaying =
    "&Open Cali&brate... Song &Properties &Play | "
    "Open Song informations Video calibration Options Play slider";

/// The main window and a song of 30.4 seconds whose page is sung from second 1 to second 4.
class frmKaraokeTest : public KaraokeWindow {
  protected:
    void SetUp() override {
        KaraokeWindow::SetUp();
        rig.folder.Write("song.lyk",
                         "Cantabelle1.0\r\n*TIRondini\r\n00000 1Uno$Edue$Etre$Equattro\r\n"
                         "00010 23\r\n00020 28\r\n00030 213\r\n00040 222\r\n");
        SmfBuilder song(1, 500);
        rig.folder.Write("song.mid", song.Note(0, 500, 60).Note(30000, 400, 62).Bytes());
    }
    void OpenSong() { Open((rig.folder / "song.lyk").string()); }
    void Key(Qt::Key key) { QTest::keyClick(window.get(), key); }
    /// The menu items, toolbar buttons and position controls that are out of use.
    std::string OutOfUse() const {
        std::string names;
        for (const QMenu* menu : window->menuBar()->findChildren<QMenu*>()) {
            names += OutOfUse(menu->actions());
        }
        return names + "| " + OutOfUse(Bar()->actions()) + (Slider()->isEnabled() ? "" : "slider");
    }
    static std::string OutOfUse(const QList<QAction*>& actions) {
        std::string names;
        for (const QAction* action : actions) {
            if (!action->isSeparator() && !action->isEnabled()) {
                names += action->text().toStdString() + ' ';
            }
        }
        return names;
    }
    QToolBar* Bar() const { return window->findChild<QToolBar*>(); }
    QSlider* Slider() const { return window->findChild<QSlider*>(); }
    std::string Label(int index) const {
        const auto labels = window->findChild<QFrame*>("SSPanel1")->findChildren<QLabel*>();
        return labels.at(index)->text().toStdString();
    }
    int Pixels(Colour colour) const { return Count(Shot(Lyrics()), colour); }
};

TEST_F(frmKaraokeTest, StartsWithoutASong) {
    Open("");
    EXPECT_TRUE(msgBox.shown.empty());
    EXPECT_EQ(window->windowTitle(), "Sonnel Player 98 4.1 beta");
    EXPECT_EQ(QRect(window->pos(), window->size()), QRect(20, 40, 600, 500));
    EXPECT_EQ(OutOfUse(), kWithoutASong);
    EXPECT_EQ(Label(0) + Label(1), "0' 00\"0' 00\"");
    QTest::mouseClick(&Lyrics(), Qt::LeftButton);
    EXPECT_FALSE(Playing());
}

TEST_F(frmKaraokeTest, AFirstStartCalibratesInViewAndThenLoadsTheLibrary) {
    registry.Put(RegistryRoot::CurrentUser, Opzioni, "Compensazione", RegistryType::String, "-1");
    registry.Put(RegistryRoot::LocalMachine, "SOFTWARE\\Classes\\.lyk", "", RegistryType::String,
                 "");
    const auto note = [this](const std::string& step) {
        bool splash = false;
        for (const QWidget* shown : QApplication::topLevelWidgets()) {
            splash = splash || (shown != window.get() && shown->isVisible());
        }
        called.push_back(step + (splash ? ", splash" : "") +
                         (window->isVisible() ? ", window" : "") +
                         (events.pointer == Pointer::Busy ? ", busy" : ""));
    };
    shell.whileRegistering = [&] { note(program.config.OpenDir.empty() ? "register" : "?"); };
    events.whileWaiting = [&] { note(window->windowTitle().isEmpty() ? "?" : "wait"); };
    msgBox.whileShown = [&] { note("calibrate"); };
    msgBox.answers = {Answer::Cancel};
    const double start = rig.clock.TimeOfDay();
    Open("");
    EXPECT_THAT(called, testing::ElementsAre("register, splash, busy", "wait, splash, busy",
                                             "calibrate, window", "load index", "make selection"));
    EXPECT_NEAR(rig.clock.TimeOfDay() - start, 3, 0.51) << "the splash stays";
    EXPECT_EQ(events.pointer, Pointer::Normal);
}

TEST_F(frmKaraokeTest, MenusAndTheirKeys) {
    Open("");
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

    called.clear();
    msgBox.answers = {Answer::Cancel, Answer::Cancel};
    msgBox.whileShown = [this] { called.emplace_back("calibrate"); };
    for (const auto& [key, modifiers] : {std::pair{Qt::Key_O, Qt::ControlModifier},
                                         {Qt::Key_F5, Qt::NoModifier},
                                         {Qt::Key_F5, Qt::ControlModifier},
                                         {Qt::Key_C, Qt::ControlModifier},
                                         {Qt::Key_I, Qt::ControlModifier}}) {
        QTest::keyClick(window.get(), key, modifiers);
    }
    EXPECT_THAT(called, testing::ElementsAre("choose", "reload", "update", "calibrate"));
    called.clear();
    for (const int button : {0, 1, 3, 4, 5, 6, 7, 8, 12}) {
        window->tlbBar_ButtonClick(button);
    }
    EXPECT_THAT(called, testing::ElementsAre("choose", "calibrate", "options"));
    EXPECT_EQ(shell.opened.size(), 1U);
    EXPECT_EQ(shell.starts, 1);
}

TEST_F(frmKaraokeTest, ShowsTheSongOfTheCommandLine) {
    Open("\"" + (rig.folder / "song.mid").string() + "\"");
    EXPECT_TRUE(msgBox.shown.empty());
    EXPECT_EQ(window->windowTitle(), "Sonnel Player 98 4.1 beta - Rondini");
    EXPECT_EQ(Label(1), "0' 30\"");
    EXPECT_EQ(Slider()->maximum(), 30);
    EXPECT_EQ(OutOfUse(), kAtItsStart);
    EXPECT_EQ(events.pointer, Pointer::Normal);
    EXPECT_GT(Pixels(Unsung), 500);
    EXPECT_EQ(Pixels(Sung), 0);
}

TEST_F(frmKaraokeTest, ASongThatIsMissingIsTold) {
    const std::string line = "\"" + (rig.folder / "none.lyk").string() + "\"";
    Open(line);
    ASSERT_EQ(msgBox.shown.size(), 2U);
    EXPECT_THAT(msgBox.shown[0].text, testing::StartsWith("Can't load the selected song: LYK "));
    EXPECT_EQ(msgBox.shown[1].text, "Wrong parameter: '" + line + "'");
    EXPECT_EQ(msgBox.shown[1].icon, Icon::Critical);
    EXPECT_EQ(msgBox.shown[1].title, "Sonnel Karaoke Player");
    EXPECT_EQ(OutOfUse(), kWithoutASong);
}

TEST_F(frmKaraokeTest, SplashInformationAndWebPages) {
    OpenSong();
    QString seen;
    QTimer once;
    once.setSingleShot(true);
    QObject::connect(&once, &QTimer::timeout, [&seen] {
        QDialog* shown = nullptr;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* dialog = qobject_cast<QDialog*>(widget);
            shown = dialog != nullptr && dialog->isVisible() ? dialog : shown;
        }
        ASSERT_NE(shown, nullptr);
        seen.clear();
        for (const QLabel* label : shown->findChildren<QLabel*>()) {
            seen += label->text() + "|";
        }
        seen += shown->findChild<QPushButton*>()->isVisible() ? "button" : "no button";
        shown->reject();
    });
    const auto look = [&once] { once.start(0); };
    look();
    window->mnuHelpAbout_Click();
    EXPECT_EQ(seen, "Sonnel Player 98|Version 4.1.11beta|for Windows 95|no button");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    look();
    window->mnuHelpAbout_Click();
    EXPECT_EQ(seen, "Sonnel Player 98|Version 4.1.11beta|for Windows 95|button");
    look();
    window->tlbBar_ButtonClick(2);
    EXPECT_EQ(seen.toStdString(),
              "Title|Rondini|Author/ performer||Karaoke made by||Karaoke editor version||"
              "Karaoke creation date||button");

    window->tlbBar_ButtonClick(7);
    EXPECT_THAT(shell.opened, testing::ElementsAre("https://www.sonnel-player.example/"));
    shell.works = false;
    window->mnuHelpWebLinks_Click();
    ASSERT_EQ(msgBox.shown.size(), 1U);
    EXPECT_EQ(msgBox.shown[0].text,
              "Can't start the default browser!\r\n(no web browser installed?)");
    EXPECT_EQ(msgBox.shown[0].title, "Sonnel");
}

TEST_F(frmKaraokeTest, KeysPlayPauseAndStop) {
    OpenSong();
    Key(Qt::Key_F3);
    EXPECT_FALSE(Playing());
    Key(Qt::Key_F2);
    EXPECT_TRUE(Playing());
    rig.Run(2100);
    EXPECT_EQ(OutOfUse(), kPlaying);
    window->tmrSlider_Timer();
    EXPECT_EQ(Label(0), "0' 02\"");
    EXPECT_EQ(Slider()->value(), 2);
    Key(Qt::Key_F3);
    EXPECT_EQ(control.Mode(), MciMode::Paused);
    rig.Run(20);
    EXPECT_EQ(OutOfUse(), "&Pause/continue | Pause ");
    Key(Qt::Key_F4);
    EXPECT_EQ(control.Position(), 0);
    EXPECT_EQ(Label(0), "0' 00\"");
    EXPECT_EQ(Slider()->value(), 0);
    EXPECT_EQ(OutOfUse(), kAtItsStart);
}

TEST_F(frmKaraokeTest, ButtonsAndClicksOnTheWordsRunTheirCommands) {
    OpenSong();
    const auto press = [this](int index) { Bar()->actions().at(index - 1)->trigger(); };
    for (const bool playing : {true, false, true}) {
        QTest::mouseClick(&Lyrics(), Qt::LeftButton);
        EXPECT_EQ(Playing(), playing);
        rig.Run(300);
    }
    press(10);
    EXPECT_EQ(control.Mode(), MciMode::Paused);
    EXPECT_NEAR(control.Position(), 600, 20);
    press(9);
    EXPECT_TRUE(Playing());
    press(11);
    EXPECT_EQ(control.Position(), 0);
}

TEST_F(frmKaraokeTest, SliderKeysSeekWhileTheSongDoesNotPlay) {
    OpenSong();
    const std::vector<std::pair<Qt::Key, int>> keys = {{Qt::Key_Right, 1}, {Qt::Key_PageUp, 11},
                                                       {Qt::Key_Left, 10}, {Qt::Key_End, 30},
                                                       {Qt::Key_Home, 0},  {Qt::Key_PageUp, 10}};
    for (const auto& [key, second] : keys) {
        QTest::keyClick(Slider(), key);
        EXPECT_EQ(Slider()->value(), second);
        EXPECT_EQ(control.Position(), second * 1000);
        EXPECT_EQ(Label(0), QString("0' %1\"").arg(second, 2, 10, QChar('0')).toStdString());
        EXPECT_EQ(Pixels(Sung) > 0, second > 0);
    }
    Key(Qt::Key_F2);
    rig.Run(100);
    QTest::keyClick(Slider(), Qt::Key_Right);
    Slider()->setValue(20);
    rig.Run(100);
    EXPECT_TRUE(Playing());
    EXPECT_NEAR(control.Position(), 10200, 50);
}

TEST_F(frmKaraokeTest, TheLogoGoesRound) {
    Open("");
    const auto* logo = window->findChild<QLabel*>("imgLogo");
    const auto* timer = window->findChild<QTimer*>("tmrLogo");
    std::vector<QImage> pictures;
    std::vector<int> times;
    for (int frame = 0; frame < 4; ++frame) {
        window->tmrLogo_Timer();
        pictures.push_back(logo->pixmap().toImage());
        times.push_back(timer->interval());
    }
    EXPECT_EQ(times, (std::vector{800, 600, 600, 800}));
    EXPECT_EQ(pictures[0], pictures[3]);
    EXPECT_FALSE(pictures[0] == pictures[1] || pictures[1] == pictures[2] ||
                 pictures[2] == pictures[0]);
}

TEST_F(frmKaraokeTest, AnAbsurdPlaceIsMendedAlsoBelowAMaximisedWindow) {
    for (const char* name : {"Left", "Top", "Width", "Height"}) {
        registry.Put(RegistryRoot::CurrentUser, Finestra, name, RegistryType::String, "2147483647");
    }
    registry.Put(RegistryRoot::CurrentUser, Finestra, "FullScreen", RegistryType::String, "-1");
    Open("");
    EXPECT_TRUE(window->isMaximized());
    EXPECT_TRUE(QRect(0, 0, 800, 800).contains(window->normalGeometry()));
}

TEST_F(frmKaraokeTest, TheWordsStandInTheMiddleBelowTheToolbar) {
    OpenSong();
    const QWidget* area = window->centralWidget();
    const int strip = Bar()->parentWidget()->height();
    const double line = (Lyrics().Measure("T").height + 25) / double{Scale};
    EXPECT_NEAR(Lyrics().height(), 4 * line, 0.6);
    EXPECT_EQ(Lyrics().width(), area->width());
    EXPECT_NEAR(Lyrics().y(), strip + (area->height() - strip - 4 * line) / 2, 0.6);
    window->resize(100, 200);
    EXPECT_EQ(window->width(), 554) << "8300 twips";
    EXPECT_EQ(Lyrics().width(), 554);
    EXPECT_EQ(Lyrics().y(), strip);
}

TEST_F(frmKaraokeTest, AWindowThatIsPutAwayPauses) {
    OpenSong();
    QWidget other;
    other.show();
    const std::vector<std::function<void()>> ways = {
        [this] { window->showMinimized(); }, [&other] { QApplication::setActiveWindow(&other); }};
    for (const auto& putAway : ways) {
        window->showNormal();
        QApplication::setActiveWindow(window.get());
        window->mnuSoundPlay_Click();
        rig.Run(100);
        ASSERT_EQ(control.Mode(), MciMode::Playing);
        putAway();
        EXPECT_EQ(control.Mode(), MciMode::Paused);
    }
}

TEST_F(frmKaraokeTest, ClosingKeepsThePlaceOfTheWindow) {
    const auto closed = [this](Qt::WindowState state) {
        window->move(40, 60);
        window->resize(640, 420);
        window->setWindowState(state);
        registry.written.clear();
        window->mnuFileExit_Click();
        std::string stored;
        for (const std::string& name : registry.written) {
            stored +=
                name + '=' + registry.Get(RegistryRoot::CurrentUser, Finestra, name)->data + ' ';
        }
        return stored;
    };
    OpenSong();
    window->setEnabled(false);
    EXPECT_FALSE(window->close()) << "while it takes no input";
    EXPECT_NE(control.Mode(), MciMode::NotReady);
    window->setEnabled(true);
    EXPECT_EQ(closed(Qt::WindowNoState), "Top=900 Left=600 Width=9600 Height=6300 FullScreen=0 ");
    EXPECT_EQ(control.Mode(), MciMode::NotReady);
    EXPECT_EQ(closed(Qt::WindowMaximized), "FullScreen=-1 ");
    Open("");
    EXPECT_TRUE(window->isMaximized());
}

}  // namespace
}  // namespace sonnel::test
