#include "fakes/TempDirectory.h"
#include "platform/qt/QtRegistry.h"

#include <QCoreApplication>
#include <map>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

namespace sonnel::test {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

const RegistryKey Font{RegistryRoot::CurrentUser, "Software\\Corvane\\Sonnel Player\\Font"};
const RegistryKey Lyk{RegistryRoot::LocalMachine, "SOFTWARE\\Classes\\.lyk"};

class QtRegistryTest : public ::testing::Test {
  protected:
    /// The text of a setting in its file as it is now, "(absent)" when there is none.
    std::string Get(std::string_view name, const RegistryKey& key = Font) {
        // Qt shares what it has read of a file.
        const fs::path copy = directory / std::to_string(++copies);
        fs::copy_file(key.root == Font.root ? user : machine, copy);
        return std::get<std::string>(QtRegistry(copy, copy).Read(key, name).value_or("(absent)"));
    }

    TempDirectory directory;
    fs::path user = directory / "user/sonnel/settings.conf";
    fs::path machine = directory / "machine.conf";
    int copies = 0;
};

TEST_F(QtRegistryTest, NamesAndValuesReadAsTheyWereWritten) {
    const std::vector<std::string> texts{
        "",         "@Invalid()", "  \"C:\\Songs\\\", a;b=c [%2F/] \u00E8 \u0416\t\r\nend\r\n ",
        "nul\0\0"s, "caf\xE9",    "a/b",
        "a//b"};
    {
        QtRegistry store(user, machine);
        for (const std::string& text : texts) {
            store.Write(Font, text, text);
        }
        store.Write(Font, "number", -2);
        store.Write(Font, "gone", "x");
        store.Remove(Font, "gone");
    }
    for (const std::string& text : texts) {
        EXPECT_EQ(Get(text), text);
    }
    EXPECT_EQ(Get("number"), "-2");
    EXPECT_EQ(Get("gone"), "(absent)");
}

TEST_F(QtRegistryTest, KeysHaveTheirPlaceInOneFileForEachRoot) {
    {
        QtRegistry store(user, machine);
        EXPECT_TRUE(store.Create({Lyk.root, "SOFTWARE\\Classes\\LYKfile\\Shell"}));
        store.Write(Font, "Nome", "Noto Sans");
        store.Write({Font.root, std::string(PlayerPath)}, "top", "1");
        store.Write(Lyk, "", "LYKfile");
        store.Write({Lyk.root, "SOFTWARE\\Classes\\LYKfile"}, "", "Sonnel Karaoke");
        store.Write({Lyk.root, "SOFTWARE\\Classes\\LYKfile"}, "EditFlags", 0);
        store.Remove({Lyk.root, "SOFTWARE\\Classes\\LYKfile"}, "");
        EXPECT_FALSE(fs::exists(user) || fs::exists(machine)) << "before the command has ended";
        QCoreApplication::processEvents();
        EXPECT_EQ(Content(user), "[General]\ntop=1\n\n[Font]\nNome=Noto Sans\n");
        EXPECT_EQ(Content(machine),
                  "[SOFTWARE]\nClasses\\.lyk=LYKfile\n"
                  "Classes\\LYKfile=Sonnel Karaoke\nClasses\\LYKfile\\EditFlags=0\n");

        directory.Write("user/sonnel/settings.conf", "[Font]\nNome=Other\nDimensione=12\n");
        EXPECT_EQ(store.Read(Font, "Nome"), RegistryValue("Other")) << "another player's write";
        store.Write(Font, "Grassetto", "0");
        directory.Write("user/sonnel/settings.conf", "[Font]\nNome=Third\nDimensione=13.5\n");
    }
    EXPECT_EQ(Content(user), "[Font]\nDimensione=13.5\nGrassetto=0\nNome=Third\n");
}

TEST_F(QtRegistryTest, ReadsWhatIsWrittenByHand) {
    directory.Write("machine.conf", "[SOFTWARE]\r\nClasses\\.lyk=\r\n");
    EXPECT_EQ(Get("", Lyk), "");
    EXPECT_EQ(Get("", {Lyk.root, "SOFTWARE\\Classes\\.kar"}), "(absent)");

    fs::create_directories(user.parent_path());
    directory.Write("user/sonnel/settings.conf",
                    "\xEF\xBB\xBF[Font]\r\n  Nome = a,b,  c \r\nrectangle=@Rect(1 2 3 4)");
    EXPECT_EQ(Get("Nome"), "a, b, c");
    EXPECT_EQ(Get("rectangle"), "(absent)");
}

TEST_F(QtRegistryTest, WhatIsNoFileOfItsOwnIsLeftAlone) {
    fs::create_directories(user.parent_path());
    ASSERT_EQ(mkfifo(user.c_str(), 0600), 0);
    const int pipe = open(user.c_str(), O_RDWR);  // nobody waits for the other end
    {
        QtRegistry store(user, "");
        for (const RegistryKey& key : {Font, Lyk}) {
            store.Write(key, "name", "x");
            EXPECT_FALSE(store.Create(key) || store.Read(key, "name"));
        }
    }
    EXPECT_TRUE(fs::is_fifo(user));
    close(pipe);
}

TEST(SettingsFiles, AreWhereTheEnvironmentSays) {
    std::map<std::string, std::string> variables{{"HOME", "/home/ada"}};
    const Environment lookup = [&](const std::string& name) { return variables[name]; };
    EXPECT_EQ(UserSettingsFile(lookup), "/home/ada/.config/sonnel/settings.conf");
    EXPECT_EQ(MachineSettingsFile(lookup), "/etc/xdg/sonnel/settings.conf");
    variables = {{"XDG_CONFIG_HOME", "/cfg"}, {"XDG_CONFIG_DIRS", "relative:/opt/etc:/etc"}};
    EXPECT_EQ(UserSettingsFile(lookup), "/cfg/sonnel/settings.conf");
    EXPECT_EQ(MachineSettingsFile(lookup), "/opt/etc/sonnel/settings.conf");
}

}  // namespace
}  // namespace sonnel::test
