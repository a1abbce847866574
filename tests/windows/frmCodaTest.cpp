#include "windows/PlayerRig.h"

#include "fakes/SmfBuilder.h"

#include <QLineEdit>
#include <QTableView>

#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

/// The queue's window over the main window.
class frmCodaTest : public testing::Test, protected PlayerRig {};

TEST_F(frmCodaTest, IsKeptWhileASongPlaysAndItsNextTurnBeginsAfterIt) {
    Store("Queue", "Seconds", "1");
    rig.folder.Write("song.lyk", "Cantabelle1.0\r\n*TIMare\r\n00000 1Uno\r\n00005 23\r\n");
    rig.folder.Write("song.mid", SmfBuilder(1, 500).Note(0, 1400, 60).Bytes());
    others.songs = {{"Mare (Rossi) - Estate", 1}, {"Rondini (Verdi)", 2}};
    others.turns = {Turno{.titolo = "Mare", .file = rig.folder / "song.lyk"},
                    Turno{.titolo = "Rondini", .file = rig.folder / "gone.lyk"}};
    Open((rig.folder / "song.lyk").string());
    QTest::keySequence(window.get(), QKeySequence("Ctrl+U"));
    auto* dialog = window->findChild<FinestraCoda*>();
    ASSERT_TRUE(dialog && QTest::qWaitForWindowActive(dialog));
    EXPECT_TRUE(Playing()) << "the queue takes the focus without a pause";
    auto& words = *dialog->findChild<LineaCerca*>();
    auto& table = *dialog->findChild<QTableView*>();
    const auto add = [&](const char* find, const char* singer) {
        QTest::keyClick(&table, Qt::Key_Slash);
        QTest::keyClicks(&words, find);
        QTest::keyClick(&words, Qt::Key_Return);
        auto* editor = table.findChildren<QLineEdit*>().last();
        QTest::keyClicks(editor, singer);
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents();
    };
    add("rond", "Ugo");
    add("MARE", "Anna");
    table.model()->setData(table.model()->index(1, 2), "+3", Qt::EditRole);
    EXPECT_EQ(dialog->windowTitle(), "Queue - 2 songs");
    EXPECT_EQ(table.model()->index(0, 1).data(), "Rondini - no longer there");
    EXPECT_EQ(table.model()->index(1, 2).data(), "+3");
    QTest::keySequence(&table, QKeySequence("Alt+Up"));
    EXPECT_EQ(queue.Turni()[0].cantante, "Anna");
    EXPECT_EQ(table.currentIndex().row(), 0) << "it stays selected";
    QTest::keyClick(&table, Qt::Key_End);
    EXPECT_EQ(table.currentIndex().row(), 1);
    QTest::keyClick(&table, Qt::Key_Home);
    EXPECT_EQ(table.currentIndex().row(), 0);
    QTest::keyClicks(&words, "ugo");
    EXPECT_TRUE(table.isRowHidden(0));
    EXPECT_FALSE(table.isRowHidden(1));
    QTest::keyClick(&table, Qt::Key_Delete);
    EXPECT_EQ(queue.Turni().size(), 2U) << "what is not seen is not removed";

    QTest::qWait(50);
    EXPECT_TRUE(Playing());
    rig.Run(1500);
    const auto& card = Find<QWidget>(*window, "The next song");
    EXPECT_TRUE(card.isVisible());
    ASSERT_TRUE(QTest::qWaitFor([this] { return Playing(); }, 3000));
    EXPECT_FALSE(card.isVisible());
    EXPECT_EQ(control.Performed().key, 3);
    EXPECT_EQ(queue.Turni().size(), 1U);
    rig.folder.Write("gone.lyk", "");
    QEvent comesBack(QEvent::ActivationChange);
    QApplication::sendEvent(dialog, &comesBack);
    EXPECT_EQ(table.model()->index(0, 1).data(), "Rondini");
    dialog->close();
    window->activateWindow();
    QTest::qWait(300);
    EXPECT_TRUE(Playing()) << "the queue was closed";
    QTest::keySequence(window.get(), QKeySequence("Ctrl+U"));
    QApplication::setActiveWindow(nullptr);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !Playing(); }, 1000))
        << "another program does pause it";
}

}  // namespace
}  // namespace sonnel::test
