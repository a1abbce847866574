#include "windows/Look.h"

#include "platform/qt/QtPictureBox.h"

#include <string_view>

#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

constexpr double TwipsPerPixel = 15;
constexpr Colour Black = 0;
constexpr Colour White = 0xFFFFFF;
constexpr Colour Red = 0x0000FF;
constexpr Colour Teal = 0x808000;
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
    Surface surface({250, 120}, &window);
    surface.SetBackColor(Red);
    surface.Clear();
    surface.resize(500, 120);
    Shot(surface);
    surface.SetBackColor(White);
    surface.Print(3000, 150, Teal, "Rondine");
    const QImage before = Shot(surface);
    EXPECT_EQ(Count(before, White), 0) << "the paper is that of the last clearing";
    EXPECT_GT(Count(before, Teal), 200);

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

TEST(QtPictureBox, MeasuresTheWidestOfItsLines) {
    Surface surface;
    const TextSize size = surface.Measure("HHHHHHHHHH");
    const TextSize lines = surface.Measure("H\r\nHHHHHHHHHH\r\nHH");
    EXPECT_EQ(lines.width, size.width);
    EXPECT_NEAR(lines.height, 3 * size.height, 2);
}

}  // namespace
}  // namespace sonnel::test
