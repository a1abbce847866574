#include "windows/Look.h"

#include "fakes/SongLibrary.h"
#include "library/frmInfoBrano.h"

#include <QApplication>
#include <QTest>
#include <functional>
#include <tuple>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

const std::string Words = "M\r\n00010 1page\r\n";

struct frmInfoBranoTest : ::testing::Test, SongLibrary {
    void SetUp() override {
        Index(
            "[Songs]\r\na=T|A|Hits\r\nb=T|A|gone\r\nc=T|A|Hits\r\n"
            "[Album]\r\n?=|\r\nOld=|\r\nHits=|\r\n");
        for (const char* name : {"a.lyk", "b.lyk", "c.lyk"}) {
            directory.Write(name, Words);
        }
        CaricaIndice(libreria);
        windows.log.clear();
        windows.selected = 1;
    }
    /// Runs the command while the user acts in its window; it is closed in the end.
    void Edit(const std::function<void()>& act) {
        const Later turn(1, [&] {
            window = dynamic_cast<frmInfoBrano*>(QApplication::activeModalWidget());
            act();
            window->close();
        });
        ProprietaBrano(libreria, windows, windows.selected, nullptr);
    }
    void Press(const QString& text) const { Find<QPushButton>(*window, text).click(); }
    QComboBox* Box() const { return window->findChild<QComboBox*>(); }
    /// The albums listed, the one chosen and the buttons that can be used.
    std::string Shown() const {
        std::string shown;
        for (int i = 0; i < Box()->count(); ++i) {
            shown += Box()->itemText(i).toStdString() + " ";
        }
        shown += "- " + Box()->currentText().toStdString();
        for (const QPushButton* button : window->findChildren<QPushButton*>()) {
            shown += button->isEnabled() ? button->text().toStdString() : "";
        }
        return shown;
    }
    static void Type(const QString& text, QLineEdit* field) {
        field->selectAll();
        field->del();
        field->insert(text);
        QTest::keyClick(field, Qt::Key_Tab);
    }
    QLineEdit* Title() const { return window->findChildren<QLineEdit*>()[1]; }
    void TypeTitle(const QString& text) const { Type(text, Title()); }
    void TypeAlbum(const QString& text) const { Type(text, Box()->lineEdit()); }
    /// Goes to an entry with the arrow keys.
    void Pick(const QString& album) const {
        Box()->setCurrentIndex(-1);
        while (Box()->currentText() != album) {
            QTest::keyClick(Box(), Qt::Key_Down);
        }
    }

    frmInfoBrano* window = nullptr;
};

TEST_F(frmInfoBranoTest, EnablesWhatCanBeDoneAndCancelWritesNothing) {
    const std::string index = Index();
    const std::string albums = "<None> Hits Old - ";
    Edit([&] {
        EXPECT_TRUE(Title()->hasSelectedText() && Title()->cursorPosition() == 0);
        EXPECT_EQ(Shown(), albums + "Hits&Delete&Cancel");
        TypeTitle("New");
        EXPECT_EQ(Shown(), albums + "Hits&Delete&Ok&Cancel");
        Pick("<None>");
        EXPECT_EQ(Shown(), albums + "<None>&Ok&Cancel");
        TypeAlbum(" ");
        EXPECT_EQ(Shown(), albums + " &Cancel");
        TypeAlbum("Old");
        EXPECT_EQ(Shown(), albums + "Old&New&Rename&Ok&Cancel");
        Press("&Cancel");
    });
    windows.selected = 2;
    Edit([&] {
        TypeTitle("New");
        EXPECT_EQ(Shown(), albums + "&Cancel") << "an album that is not in the list";
    });
    EXPECT_EQ(Index(), index);
    EXPECT_EQ(Content(directory / "a.lyk") + Content(directory / "b.lyk"), Words + Words);
    EXPECT_THAT(windows.log, IsEmpty());
}

