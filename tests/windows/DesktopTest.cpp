#include "fakes/TempDirectory.h"
#include "platform/qt/QtCommonDialog.h"
#include "platform/qt/QtShell.h"
#include "platform/qt/XdgFileType.h"

#include <QApplication>
#include <QByteArray>
#include <QComboBox>
#include <QFileDialog>
#include <QPushButton>
#include <QTimer>
#include <chrono>
#include <string>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

TEST(XdgFileType, InstallsOnlyWhatIsNotThere) {
    const TempDirectory home;
    const XdgFileType type = LykFileType();
    const fs::path data = home / "data of mine";
    EXPECT_TRUE(InstallXdgFileType(type, "/opt/sonnel", data));
    EXPECT_FALSE(InstallXdgFileType(type, "/opt/sonnel", data));
    for (const char* moved : {"/opt/sonnel-2", "/opt/sonnel", "/opt/my songs/sonnel"}) {
        EXPECT_TRUE(InstallXdgFileType(type, moved, data)) << moved;
    }
    EXPECT_THAT(
        Content(data / "applications/sonnel.desktop"),
        HasSubstr("\nExec=\"/opt/my songs/sonnel\" --one %f\nTryExec=/opt/my songs/sonnel\n"));
    EXPECT_THAT(Content(data / "mime/packages/sonnel.xml"), HasSubstr("application/x-sonnel-lyk"));
    for (const char* icon : {"apps/sonnel.svg", "mimetypes/application-x-sonnel-lyk.svg"}) {
        const fs::path file = data / "icons/hicolor/scalable" / icon;
        EXPECT_THAT(Content(file), HasSubstr("<svg"));
        fs::remove(file);
        EXPECT_TRUE(InstallXdgFileType(type, "/opt/my songs/sonnel", data)) << icon;
    }

    home.Write("applications", "a file where the directory should be");
    EXPECT_TRUE(InstallXdgFileType(type, "/opt/sonnel", home.Path())) << "all the others";
    EXPECT_FALSE(InstallXdgFileType(type, "/opt/sonnel", home.Path()));
}

TEST(QtCommonDialogTest, OffersFilesWhoseNamesItCannotRead) {
    const TempDirectory directory;
    directory.Write("\xC9t\xE9.KAR", "");
    directory.Write("caf\xE9.txt", "");
    directory.Write("plain.kar", "");
    QtCommonDialog dialogs;
    QTimer::singleShot(0, [] {
        const auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        for (const auto* names : dialog->findChildren<QComboBox*>()) {
            if (names->isVisible() && names->itemText(0) == "\u00C9t\u00E9.KAR") {
                EXPECT_EQ(names->count(), 1);
                for (auto* button : dialog->findChildren<QPushButton*>()) {
                    if (button->text() == "Open t&his file") {
                        button->click();
                        return;
                    }
                }
            }
        }
        ADD_FAILURE() << "the file is not offered";
        QApplication::activeModalWidget()->close();
    });
    EXPECT_THAT(dialogs.ChooseFiles({.title = "",
                                     .extension = "kar",
                                     .name = "*.kar",
                                     .directory = directory.Path(),
                                     .filters = {"Karaoke (*.kar)"},
                                     .anyName = true}),
                testing::ElementsAre(directory / "\xC9t\xE9.KAR"));
}

TEST(XdgFileType, AnyPathCanBeTheProgram) {
    EXPECT_EQ(WithProgram("Exec=x %f\nTryExec=x\nName=x\n", "/a b/$d/50%f/g\\h"),
              R"(Exec="/a b/\\$d/50%%f/g\\\\h" --one %f)"
              "\n"
              R"(TryExec=/a b/$d/50%f/g\\h)"
              "\nName=x\n");
}

TEST(QtShellTest, TheFirstMixerThatRunsIsStarted) {
    const QByteArray path = qgetenv("PATH");
    const TempDirectory programs;
    qputenv("PATH", programs.Path().c_str());
    const auto install = [&programs](const char* name, const std::string& text) {
        fs::permissions(programs.Write(name, text), fs::perms::owner_all);
    };
    QtShell shell;
    EXPECT_FALSE(shell.FindMixer()) << "there is no X server";
    EXPECT_FALSE(shell.Activate({1, "Mixer"}));
    EXPECT_EQ(shell.MixerProgram(), "pavucontrol");
    EXPECT_FALSE(shell.StartMixer()) << "none is installed";

    install("kmix", "#!/there/is/no/such/interpreter\n");
    EXPECT_EQ(shell.MixerProgram(), "kmix");
    EXPECT_FALSE(shell.StartMixer()) << "the one installed does not run";

    install("gnome-control-center", "#!/bin/sh\n[ $# = 1 ] && : >\"$0.$1\"\n");
    EXPECT_TRUE(shell.StartMixer());
    const auto started = programs / "gnome-control-center.sound";
    for (int i = 0; i < 1000 && !fs::exists(started); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    EXPECT_TRUE(fs::exists(started));
    qputenv("PATH", path);
}

}  // namespace
}  // namespace sonnel::test
