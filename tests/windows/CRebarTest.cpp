#include "ui/CRebar.h"

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

TEST_F(CRebarTest, BandsStandInRowsAndGiveTheirWindowsBack) {
    rebar.Create();
    const QPointer<QWidget> first = Child(100, 30);
    const QPointer<QWidget> second = Child(50, 40);
    const QPointer<QWidget> below = Child(70, 20);
    rebar.AddBands("", 7, first, 1);
    rebar.AddBands("", -8, second, 1);
    rebar.AddBands("text", 9, below, 0, 4);
    EXPECT_EQ(first->geometry(), QRect(0, 0, 100, 30));
    EXPECT_EQ(second->geometry(), QRect(100, 0, 50, 40));
    EXPECT_GT(below->x(), 5) << "room for the text";
    EXPECT_EQ(below->y(), 40);
    EXPECT_EQ(below->width(), 4 * 15);
    for (const auto& [position, id] : std::vector<std::pair<QVariant, QVariant>>{
             {0, 7}, {"1", -8}, {3, {}}, {-1, {}}, {"one", {}}}) {
        EXPECT_EQ(rebar.GetBandId(position), id) << position.toString().toStdString();
    }
    rebar.RemoveBands(0);
    EXPECT_FALSE(first->isVisible());
    EXPECT_EQ(second->geometry(), QRect(0, 0, 50, 40));
    rebar.DestroyRebar();
    for (const auto& child : {first, second, below}) {
        EXPECT_TRUE(child && child->parentWidget() == &window);
    }
}

}  // namespace
}  // namespace sonnel::test
