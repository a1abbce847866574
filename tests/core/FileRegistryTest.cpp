#include "fakes/TempDirectory.h"
#include "platform/FileRegistry.h"
#include "platform/files/ProfileFile.h"
#include "settings/Impostazioni.h"

#include <cerrno>
#include <functional>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using ::testing::ElementsAre;

constexpr RegistryRoot User = RegistryRoot::CurrentUser;
constexpr RegistryRoot Machine = RegistryRoot::LocalMachine;

class FileRegistryTest : public ::testing::Test {
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
    FileRegistry store{file, directory / "machine.conf"};
};

TEST_F(FileRegistryTest, ValuesComeBackAsTheyWere) {
    const std::string nul("nul\0\0", 5);
    for (const std::string& text :
         {"Arial"s, ""s, " two  blanks "s, "\ttab\t"s, "C:\\Karaoke\\"s, "a=b;c#d"s, "[x]"s,
          "number:5"s, "binary:00"s, "line\r\nline\nend\r"s, nul, "caff\u00E8 \u0416"s, "\\"s,
          "\\s"s, "caf\xE9"s, "@"s}) {
        EXPECT_EQ(Set("name", text), 0);
        EXPECT_EQ(Get("NAME"), "1 " + text);
        EXPECT_EQ(Set(text, text), 0) << "as a name";
        EXPECT_EQ(Get(text), "1 " + text);
    }
    const std::string bytes("\xFF\x00\xFE\x80", 4);
    EXPECT_EQ(Set("number", bytes, RegistryType::Number), 0);
    EXPECT_EQ(Get("number"), "4 " + bytes);
    EXPECT_EQ(Set("number", "123", RegistryType::Number), EINVAL);
    EXPECT_EQ(Set("bytes", bytes + "=\n", RegistryType::Binary), 0);
    EXPECT_EQ(Get("bytes"), "3 " + bytes + "=\n");

    FileRegistry other(file, directory / "machine.conf");
    SalvaImpostazione(other, "Font", "Nome", "Noto Sans");
    EXPECT_EQ(Get("bytes"), "3 " + bytes + "=\n") << "another player's write";
    EXPECT_TRUE(
        Content(file).ends_with("\n\n[Software\\Corvane\\Sonnel Player\\Font]\nNome=Noto Sans\n"));
}

TEST_F(FileRegistryTest, ReadsWhatOthersWroteAndKeepsWhatItDoesNotUnderstand) {
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
    EXPECT_EQ(Get("Name", "A\\C"), missing);
    EXPECT_EQ(Set("@", "at"), 0);
    EXPECT_EQ(Set("name", "new"), 0);
    EXPECT_EQ(
        Content(file),
        "; [A\\B]\n\n[a\\b]\n  Name =  Noto Sans\t\n@=default\n; Name=no\n# Name=no\nnonsense\n"
        "=x\nFlags=number:-2\nFlags2=number:x\nBytes=binary:0 1\n\\@=at\n\n"
        "[A\\B]\nname=new\n[A\\C\n");
}

TEST_F(FileRegistryTest, KeysAreThereWithAllTheirParents) {
    RegistryKey key = 0;
    EXPECT_EQ(store.OpenKey(User, "Software\\X", key), ENOENT);
    EXPECT_EQ(store.CreateKey(User, "Software\\X\\Y", key), 0);
    for (const char* path : {"", "software", "\\Software\\X\\Y\\"}) {
        EXPECT_EQ(store.OpenKey(User, path, key), 0) << path;
    }
    EXPECT_EQ(store.OpenKey(User, "Soft", key), ENOENT);
    EXPECT_EQ(store.OpenKey(Machine, "Software", key), ENOENT) << "the roots are apart";
    EXPECT_EQ(store.CreateKey(User, "a\nb", key), EINVAL);
    RegistryKey other = 0;
    EXPECT_EQ(store.CreateKey(Machine, "Software\\Z", other), 0);
    EXPECT_NE(key, other);
    EXPECT_EQ(Content(directory / "machine.conf"), "[Software\\Z]\n");
}

TEST_F(FileRegistryTest, AFileThatCannotBeUsedIsLeftAlone) {
    fs::create_directory(directory / "user");
    fs::create_symlink("/proc/self/mem", file);
    EXPECT_EQ(Get("name"), "error " + std::to_string(EIO));
    EXPECT_EQ(Set("name", "x"), EIO);
    fs::remove(file);

    EXPECT_EQ(Set("name", "old"), 0);
    fs::permissions(file, fs::perms::owner_read);
    EXPECT_EQ(Set("name", "new"), EACCES);
    EXPECT_EQ(Get("name"), "1 old");
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
    };
    for (const auto& [variables, user, machine] : cases) {
        const Environment lookup = [&known = variables](const std::string& name) {
            return known.contains(name) ? known.at(name) : std::string();
        };
        EXPECT_EQ(UserSettingsFile(lookup), user + "/settings.conf");
        EXPECT_EQ(MachineSettingsFile(lookup), machine + "/settings.conf");
    }
}

