#include "fakes/TempDirectory.h"
#include "platform/files/Files.h"

#include <cerrno>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace sonnel::test {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

TEST(FindFile, TakesTheRegularFileOfTheNearestName) {
    struct Case {
        std::vector<std::string> present;
        std::string asked;
        std::string found;  ///< "" when nothing is
    };
    const std::vector<Case> cases{
        {{"Song.Lyk"}, "Song.LYK", "Song.Lyk"},
        {{"SONG.Lyk", "Song.lyK"}, "Song.LYK", "Song.lyK"},
        {{"song.lyk", "SONG.lyk"}, "Song.LYK", "SONG.lyk"},
        {{"PERCH\u00C9.MID"}, "perch\u00E9.mid", "PERCH\u00C9.MID"},
        {{"Song.lyk.bak", "Song2.lyk"}, "Song.LYK", ""},
        {{"song.lyk"}, "song.lyk\0x"s, ""},
    };
    for (const Case& c : cases) {
        const TempDirectory directory;
        fs::create_directory(directory / "Song.LYK");
        fs::create_symlink("nowhere", directory / "SONG.LYK");
        for (const std::string& name : c.present) {
            directory.Write(name, "x");
        }
        const auto found = FindFile(directory / c.asked);
        EXPECT_EQ(found ? found->filename().string() : "", c.found) << c.asked;
    }
}

TEST(Files, PlainNamesStayInTheirDirectory) {
    EXPECT_TRUE(IsPlainName("...[live] *?"));
    for (const std::string& name : {""s, ".."s, "."s, "../x"s, "a\0b"s}) {
        EXPECT_FALSE(IsPlainName(name)) << name;
    }
}

TEST(ReadFile, ReadsEveryByteOrTellsWhyNot) {
    const TempDirectory directory;
    std::string content(200'001, 'x');
    content[65'536] = '\0';
    EXPECT_EQ(Content(directory.Write("long", content)), content);
    ASSERT_EQ(mkfifo((directory / "pipe").c_str(), 0600), 0);
    const std::vector<std::pair<fs::path, int>> cases{{directory / "missing", ENOENT},
                                                      {directory.Path(), EISDIR},
                                                      {directory / "pipe", EINVAL},
                                                      {"/proc/self/mem", EIO}};
    for (const auto& [path, number] : cases) {
        const Error error = ReadFile(path).error();
        EXPECT_EQ(error.number, number) << path;
        EXPECT_EQ(error.text, std::generic_category().message(number));
    }
}

TEST(WriteFileAtomically, ReplacesAFileAndTheTargetOfALinkWithTheirPermissions) {
    const TempDirectory directory;
    const std::string content("a\0b\r\n", 5);
    fs::create_directory(directory / "real");
    fs::create_symlink("real/song", directory / "link");
    fs::create_symlink(directory / "link", directory / "linklink");
    EXPECT_FALSE(WriteFileAtomically(directory / "real/song", content));
    EXPECT_EQ(Content(directory / "real/song"), content);

    const auto kept = fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_read;
    fs::permissions(directory / "real/song", kept);
    EXPECT_FALSE(WriteFileAtomically(directory / "linklink", "new"));
    EXPECT_EQ(Content(directory / "real/song"), "new");
    EXPECT_EQ(fs::status(directory / "real/song").permissions(), kept);
    EXPECT_TRUE(fs::is_symlink(directory / "linklink"));
    EXPECT_THAT(directory.Names(), ElementsAre("link", "linklink", "real"));
}

TEST(WriteFileAtomically, LeavesTheOldFileWhenItFails) {
    const TempDirectory directory;
    directory.Write("song", "old");
    fs::permissions(directory / "song", fs::perms::owner_read);
    fs::create_directory(directory / "folder");
    fs::create_symlink("loop", directory / "loop");
    const std::vector<std::pair<std::string, int>> cases{{"song", EACCES},
                                                         {"folder", EISDIR},
                                                         {"missing/song", ENOENT},
                                                         {"song/x", ENOTDIR},
                                                         {"loop", ELOOP}};
    for (const auto& [name, number] : cases) {
        const auto error = WriteFileAtomically(directory / name, "new");
        ASSERT_TRUE(error) << name;
        EXPECT_EQ(error->number, number) << name;
        EXPECT_THAT(error->text, AllOf(HasSubstr((directory / name).string()),
                                       HasSubstr(std::generic_category().message(number))));
    }
    EXPECT_EQ(Content(directory / "song"), "old");
    EXPECT_THAT(directory.Names(), ElementsAre("folder", "loop", "song"));
}

}  // namespace
}  // namespace sonnel::test
