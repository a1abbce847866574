#include "fakes/TempDirectory.h"
#include "platform/files/ProfileFile.h"

#include <cerrno>
#include <functional>
#include <string>
#include <vector>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

using ::testing::ElementsAre;

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
