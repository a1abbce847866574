#include "windows/Pixels.h"

#include "platform/qt/QtPictureBox.h"

#include <QFontMetricsF>
#include <QPainter>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

constexpr double TwipsPerPixel = 15;
constexpr Colour Black = 0;
constexpr Colour White = 0xFFFFFF;
constexpr Colour Red = 0x0000FF;
constexpr Colour Teal = 0x808000;
constexpr Colour Grey = 0x808080;
const FontSpec Large{"Arial", 30, true};

/// A drawing surface on the screen, black.
class Surface : public QtPictureBox {
  public:
    explicit Surface(QSize size = {500, 120}, QWidget* parent = nullptr)
        : QtPictureBox(TwipsPerPixel, parent) {
        resize(size);
        SetFont(Large);
        SetBackColor(Black);
        Clear();
        show();
    }
    void Print(int x, int y, Colour colour, std::string_view text) {
        SetForeColor(colour);
        QtPictureBox::Print(x, y, text);
    }
};

TEST(QtPictureBox, ShowsItsPictureAgainAsItWas) {
    QWidget window;
    window.resize(600, 200);
    window.show();
    Surface surface({500, 120}, &window);
    surface.Print(3000, 150, White, "Rondine");
    const QImage before = Shot(surface);
    ASSERT_GT(Count(before, White), 200);

    QWidget cover(&window);
    cover.setGeometry(surface.geometry());
    cover.show();
    window.repaint();
    cover.hide();
    EXPECT_TRUE(Shot(surface) == before) << "covered";
    window.hide();
    window.show();
    EXPECT_TRUE(Shot(surface) == before) << "hidden";
    for (const QSize size : {QSize(250, 120), QSize(500, 30), QSize(20, 10), QSize(900, 300)}) {
        surface.resize(size);
        Shot(surface);
        surface.resize(500, 120);
        EXPECT_TRUE(Shot(surface) == before) << "resized to " << size.width();
    }
}

TEST(QtPictureBox, DrawsAtTheResolutionOfTheScreen) {
    Surface surface;
    const double ratio = surface.devicePixelRatioF();
    surface.Print(300, 150, White, "Rondine");
    QImage sharp(surface.size() * ratio, QImage::Format_RGB32);
    sharp.setDevicePixelRatio(ratio);
    sharp.fill(Qt::black);
    QFont font("Arial", 30, QFont::Bold);
    font.setHintingPreference(QFont::PreferNoHinting);
    QPainter painter(&sharp);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(QPointF(20, 10 + QFontMetricsF(font).ascent()), "Rondine");
    painter.end();
    sharp.setDevicePixelRatio(1);
    EXPECT_TRUE(Shot(surface) == sharp);
}

TEST(QtPictureBox, TextLeavesItsBackgroundAlone) {
    Surface surface;
    surface.SetBackColor(Red);
    surface.Clear();
    const int paper = Count(Shot(surface), Red);
    surface.SetBackColor(White);
    surface.Print(300, 150, Teal, "Rondine");
    const QImage shot = Shot(surface);
    EXPECT_EQ(Count(shot, White), 0);
    EXPECT_GT(Count(shot, Red), paper * 3 / 4);
    EXPECT_GT(Count(shot, Teal), 200);
}

TEST(QtPictureBox, ColoursHaveRedInTheLowestByteAlsoWhereTheSurfaceGrows) {
    for (const auto& [colour, rgb] : {std::pair{0x0000FF, qRgb(255, 0, 0)},
                                      {0x00FF00, qRgb(0, 255, 0)},
                                      {0xFF0000, qRgb(0, 0, 255)}}) {
        Surface surface({10, 10});
        surface.SetBackColor(colour);
        surface.Clear();
        surface.resize(20, 20);
        EXPECT_EQ(Shot(surface).pixel(0, 0), rgb);
        EXPECT_EQ(Shot(surface).pixel(19, 19), rgb);
    }
}

