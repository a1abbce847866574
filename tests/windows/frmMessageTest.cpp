#include "platform/qt/QtSystem.h"
#include "ui/frmMessage.h"

#include <QGuiApplication>
#include <QLabel>
#include <QScreen>

#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

TEST(frmMessage, IsThereUntilTheWorkIsDone) {
    const QtScreen screen;
    frmMessage window(screen);
    auto* cancel = window.findChild<QPushButton*>();
    for (int time = 0; time < 2; ++time) {
        window.MostraMessaggio("Updating, please wait...", false);
        EXPECT_FALSE(cancel->isVisible());
        EXPECT_EQ(window.height(), 100) << "1500 twips";
        const QSize room = QGuiApplication::primaryScreen()->size() - window.size();
        EXPECT_EQ(window.pos(), QPoint(room.width() / 2, room.height() / 2));
        window.close();
        EXPECT_TRUE(window.isVisible() && !window.Annullato());
        window.ChiudiMessaggio();

        window.MostraMessaggio("Copying", true);
        cancel->click();
        EXPECT_TRUE(window.Annullato() && cancel->isVisible() && !cancel->isEnabled());
        window.MostraMessaggio("Wiping out", false);
        EXPECT_TRUE(window.Annullato() && !cancel->isVisible());
        EXPECT_EQ(window.findChild<QLabel*>()->text(), "Wiping out");
        window.ChiudiMessaggio();
        EXPECT_FALSE(window.Annullato() || window.isVisible());
    }
}

}  // namespace
}  // namespace sonnel::test
