#include "windows/Look.h"

#include "platform/qt/QtPictureBox.h"

#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

constexpr Colour White = 0xFFFFFF;
constexpr Colour Red = 0x0000FF;
constexpr Colour Teal = 0x808000;

TEST(QtPictureBox, MeasuresLinesAndShowsItsPictureAgainAsItWas) {
    QWidget window;
    window.resize(600, 200);
    window.show();
    QtPictureBox surface(Scale, &window);
    surface.SetFont({"Arial", 30, true});
    const TextSize line = surface.Measure("HHHHHHHHHH");
    const TextSize lines = surface.Measure("H\r\nHHHHHHHHHH\r\nHH");
    EXPECT_EQ(lines.width, line.width);
    EXPECT_NEAR(lines.height, 3 * line.height, 2);

    surface.resize(250, 120);
    surface.show();
    surface.SetBackColor(Red);
    surface.Clear();
    surface.resize(500, 120);
    Shot(surface);
    surface.SetBackColor(White);
    surface.SetForeColor(Teal);
    surface.Print(3000, 150, "Rondine");
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

}  // namespace
}  // namespace sonnel::test
