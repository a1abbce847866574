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
    for (const QSize size : {QSize(20, 10), QSize(900, 300)}) {
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

TEST(QtPictureBox, TextAndPaperHaveTheirColoursAlsoWhereTheSurfaceGrows) {
    Surface surface({250, 120});
    surface.SetBackColor(Red);
    surface.Clear();
    surface.resize(500, 120);
    const int paper = Count(Shot(surface), Red);
    surface.SetBackColor(White);
    surface.Print(300, 150, Teal, "Rondine");
    const QImage shot = Shot(surface);
    EXPECT_EQ(shot.pixel(shot.width() - 1, 0), qRgb(255, 0, 0));
    EXPECT_EQ(Count(shot, White), 0);
    EXPECT_GT(Count(shot, Red), paper * 3 / 4);
    EXPECT_GT(Count(shot, Teal), 200);
}

TEST(QtPictureBox, MeasuresWhatItDraws) {
    double smaller = 0;
    for (const double size : {8.0, 9.0, 13.0, 24.0, 32.0}) {
        Surface surface({700, 60});
        surface.SetFont({"Arial", size, false});
        const double scale = surface.devicePixelRatioF() / TwipsPerPixel;
        surface.Print(150, 0, White, "HHHHHHHHHH");
        const QImage shot = Shot(surface);
        const double width = surface.Measure("HHHHHHHHHH").width;
        const double edges = surface.Measure("H").width / 3.0;
        EXPECT_NEAR(Ink(shot, Black).left(), 150 * scale, edges * scale + 1) << size;
        EXPECT_NEAR(Ink(shot, Black).right(), (150 + width) * scale, edges * scale + 1) << size;
        EXPECT_GT(width, smaller) << size;
        EXPECT_NEAR(surface.Font().size, size, 0.4) << "pages are fitted by a point less";
        smaller = width;
    }
    const Surface surface;
    const TextSize one = surface.Measure("la lunga riga");
    const TextSize three = surface.Measure("breve\r\nla lunga riga\r\nfine");
    EXPECT_EQ(three.width, one.width);
    EXPECT_NEAR(three.height, 3 * one.height, 2);
}

/// Prints what a script says: strokes separated by "|", t (teal) or w
/// (white), the number of the line and the text; "c" clears.
QImage Drawn(const QString& script) {
    Surface surface;
    surface.Print(330, 330, Grey, "AVANTI fjord");
    for (const QString& stroke : script.split('|')) {
        if (stroke == "c") {
            surface.Clear();
            continue;
        }
        surface.Print(300, 300 + 675 * stroke[1].digitValue(), stroke[0] == 't' ? Teal : White,
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
        {"t0AVANTI|c|w1perché|c|t0AVANTI", "c|t0AVANTI"},
    };
    for (const auto& [often, once] : cases) {
        EXPECT_TRUE(Drawn(often) == Drawn(once)) << often;
    }
}

}  // namespace
}  // namespace sonnel::test