TEST_F(frmInfoBranoTest, OkWritesTableIndexAndFile) {
    const std::string last = "\u0416|A|Fresh";
    const std::vector<std::tuple<QString, QString, std::string>> cases{
        {"  New \n |=&\r\n", "Old", "New   |=&|A|Old"},
        {"", "<None>", "|A|?"},
        {"\u0416", " Fresh ", last},
        {QString(10'000, 'x'), "Old", ""},  // refused
        {"T", "a=b", ""}};
    for (const auto& [title, album, written] : cases) {
        Edit([&, &title = title, &album = album] {
            TypeTitle(title);
            TypeAlbum(album);
            QTest::keyClick(window, Qt::Key_Return);
        });
        EXPECT_EQ(Messages().size(), written.empty() ? 1U : 0U);
        const std::string& song = written.empty() ? last : written;
        EXPECT_EQ(Table()[0], "a=" + song);
        EXPECT_THAT(Index(), HasSubstr("\r\na=" + song + "\r\n"));
    }
    EXPECT_THAT(Index(), HasSubstr("[Album]\r\n?=|\r\nOld=|\r\nHits=|\r\nFresh=|\r\n"));
    EXPECT_EQ(Content(directory / "a.lyk"),
              "\xEF\xBB\xBFM\r\n*TI\u0416\r\n*AUA\r\n*ALFresh\r\n00010 1page\r\n");
}

TEST_F(frmInfoBranoTest, MakesAndRenamesAlbums) {
    Edit([&] {
        for (const char* name : {" New ", "Old", "?"}) {
            TypeAlbum(name);
            Press("&New");
        }
        EXPECT_EQ(Shown(), "<None> Hits New Old Old - <None>&Ok&Cancel");
        TypeAlbum("None");
        Press("&Rename");
        EXPECT_THAT(Messages(), ElementsAre(StartsWith("\"<None>\" is no album and can't be")));
        Pick("Hits");
        TypeAlbum("hits");
        Press("&Rename");
        EXPECT_THAT(Messages(),
                    ElementsAre("Can't reate album \"hits\" because it already exists!"));
        TypeAlbum("Best");
        msgBox.answers = {Answer::Cancel};
        Press("&Rename");
        EXPECT_EQ(Table()[0], "a=T|A|Hits");
        Press("&Rename");
        const auto question = StartsWith("Rename album \"Hits\" in \"Best\" and assign to it");
        EXPECT_THAT(Messages(), ElementsAre(question, question));
        EXPECT_EQ(Shown(), "<None> Best New Old Old - Best&New&Rename&Ok&Cancel");
    });
    EXPECT_EQ(Index(),
              "[Songs]\r\na=T|A|Best\r\nb=T|A|gone\r\nc=T|A|Best\r\n"
              "[Album]\r\n?=|\r\nOld=|\r\nNew=|\r\nBest=0\r\n");
    EXPECT_THAT(windows.log, ElementsAre("busy", "list", "normal"));
}

TEST_F(frmInfoBranoTest, RemovesAlbums) {
    const std::string index = Index();
    std::filesystem::remove(directory / "a.lyk");
    const auto first = StartsWith("Remove album \"Hits\"?");
    const auto second = StartsWith("Selected album has 2 songs: if you remove it, all songs ");
    const auto failed = StartsWith("Can't read the file " + (directory / "a.lyk").string());
    Edit([&] {
        msgBox.answers = {Answer::Cancel, Answer::Ok, Answer::Cancel};
        Press("&Delete");
        Press("&Delete");
        EXPECT_THAT(Messages(), ElementsAre(first, first, second));
        EXPECT_EQ(Index(), index);
        Press("&Delete");
        EXPECT_THAT(Messages(), ElementsAre(first, second, failed));
        EXPECT_EQ(Shown(), "<None> Old - &Cancel");
    });
    EXPECT_EQ(Index(),
              "[Songs]\r\na=T|A|?\r\nb=T|A|gone\r\nc=T|A|?\r\n[Album]\r\n?=|\r\nOld=|\r\n");
    EXPECT_THAT(Content(directory / "c.lyk"), HasSubstr("*AL?\r\n"));
}

}  // namespace
}  // namespace sonnel::test