TEST(ProfileFile, FindsKeysAndValues) {
    struct Case {
        std::string content;
        std::vector<std::string> keys;  ///< of "s"
        std::string value;              ///< of "k" in "s"
    };
    const std::vector<Case> cases{
        {"[s]\r\nK= \"a=b\" \r\n", {"K"}, " \"a=b\" "},
        {"[s]\r\nb=\r\n[t]\r\nk=1\r\n[s]\r\nk=2\r\n", {"b", "k"}, "2"},
        {"[s]\r\nk\r\n\r\n=x\r\n; a remark\r\n;song=x\r\n", {"k", ";song"}, ""},
        {"[s]\r\n[live] tune=x\r\n[x]y]\r\n[u=]\r\nk=v\n[t]\r\n",
         {"[live] tune", "[x]y]", "[u", "k"},
         "v\n[t]"},
        {"\xEF\xBB\xBF[s]\r\nk=\u0416\r\n", {"k"}, "\u0416"},
    };
    for (const Case& c : cases) {
        const TempDirectory directory;
        const ProfileFile file(directory.Write("p", c.content));
        EXPECT_EQ(file.Keys("S"), c.keys) << c.content;
        EXPECT_EQ(file.Read("s", "k", "none"), c.value) << c.content;
    }
}

TEST(ProfileFile, WritesOneKeyAtATime) {
    struct Case {
        std::string before;
        std::function<void(ProfileFile&)> write;
        std::string after;
    };
    const auto set = [](const std::string& section, const std::string& key,
                        const std::string& value) {
        return [=](ProfileFile& f) { EXPECT_FALSE(f.Set(section, key, value)); };
    };
    const std::vector<Case> cases{
        {"[s]\r\na=1\r\nk=2\r\nb", set("S", "K", " v"), "[s]\r\na=1\r\nk= v\r\nb\r\n"},
        {"x\r[s]\ra=1\r\r[t]\r; t\r", set("s", "k", "v"),
         "x\r\n[s]\r\na=1\r\nk=v\r\n\r\n[t]\r\n; t\r\n"},
        {"[s]\r\n", set("s", "a\r\nb", "c\n\r"), "[s]\r\na  b=c  \r\n"},
        {"[s]\r\na=1\r\n", set("s", "a=b", "2"), "[s]\r\na=1\r\n"},
        {"[s]\r\na=\xE9\r\n", set("s", "b", "\u0416"),
         "\xEF\xBB\xBF[s]\r\na=\u00E9\r\nb=\u0416\r\n"},
        {"[s]\r\na=1\r\nA=2\r\nb=3\r\n", [](ProfileFile& f) { (void)f.Remove("S", "a"); },
         "[s]\r\nb=3\r\n"},
        {"[s]\r\na=1\r", [](ProfileFile& f) { (void)f.Respell("s", "A"); }, "[s]\r\nA=1\r\n"},
    };
    for (const Case& c : cases) {
        const TempDirectory directory;
        ProfileFile file(directory.Write("p", c.before));
        c.write(file);
        EXPECT_EQ(Content(file.Path()), c.after);
        EXPECT_THAT(directory.Names(), ElementsAre("p"));
    }
}

TEST(ProfileFile, ABatchLandsAsAWholeOrNotAtAll) {
    const TempDirectory directory;
    ProfileFile file(directory.Write("p", "[s]\r\na=1\r\n"));
    {
        const ProfileFile::Batch forgotten(file);
        EXPECT_FALSE(file.Set("s", "a", "2"));
        EXPECT_EQ(file.Read("S", "A", ""), "2");
    }
    EXPECT_EQ(file.Read("s", "a", ""), "1");

    ProfileFile::Batch batch(file);
    ProfileFile::Batch inner(file);
    (void)file.Set("s", "b", "3");
    (void)file.Remove("s", "a");
    EXPECT_FALSE(inner.Commit());
    EXPECT_THAT(file.Keys("s"), ElementsAre("b"));
    EXPECT_EQ(Content(file.Path()), "[s]\r\na=1\r\n");
    EXPECT_FALSE(ProfileFile(file.Path()).Set("s", "other", "4"));  // another player's write
    EXPECT_FALSE(batch.Commit());
    EXPECT_EQ(Content(file.Path()), "[s]\r\nother=4\r\nb=3\r\n");
}

TEST(ProfileFile, WritesNothingWhereItCannotOrNeedNot) {
    const TempDirectory directory;
    ProfileFile unreadable(directory.Path());
    EXPECT_EQ(unreadable.Set("s", "k", "v")->number, EISDIR);
    EXPECT_EQ(unreadable.Read("s", "k", "none"), "none");
    const auto file = directory.Write("q", "[s]\r\na=1\r\na=2\r");
    EXPECT_FALSE(ProfileFile(file).Remove("s", "b"));
    EXPECT_EQ(Content(file), "[s]\r\na=1\r\na=2\r") << "an absent key was removed";
}

}  // namespace
}  // namespace sonnel::test
