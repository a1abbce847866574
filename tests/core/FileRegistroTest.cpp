#include "fakes/TempDirectory.h"
#include "platform/FileRegistro.h"
#include "settings/Impostazioni.h"

#include <cerrno>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;

constexpr RegistryRoot User = RegistryRoot::CurrentUser;
constexpr RegistryRoot Machine = RegistryRoot::LocalMachine;

class FileRegistroTest : public ::testing::Test {
  protected:
    int Set(std::string_view name, RegistryType type, std::string_view data,
            std::string_view path = "A\\B") {
        RegistryKey key = 0;
        if (const int status = store.CreateKey(User, path, key); status != 0) {
            return status;
        }
        const int status = store.SetValue(key, name, type, data);
        store.CloseKey(key);
        return status;
    }
    int Set(std::string_view name, std::string_view text) {
        return Set(name, RegistryType::String, text);
    }
    /// The value as type number and data, or "error" and the status.
    std::string Get(std::string_view name, std::string_view path = "A\\B") {
        RegistryKey key = 0;
        RegistryType type{};
        std::string data;
        int status = store.OpenKey(User, path, key);
        if (status == 0) {
            status = store.QueryValue(key, name, type, data);
            store.CloseKey(key);
        }
        return status != 0 ? "error " + std::to_string(status)
                           : std::to_string(static_cast<int>(type)) + " " + data;
    }
    static std::string Missing() { return "error " + std::to_string(ENOENT); }

    TempDirectory directory;
    fs::path file = directory / "user" / "settings.conf";
    FileRegistro store{file, directory / "machine.conf"};
};

TEST_F(FileRegistroTest, ValuesComeBackAsTheyWere) {
    const std::vector<std::string> texts{
        "Arial",
        "",
        "-1",
        " two  blanks ",
        "\ttab\t",
        "C:\\Karaoke\\",
        "a=b;c#d",
        "[x]",
        "number:5",
        "binary:00",
        "line\r\nline\nend\r",
        std::string("nul\0\0", 5),
        "caff\u00E8 \u0416",
        "\\",
        "\\s",
        "caf\xE9",
        "@",
    };
    for (const std::string& text : texts) {
        EXPECT_EQ(Set("name", text), 0);
        EXPECT_EQ(Get("NAME"), "1 " + text);
        EXPECT_EQ(Set(text, "value of " + text), 0) << "as a name";
        EXPECT_EQ(Get(text), "1 value of " + text);
    }
    const std::string number("\xFF\x00\xFE\x80", 4);
    EXPECT_EQ(Set("number", RegistryType::Number, number), 0);
    EXPECT_EQ(Get("number"), "4 " + number);
    EXPECT_EQ(Set("number", RegistryType::Number, "123"), EINVAL);
    for (const std::string& bytes : {std::string(), std::string("\x00\xA5\xFF=\n", 5)}) {
        EXPECT_EQ(Set("bytes", RegistryType::Binary, bytes), 0);
        EXPECT_EQ(Get("bytes"), "3 " + bytes);
    }
}

TEST_F(FileRegistroTest, LooksAsItIsEditedByHand) {
    SalvaImpostazione(store, "Font", "Nome", "Arial");
    SalvaImpostazione(store, "Font", "Dimensione", "13.5");
    SalvaImpostazione(store, "Opzioni", "Ombra", "-1");
    SalvaImpostazione(store, "Font", "Nome", "Noto Sans");
    EXPECT_EQ(Content(file),
              "[Software\\Corvane\\Sonnel Player\\Font]\nNome=Noto Sans\nDimensione=13.5\n\n"
              "[Software\\Corvane\\Sonnel Player\\Opzioni]\nOmbra=-1\n");
}

TEST_F(FileRegistroTest, ReadsWhatOthersWrote) {
    fs::create_directory(directory / "user");
    directory.Write("user/settings.conf",
                    "\xEF\xBB\xBFgarbage\r\n; [A\\B]\r\n[a\\b]\r\n  Name =  Noto Sans\t\r\n"
                    "@=default\n; Name=no\n# Name=no\nnonsense\n=x\nFlags=number:-2\n"
                    "Flags2=number:x\nBytes=binary:0 1\n[A\\B]\nName=last\n[A\\C");
    EXPECT_EQ(Get("Name"), "1 last");
    EXPECT_EQ(Get(""), "1 default");
    EXPECT_EQ(Get("flags"), "4 \xFE\xFF\xFF\xFF");
    for (const char* name : {"Flags2", "Bytes", "nonsense", "; Name"}) {
        EXPECT_EQ(Get(name), Missing()) << name;
    }
    EXPECT_EQ(Get("Name", "A"), Missing());
    EXPECT_EQ(Get("Name", "A\\C"), Missing());
}

