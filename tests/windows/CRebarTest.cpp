#include "ui/CRebar.h"

#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QToolBar>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

class CRebarTest : public testing::Test {
  protected:
    void SetUp() override {
        window.resize(600, 300);
        window.show();
        rebar.Parent(&window);
    }
    QWidget* Strip() const {
        return window.findChild<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    }
    static QPushButton* Child(int width, int height) {
        auto* child = new QPushButton;
        child->resize(width, height);
        return child;
    }
    QLabel* Frame(int band) const {
        return Strip()->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly).value(band);
    }

    QWidget window;
    CRebar rebar;
};

TEST_F(CRebarTest, ToolbarsBecomeFlat) {
    for (const auto& [list, added] : {std::pair{false, 0x8840U}, {true, 0x9840U}}) {
        constexpr unsigned Before = 0xABCD0001U;
        QToolBar bar;
        bar.setProperty("tbStyle", Before);
        CRebar::TBMakeFlat(bar, list);
        EXPECT_EQ(bar.property("tbStyle").toUInt(), Before + added);
        EXPECT_EQ(bar.toolButtonStyle() == Qt::ToolButtonTextBesideIcon, list);
    }
}

TEST_F(CRebarTest, TheStripTakesTheWidthOfItsWindow) {
    EXPECT_EQ(CRebar().Create(), QVariant(false)) << "without a parent";
    EXPECT_EQ(rebar.Create(), QVariant(true));
    EXPECT_NE(rebar.hwnd(), 0);
    EXPECT_EQ(Strip()->geometry(), QRect(0, 0, 592, 60));
    EXPECT_TRUE(Strip()->isVisible());
    rebar.Move(5, 6, 70, 80);
    EXPECT_EQ(Strip()->geometry(), QRect(5, 6, 70, 80));
    window.resize(408, 300);
    rebar.Resize(window);
    EXPECT_EQ(Strip()->geometry(), QRect(0, 0, 400, 0));
}

TEST_F(CRebarTest, BandsStandInRowsAsWideAsTheirWindows) {
    rebar.Create();
    const std::vector<QWidget*> children = {Child(100, 30), Child(50, 40), Child(70, 20),
                                            Child(10, 10)};
    rebar.AddBands("", 7, children[0], 1);
    rebar.AddBands("", -8, children[1], 1);
    rebar.AddBands("", 9, children[2], 0);
    rebar.AddBands("text", 10, children[3], 1, 4);
    EXPECT_EQ(children[0]->geometry(), QRect(0, 0, 100, 30));
    EXPECT_EQ(children[1]->geometry(), QRect(100, 0, 50, 40));
    EXPECT_EQ(children[2]->geometry(), QRect(0, 40, 70, 20));
    EXPECT_GT(children[3]->x(), 75) << "room for the text";
    EXPECT_EQ(children[3]->width(), 4 * 15);
    EXPECT_EQ(Frame(3)->text(), "text");
    for (const auto& [position, id] : std::vector<std::pair<QVariant, QVariant>>{
             {0, 7}, {1, -8}, {"3", 10}, {4, {}}, {-1, {}}, {"one", {}}}) {
        EXPECT_EQ(rebar.GetBandId(position), id) << position.toString().toStdString();
    }
    rebar.RemoveBands(0);
    EXPECT_FALSE(children[0]->isVisible());
    EXPECT_EQ(children[1]->geometry(), QRect(0, 0, 50, 40));
    EXPECT_EQ(rebar.GetBandId(0), QVariant(-8));
}

TEST_F(CRebarTest, BandsWearTheColoursOfTheSystemAndTheImageGivenBefore) {
    rebar.Create();
    rebar.AddBands("plain", 1, nullptr, 1);
    QPixmap image(4, 4);
    image.fill(Qt::magenta);
    rebar.ImageForRebar(image);
    rebar.AddBands("image", 2, nullptr, 1);
    const QPalette before = QApplication::palette();
    QPalette changed = before;
    changed.setColor(QPalette::Button, Qt::yellow);
    changed.setColor(QPalette::ButtonText, Qt::blue);
    QApplication::setPalette(changed);
    rebar.SetBandColors();
    QApplication::setPalette(before);
    for (int band : {0, 1}) {
        EXPECT_EQ(Frame(band)->palette().color(QPalette::WindowText), QColor(Qt::blue));
        EXPECT_EQ(Frame(band)->grab().toImage().pixelColor(0, 0),
                  QColor(band == 0 ? Qt::yellow : Qt::magenta));
    }
}

TEST_F(CRebarTest, DestroyingGivesTheWindowsBack) {
    rebar.Create();
    QPointer<QWidget> kept = Child(20, 20);
    QPointer<QWidget> removed = Child(20, 20);
    rebar.AddBands("", 1, kept, 1);
    rebar.AddBands("", 2, removed, 1);
    rebar.RemoveBands(1);
    const QPointer<QWidget> strip = Strip();
    rebar.DestroyRebar();
    EXPECT_TRUE(strip.isNull());
    EXPECT_TRUE(kept && kept->parentWidget() == &window);
    EXPECT_TRUE(removed && removed->parentWidget() == &window);
}

}  // namespace
}  // namespace sonnel::test
