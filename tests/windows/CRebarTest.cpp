#include "ui/CRebar.h"

#include <QPointer>
#include <QToolBar>

#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

TEST(CRebar, HoldsToolbarsInAStripAsWideAsItsWindow) {
    QWidget window;
    window.resize(600, 300);
    window.show();
    CRebar rebar;
    rebar.Parent(&window);
    EXPECT_EQ(rebar.Create(), QVariant(true));
    const auto* strip = window.findChild<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    EXPECT_EQ(strip->geometry(), QRect(0, 0, 592, 60));

    const QPointer<QToolBar> bar = new QToolBar;
    bar->resize(100, 30);
    rebar.AddBands("", 1, bar, 1);
    EXPECT_EQ(bar->geometry(), QRect(0, 0, 100, 30));
    EXPECT_TRUE(bar->isVisible());
    window.resize(408, 300);
    rebar.Resize(window);
    EXPECT_EQ(strip->width(), 400);
    rebar.DestroyRebar();
    EXPECT_TRUE(bar && bar->parentWidget() == &window);
}

}  // namespace
}  // namespace sonnel::test
