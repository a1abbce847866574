#include "windows/PlayerRig.h"

#include "platform/qt/WindowInUse.h"

#include <QScreen>
#include <algorithm>
#include <cmath>
#include <utility>

#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

/// How much of each line of a picture of words is sung.
std::vector<double> SungParts(QWidget& widget, const Config& config) {
    const QImage image = Shot(widget);
    std::vector<double> parts;
    int left = -1;
    int right = 0;
    int sung = 0;
    for (int y = 0; y <= image.height(); ++y) {
        bool words = false;
        for (int x = 0; y < image.height() && x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            const bool isSung = pixel == ToQColor(config.ColoreSelezione).rgb();
            if (isSung || pixel == ToQColor(config.ColoreTesto).rgb()) {
                words = true;
                left = left < 0 ? x : std::min(left, x);
                right = std::max(right, x);
                sung = isSung ? std::max(sung, x) : sung;
            }
        }
        if (!words && left >= 0) {
            parts.push_back(sung > 0 ? double(sung - left) / (right - left) : 0);
            left = -1;
            right = sung = 0;
        }
    }
    return parts;
}

/// The regions of a window that are painted.
class Paints : public QObject {
  public:
    explicit Paints(QWidget& window) { window.installEventFilter(this); }
    bool eventFilter(QObject* /*object*/, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            region += static_cast<QPaintEvent*>(event)->region();
        }
        return false;
    }
    QRegion region;
};

class LyricsWindowTest : public testing::Test, protected PlayerRig {
  protected:
    void SetUp() override { Store("Opzioni", "Autoplay", "0"); }
    /// Opens a song of the library and the lyrics window.
    QWidget& Singers(const std::string& song) {
        Open(std::string(SONNEL_SONGS) + "/" + song);
        QTest::keyClick(window.get(), Qt::Key_F12);
        for (QWidget* one : QApplication::topLevelWidgets()) {
            if (one->accessibleName() == "Lyrics for the singers") {
                return *one;
            }
        }
        throw std::logic_error("no lyrics window");
    }
};

TEST_F(LyricsWindowTest, ShowsThePageAndTheWordsBegunOfTheMainWindow) {
    Store("Opzioni", "Ombra", "0");
    for (const char* name : {"Flow", "NextLine", "CountIn", "Title"}) {
        Store("LyricsWindow", name, "00");
    }
    for (const char* song : {"Twinkle Twinkle", "Row Your Boat"}) {
        QWidget& singers = Singers(song);
        for (int i = 0; i < 20; ++i) {
            slider->setValue(i * slider->maximum() / 20);
            window->mnuSoundPlay_Click();
            rig.Run(700);
            window->mnuSoundPause_Click();
            const auto shown = SungParts(singers, config);
            const auto wanted = SungParts(*lyrics, config);
            ASSERT_EQ(shown.size(), wanted.size()) << song << i;
            for (std::size_t line = 0; line < shown.size(); ++line) {
                EXPECT_NEAR(shown[line], wanted[line], 0.02) << song << i;
            }
        }
    }
}

TEST_F(LyricsWindowTest, FollowsTheScreensAndPaintsOnlyWhatChanges) {
    const auto screens = QGuiApplication::screens();
    QWidget& singers = Singers("Twinkle Twinkle");
    QApplication::setActiveWindow(&singers);
    EXPECT_EQ(QApplication::activeWindow(), &singers);
    EXPECT_EQ(WindowInUse(), window.get()) << "boxes are for the host";
    // Here a window gets the focus even when it does not want it, and takes it away with it.
    const auto toggle = [&] {
        window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
        QTest::keyClick(window.get(), Qt::Key_F12);
    };
    const auto fills = [&] { return singers.geometry() == screens[1]->geometry(); };
    EXPECT_TRUE(QTest::qWaitFor(fills));
    QTest::mouseDClick(&singers, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !fills(); }));
    const QRect place = singers.geometry();
    EXPECT_TRUE(screens[1]->geometry().contains(place));
    singers.close();
    toggle();
    EXPECT_EQ(singers.geometry(), place);

    window->mnuSoundPlay_Click();
    screen.gone = 1;
    Q_EMIT qGuiApp->screenRemoved(screens[1]);
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return screens[0]->geometry().contains(singers.geometry()); }));
    EXPECT_TRUE(singers.isVisible());
    EXPECT_TRUE(Playing());
    screen.gone = 0;
    toggle();
    EXPECT_FALSE(singers.isVisible());
    toggle();
    EXPECT_TRUE(QTest::qWaitFor(fills)) << "the screen is new";

    window->mnuSoundStop_Click();
    window->mnuSoundPlay_Click();
    const auto painted = [&](int ms) {
        QTest::qWait(50);
        Paints paints(singers);
        rig.Run(ms);
        QTest::qWait(100);
        return paints.region.boundingRect();
    };
    rig.Run(1500);
    EXPECT_EQ(painted(1500), singers.rect()) << "the first page comes";
    EXPECT_EQ(painted(100), QRect()) << "and waits";
    rig.Run(1600);
    const QRect step = painted(60);
    EXPECT_FALSE(step.isEmpty());
    EXPECT_LT(step.width(), singers.width() / 4);
    EXPECT_LT(step.height(), singers.height() / 4);
    window->mnuSoundPause_Click();
    EXPECT_EQ(painted(1000), QRect());
}

TEST(DisegnoScena, ColourFollowsTheLettersWhereTheyStand) {
    const Timeline timeline;
    const InformazioniBrano info;
    const Config config;
    DisegnoScena drawing({timeline, info, config});
    drawing.Misura();
    drawing.Adatta({800, 400});
    // The middles of the characters, one by one; -1 for one that has no room of its own.
    const auto middles = [&](const char* line) {
        (void)drawing.Mostra({{line}, 0});
        std::vector<int> places;
        for (int i = 1; i <= 3; ++i) {
            const QRegion part = drawing.Mostra({{line}, double(i)});
            places.push_back(part.isEmpty() ? -1 : part.boundingRect().center().x());
        }
        return places;
    };
    const auto plain = middles("abc");
    EXPECT_TRUE(plain[0] < plain[1] && plain[1] < plain[2]);
    const auto hebrew = middles("\u05d0\u05d1\u05d2");
    EXPECT_TRUE(hebrew[0] > hebrew[1] && hebrew[1] > hebrew[2]);
    EXPECT_EQ(middles("a\u0301c")[1], -1);
}

}  // namespace
}  // namespace sonnel::test