TEST(QtPictureBox, MeasuresWhatItDraws) {
    for (const double size : {8.0, 13.0, 24.0, 32.0}) {
        Surface surface({700, 60});
        surface.SetFont({"Arial", size, false});
        const double scale = surface.devicePixelRatioF() / TwipsPerPixel;
        const auto ink = [&surface](std::string_view text) {
            surface.Clear();
            surface.Print(150, 0, White, text);
            return Ink(Shot(surface), Black);
        };
        const QRect five = ink("HHHHH");
        const QRect ten = ink("HHHHHHHHHH");
        const double width = surface.Measure("HHHHHHHHHH").width;
        // The empty edges of the first and last letter drop out of the difference.
        const double wider = width - surface.Measure("HHHHH").width;
        EXPECT_NEAR(ten.width() - five.width(), wider * scale, 1.5) << size;
        EXPECT_GE(ten.left() + 1, 150 * scale) << size;
        EXPECT_LE(ten.right(), (150 + width) * scale + 1) << size;
    }
    const Surface surface;
    const TextSize one = surface.Measure("la lunga riga");
    const TextSize three = surface.Measure("breve\r\nla lunga riga\r\nfine");
    EXPECT_EQ(three.width, one.width);
    EXPECT_NEAR(three.height, 3 * one.height, 2);
}

TEST(QtPictureBox, EveryPointLessMakesTheTextSmaller) {
    Surface surface;
    FontSpec font = Large;
    font.size = 40;
    surface.SetFont(font);
    for (int step = 0; surface.Font().size > 8; ++step) {
        ASSERT_LT(step, 100);
        const double size = surface.Font().size;
        const TextSize text = surface.Measure("Rondine");
        font.size = size - 1;
        surface.SetFont(font);
        EXPECT_LT(surface.Font().size, size);
        EXPECT_LT(surface.Measure("Rondine").width, text.width) << size;
        EXPECT_LE(surface.Measure("Rondine").height, text.height) << size;
    }
    EXPECT_GT(surface.Font().size, 7);
    EXPECT_TRUE(surface.Font().bold);
}

/// Prints what a script says: strokes separated by "|", each a colour (t teal, w white, r red), the
/// number of its line and its text; "c" clears.
QImage Drawn(const QString& script) {
    Surface surface;
    surface.Print(330, 330, Grey, "AVANTI fjord");
    for (const QString& stroke : script.split('|')) {
        if (stroke == "c") {
            surface.Clear();
            continue;
        }
        surface.Print(300, 300 + 675 * stroke[1].digitValue(),
                      stroke[0] == 't' ? Teal : (stroke[0] == 'w' ? White : Red),
                      stroke.mid(2).toStdString());
    }
    return Shot(surface);
}

/// Colouring a page step by step draws its beginning again and again.
TEST(QtPictureBox, LettersDrawnAgainKeepTheirEdges) {
    const std::vector<std::pair<const char*, const char*>> cases = {
        {"t0AVANTI fjord|w0A|w0AV|w0AVA|w0AVANTI f|w0AVANTI fj|w0AVANTI fjord",
         "t0AVANTI fjord|w0AVANTI fjord"},
        {"t1perché no|w1perch|w1perché|w1perché no", "t1perché no|w1perché no"},
        {"t0AVANTI|t1perché|w0AVANTI|w1p|w0AVANTI|w1per|w0AVANTI|w1perché",
         "t0AVANTI|t1perché|w0AVANTI|w1perché"},
        {"t0AVANTI|w0AVAN|w0AV", "t0AVANTI|w0AVAN"},
        {"t0AVANTI|w0AV|r0AV|r0AVANTI", "t0AVANTI|w0AV|r0AVANTI"},
        {"t0AVANTI|c|w1perché|c|t0AVANTI", "c|t0AVANTI"},
    };
    for (const auto& [often, once] : cases) {
        EXPECT_TRUE(Drawn(often) == Drawn(once)) << often;
    }
}

}  // namespace
}  // namespace sonnel::test
