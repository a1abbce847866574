#include "fakes/TempDirectory.h"
#include "platform/FileRegistro.h"
#include "settings/Impostazioni.h"

#include <cerrno>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

constexpr RegistryRoot User = RegistryRoot::CurrentUser;
constexpr RegistryRoot Machine = RegistryRoot::LocalMachine;

class FileRegistroTest : public ::testing::Test {
  protected:
    int Set(std::string_view name, std::string_view data,
            RegistryType type = RegistryType::String) {
        RegistryKey key = 0;
        const int status = store.CreateKey(User, "A\\B", key);
        return status != 0 ? status : store.SetValue(key, name, type, data);
    }
    /// The value as type number and data, or "error" and the status.
    std::string Get(std::string_view name, std::string_view path = "A\\B") {
        RegistryKey key = 0;
        RegistryType type{};
        std::string data;
        int status = store.OpenKey(User, path, key);
        if (status == 0) {
            status = store.QueryValue(key, name, type, data);
        }
        return status != 0 ? "error " + std::to_string(status)
                           : std::to_string(static_cast<int>(type)) + " " + data;
    }

    const std::string missing = "error " + std::to_string(ENOENT);
    TempDirectory directory;
    fs::path file = directory / "user" / "settings.conf";
    FileRegistro store{file, directory / "machine.conf"};
};

TEST_F(FileRegistroTest, ValuesComeBackAsTheyWere) {
    const std::string nul("nul\0\0", 5);
    for (const std::string& text :
         {"Arial"s, ""s, " two  blanks "s, "\ttab\t"s, "C:\\Karaoke\\"s, "a=b;c#d"s, "[x]"s,
          "number:5"s, "binary:00"s, "line\r\nline\nend\r"s, nul, "caff\u00E8 \u0416"s, "\\"s,
          "\\s"s, "caf\xE9"s, "@"s}) {
        EXPECT_EQ(Set("name", text), 0);
        EXPECT_EQ(Get("NAME"), "1 " + text);
        EXPECT_EQ(Set(text, "value of " + text), 0) << "as a name";
        EXPECT_EQ(Get(text), "1 value of " + text);
    }
    const std::string bytes("\xFF\x00\xFE\x80", 4);
    EXPECT_EQ(Set("number", bytes, RegistryType::Number), 0);
    EXPECT_EQ(Get("number"), "4 " + bytes);
    EXPECT_EQ(Set("number", "123", RegistryType::Number), EINVAL);
    EXPECT_EQ(Set("bytes", bytes + "=\n", RegistryType::Binary), 0);
    EXPECT_EQ(Get("bytes"), "3 " + bytes + "=\n");
    EXPECT_EQ(Set("bytes", "", RegistryType::Binary), 0);
    EXPECT_EQ(Get("bytes"), "3 ");
}

TEST_F(FileRegistroTest, LooksAsItIsEditedByHandAndTwoPlayersKeepEachOthersValues) {
    FileRegistro other(file, directory / "machine.conf");
    SalvaImpostazione(store, "Font", "Nome", "Arial");
    SalvaImpostazione(other, "Font", "Dimensione", "13.5");
    SalvaImpostazione(store, "Opzioni", "Ombra", "-1");
    SalvaImpostazione(other, "Font", "Nome", "Noto Sans");
    EXPECT_EQ(Content(file),
              "[Software\\Corvane\\Sonnel Player\\Font]\nNome=Noto Sans\nDimensione=13.5\n\n"
              "[Software\\Corvane\\Sonnel Player\\Opzioni]\nOmbra=-1\n");
}

TEST_F(FileRegistroTest, ReadsWhatOthersWroteAndKeepsWhatItDoesNotUnderstand) {
    fs::create_directory(directory / "user");
    directory.Write("user/settings.conf",
                    "\xEF\xBB\xBF; [A\\B]\r\n\r\n[a\\b]\r\n  Name =  Noto Sans\t\r\n@=default\n"
                    "; Name=no\n# Name=no\nnonsense\n=x\nFlags=number:-2\nFlags2=number:x\n"
                    "Bytes=binary:0 1\n\n[A\\B]\nName=last\n[A\\C");
    EXPECT_EQ(Get("Name"), "1 last");
    EXPECT_EQ(Get(""), "1 default");
    EXPECT_EQ(Get("flags"), "4 \xFE\xFF\xFF\xFF");
    for (const char* name : {"Flags2", "Bytes", "nonsense", "; Name"}) {
        EXPECT_EQ(Get(name), missing) << name;
    }
    EXPECT_EQ(Get("Name", "A"), missing);
    EXPECT_EQ(Get("Name", "A\\C"), missing);
    EXPECT_EQ(Set("@", "at"), 0);
    EXPECT_EQ(Set("name", "new"), 0);
    EXPECT_EQ(
        Content(file),
        "; [A\\B]\n\n[a\\b]\n  Name =  Noto Sans\t\n@=default\n; Name=no\n# Name=no\nnonsense\n"
        "=x\nFlags=number:-2\nFlags2=number:x\nBytes=binary:0 1\n\\@=at\n\n"
        "[A\\B]\nname=new\n[A\\C\n");
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
    EXPECT_EQ(Get("name"), missing);
    EXPECT_EQ(Set("name", "x"), ENOTDIR);
}

TEST(SettingsFiles, AreWhereTheEnvironmentSays) {
    using Variables = std::map<std::string, std::string>;
    const std::vector<std::tuple<Variables, std::string, std::string>> cases{
        {{{"HOME", "/home/ada"}}, "/home/ada/.config/sonnel", "/etc/xdg/sonnel"},
        {{{"HOME", "/home/ada"}, {"XDG_CONFIG_HOME", "/cfg"}, {"XDG_CONFIG_DIRS", "/opt/etc:/etc"}},
         "/cfg/sonnel",
         "/opt/etc/sonnel"},
        {{{"HOME", "/home/ada"}, {"XDG_CONFIG_HOME", "relative"}, {"XDG_CONFIG_DIRS", ":/etc"}},
         "/home/ada/.config/sonnel",
         "/etc/sonnel"},
        {{{"XDG_CONFIG_HOME", ""}}, "", "/etc/xdg/sonnel"},
    };
    for (const auto& [variables, user, machine] : cases) {
        const Environment lookup = [&known = variables](const std::string& name) {
            return known.contains(name) ? known.at(name) : std::string();
        };
        EXPECT_EQ(UserSettingsFile(lookup), user.empty() ? "" : user + "/settings.conf");
        EXPECT_EQ(MachineSettingsFile(lookup), machine + "/settings.conf");
    }
}

}  // namespace
}  // namespace sonnel::test
