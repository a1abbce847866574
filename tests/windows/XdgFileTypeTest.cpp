#include "fakes/WritingTrial.h"
#include "platform/qt/XdgFileType.h"

#include <string>

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
    EXPECT_THAT(Content(data / "applications/sonnel.desktop"),
                HasSubstr("\nExec=\"/opt/my songs/sonnel\" %f\nTryExec=/opt/my songs/sonnel\n"));
    EXPECT_THAT(Content(data / "mime/packages/sonnel.xml"), HasSubstr("application/x-sonnel-lyk"));
    for (const char* icon : {"apps/sonnel.svg", "mimetypes/application-x-sonnel-lyk.svg"}) {
        const fs::path file = data / "icons/hicolor/scalable" / icon;
        EXPECT_THAT(Content(file), HasSubstr("<svg"));
        fs::remove(file);
        EXPECT_TRUE(InstallXdgFileType(type, "/opt/my songs/sonnel", data)) << icon;
    }
}

TEST(XdgFileType, WritesWhatItCan) {
    const TempDirectory home;
    home.Write("applications", "a file where the directory should be");
    EXPECT_TRUE(InstallXdgFileType(LykFileType(), "/opt/sonnel", home.Path()));
    EXPECT_FALSE(InstallXdgFileType(LykFileType(), "/opt/sonnel", home.Path()));
    EXPECT_TRUE(fs::exists(home / "mime/packages/sonnel.xml"));
}

TEST(XdgFileType, LeavesWholeFilesWhenItIsKilledAndOnAFullDisk) {
    const TempDirectory home;
    const XdgFileType type = LykFileType();
    InstallXdgFileType(type, "/opt/old", home.Path());
    fs::remove(home / "mime/packages/sonnel.xml");
    const auto install = [&] { return InstallXdgFileType(type, "/opt/sonnel", home.Path()), true; };
    const WritingTrial trial(home, install, false);
    trial.KillEverywhere();
    trial.FillTheDiskEverywhere();
}

TEST(XdgFileType, AnyPathCanBeTheProgram) {
    const auto commands = [](const char* program) {
        return WithProgram("Exec=x %f\nTryExec=x\nName=x\n", program);
    };
    EXPECT_EQ(commands("/opt/50%/sonnel"),
              "Exec=/opt/50%%/sonnel %f\nTryExec=/opt/50%/sonnel\nName=x\n");
    EXPECT_EQ(commands("/a b/\"c\"/$d/`e`/50%f/g\\h/i\nj"),
              R"(Exec="/a b/\\"c\\"/\\$d/\\`e\\`/50%%f/g\\\\h/i\nj" %f)"
              "\n"
              R"(TryExec=/a b/"c"/$d/`e`/50%f/g\\h/i\nj)"
              "\nName=x\n");
}

}  // namespace
}  // namespace sonnel::test
