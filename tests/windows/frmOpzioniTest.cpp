#include "windows/Look.h"

#include "fakes/MemoryRegistry.h"
#include "fakes/ScriptedDialog.h"
#include "fakes/ScriptedMsgBox.h"
#include "platform/qt/QtSystem.h"
#include "settings/frmOpzioni.h"

#include <QFontDatabase>
#include <QTest>
#include <memory>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

class frmOpzioniTest : public ::testing::Test {
  protected:
    void Open() {
        window = std::make_unique<frmOpzioni>(frmOpzioni::Parti{
            {config, store, msgBox, dialog, [](const std::string& dir) { return dir == "/songs/"; },
             [this] { usableInRebuild = window->isEnabled(); }, [] {}},
            screen});
        window->show();
    }
    QComboBox& List(const char* name) const { return Find<QComboBox>(*window, name); }
    int Pixels(Colour colour) const {
        return Count(Shot(Find<QWidget>(*window, "Sample")), colour);
    }

    const QStringList fonts = QFontDatabase::families();
    Config config{.FontName = fonts.at(0).toStdString(), .AutoFont = false, .OpenDir = "/songs/"};
    MemoryRegistry store;
    ScriptedMsgBox msgBox;
    ScriptedDialog dialog;
    QtScreen screen;
    bool usableInRebuild = true;
    std::unique_ptr<frmOpzioni> window;
};

TEST_F(frmOpzioniTest, EditsACopyUntilOk) {
    msgBox.answers = {Answer::No, Answer::Yes};
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) {
        EXPECT_TRUE(store.changes.empty());
        EXPECT_TRUE(config.FontSize == 24 && config.ColoreTesto == Config().ColoreTesto);
        Open();
        dialog.colours = {0x123456, 0x654321};  // the third is cancelled
        dialog.files = {{"/new songs/sonnel.snl"}};
        for (const char* caption : {"Text", "Back", "Selection", "C&hange...", "&Bold",
                                    "Automatic font size", "Start playing on song open"}) {
            Find<QAbstractButton>(*window, caption).click();
        }
        Find<QCheckBox>(*window, "Shadow").click();
        EXPECT_FALSE(List("Font size").isEnabled() ||
                     Find<QPushButton>(*window, "Shadow").isEnabled());
        List("Font").setCurrentText(fonts.constLast());
        List("Font size").setCurrentText("9");
        QTest::keyClick(window.get(), key);
        EXPECT_EQ(window->isVisible(), key == Qt::Key_Return) << "No leaves it open";
    }
    EXPECT_EQ(config.OpenDir, dialog.asked.at(1).directory);
    QTest::keyClick(window.get(), Qt::Key_Return);
    EXPECT_FALSE(window->isVisible() || usableInRebuild);
    EXPECT_EQ(config.FontName, fonts.constLast().toStdString());
    EXPECT_EQ(config.FontSize, 9);
    EXPECT_EQ(config.OpenDir, "/new songs/");
    EXPECT_EQ((std::vector<int>{config.ColoreTesto, config.ColoreSfondo, config.ColoreSelezione,
                                config.FontBold, config.Ombra, config.AutoFont, config.Autoplay}),
              (std::vector<int>{0x123456, 0x654321, 0xFFFFFF, false, false, true, false}));
}

TEST_F(frmOpzioniTest, ShowsAtOnceWhatIsChosenAndKeepsStoredValuesItCannotShow) {
    Open();
    EXPECT_EQ(List("Font").currentText(), fonts.at(0));
    EXPECT_EQ(List("Font size").currentText(), "24");
    const int small = Pixels(config.ColoreTesto);
    EXPECT_GT(std::min(small, Pixels(config.ColoreOmbra)), 20);
    List("Font size").setCurrentText("60");
    EXPECT_GT(Pixels(config.ColoreTesto), 2 * small);
    Find<QCheckBox>(*window, "Shadow").click();
    EXPECT_EQ(Pixels(config.ColoreOmbra), 0);

    config.FontSize = 13.75F;
    config.Compensazione = 150;
    Open();
    EXPECT_EQ(List("Font size").currentIndex(), -1);
    auto* bar = &Find<QScrollBar>(*window, "Compensation value: (1/10ths sec.)");
    EXPECT_EQ(Find<QLabel>(*window, "100").parent(), bar->parent());
    window->cmdOk_Click();
    EXPECT_EQ(config.FontSize, 13.75F);
    EXPECT_EQ(config.Compensazione, 150);
    const QPoint down = bar->rect().adjusted(0, 0, -4, -4).bottomRight();
    for (const auto& [arrow, value] : {std::pair{down, 99}, {QPoint(4, 4), 100}}) {
        QTest::mouseClick(bar, Qt::LeftButton, {}, arrow);
        window->cmdOk_Click();
        EXPECT_EQ(config.Compensazione, value);
    }
    config.FontName = "No Such Font";
    Open();
    EXPECT_EQ(List("Font").currentIndex() + List("Font size").count(), -1);
    EXPECT_GT(Pixels(config.ColoreTesto), 20);
}

}  // namespace
}  // namespace sonnel::test