TEST_F(FileRegistroTest, KeepsWhatItDoesNotUnderstand) {
    fs::create_directory(directory / "user");
    directory.Write("user/settings.conf",
                    "; mine\r\n\r\n[A\\B]\r\n  Name = old\r\nnonsense\r\nflags=number:x\r\n\r\n"
                    "[A\\D]\r\nx=1");
    EXPECT_EQ(Set("name", "new"), 0);
    EXPECT_EQ(Set("other", "1"), 0);
    EXPECT_EQ(Content(file),
              "; mine\n\n[A\\B]\nname=new\nnonsense\nflags=number:x\nother=1\n\n[A\\D]\nx=1\n");
}

TEST_F(FileRegistroTest, KeysAreThereWithAllTheirParents) {
    RegistryKey key = 0;
    EXPECT_EQ(store.OpenKey(User, "Software\\X", key), ENOENT);
    EXPECT_EQ(store.CreateKey(User, "Software\\X\\Y", key), 0);
    for (const char* path : {"", "software", "Software\\x", "\\Software\\X\\Y\\"}) {
        EXPECT_EQ(store.OpenKey(User, path, key), 0) << path;
        EXPECT_NE(key, 0U);
    }
    EXPECT_EQ(store.OpenKey(User, "Soft", key), ENOENT);
    EXPECT_EQ(store.OpenKey(Machine, "Software", key), ENOENT) << "the roots are apart";
    EXPECT_EQ(store.CreateKey(User, "a\nb", key), EINVAL);
    EXPECT_EQ(store.CreateKey(Machine, "Software\\Z", key), 0);
    EXPECT_EQ(Content(directory / "machine.conf"), "[Software\\Z]\n");

    store.CloseKey(key);
    RegistryType type{};
    std::string data;
    EXPECT_EQ(store.QueryValue(key, "x", type, data), EBADF);
    EXPECT_EQ(store.SetValue(key, "x", type, data), EBADF);
}

TEST_F(FileRegistroTest, TwoPlayersKeepEachOthersValues) {
    EXPECT_EQ(Set("mine", "1"), 0);
    FileRegistro other(file, directory / "machine.conf");
    SalvaImpostazione(other, "Font", "Nome", "theirs");
    EXPECT_EQ(Set("mine", "2"), 0);
    EXPECT_EQ(LeggiImpostazione(store, "Font", "Nome", ""), "theirs");
}

TEST_F(FileRegistroTest, AFileThatCannotBeUsedIsLeftAlone) {
    fs::create_directories(file);
    EXPECT_EQ(Get("name"), "error " + std::to_string(EISDIR));
    EXPECT_EQ(Set("name", "x"), EISDIR);
    fs::remove(file);

    fs::create_symlink("/proc/self/mem", file);
    EXPECT_EQ(Get("name"), "error " + std::to_string(EIO));
    EXPECT_EQ(Set("name", "x"), EIO);
    fs::remove(file);

    EXPECT_EQ(Set("name", "old"), 0);
    fs::permissions(file, fs::perms::owner_read);
    EXPECT_EQ(Set("name", "new"), EACCES);
    EXPECT_EQ(Get("name"), "1 old");
    fs::remove_all(directory / "user");

    directory.Write("user", "a file where the directory should be");
    EXPECT_EQ(Get("name"), Missing());
    EXPECT_EQ(Set("name", "x"), ENOTDIR);
}

TEST(SettingsFiles, AreWhereTheEnvironmentSays) {
    struct Case {
        std::map<std::string, std::string> environment;
        std::string user;
        std::string machine;
    };
    const std::vector<Case> cases{
        {{{"HOME", "/home/ada"}},
         "/home/ada/.config/sonnel/settings.conf",
         "/etc/xdg/sonnel/settings.conf"},
        {{{"HOME", "/home/ada"}, {"XDG_CONFIG_HOME", "/cfg"}, {"XDG_CONFIG_DIRS", "/opt/etc:/etc"}},
         "/cfg/sonnel/settings.conf",
         "/opt/etc/sonnel/settings.conf"},
        {{{"HOME", "/home/ada"}, {"XDG_CONFIG_HOME", "relative"}, {"XDG_CONFIG_DIRS", ":/etc"}},
         "/home/ada/.config/sonnel/settings.conf",
         "/etc/sonnel/settings.conf"},
        {{{"XDG_CONFIG_HOME", ""}}, "", "/etc/xdg/sonnel/settings.conf"},
    };
    for (const Case& c : cases) {
        const Environment lookup = [&](const std::string& name) {
            const auto found = c.environment.find(name);
            return found != c.environment.end() ? found->second : std::string();
        };
        EXPECT_EQ(UserSettingsFile(lookup).string(), c.user);
        EXPECT_EQ(MachineSettingsFile(lookup).string(), c.machine);
    }
}

}  // namespace
}  // namespace sonnel::test
