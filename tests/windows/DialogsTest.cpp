#include "windows/Look.h"

#include "fakes/TempDirectory.h"
#include "platform/qt/QtCommonDialog.h"
#include "platform/qt/QtSystem.h"

#include <QApplication>
#include <QLineEdit>
#include <QScreen>
#include <QTest>
#include <QTextEdit>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

TEST(QtMsgBoxTest, FitsTheScreenHoweverLongItsWordsAre) {
    for (const int length : {5, 400, 4000}) {
        const std::string word(static_cast<std::size_t>(length), 'w');
        const Later look(1, [&] {
            QWidget* box = QApplication::activeModalWidget();
            const QSize screen = box->screen()->availableSize();
            EXPECT_EQ(box->size().boundedTo(screen), box->size()) << length;
            EXPECT_EQ(box->findChild<QTextEdit*>()->toPlainText().toStdString(), word + "\n<b>");
            box->close();
        });
        QtMsgBox().Show({word + "\r\n<b>"});
    }
}

TEST(QtCommonDialogTest, ATypedDirectoryMeansTheFileAskedForInIt) {
    const TempDirectory directory;
    const Later type(1, [&] {
        QWidget* dialog = QApplication::activeModalWidget();
        auto* name = dialog->findChild<QLineEdit*>();
        name->setText(QString::fromStdString((directory / "").string()));
        QTest::keyClick(name, Qt::Key_Return);
        dialog->close();
    });
    EXPECT_THAT(QtCommonDialog().ChooseFiles({"Library", "snl", "sonnel.snl", "/", false}),
                testing::ElementsAre(directory / "sonnel.snl"));
}

}  // namespace
}  // namespace sonnel::test
