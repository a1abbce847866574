#include "fakes/TempDirectory.h"
#include "platform/Files.h"

#include <cerrno>
#include <csignal>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace sonnel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

TEST(FindFile, TakesTheNearestName) {
    struct Case {
        std::vector<std::string> present;
        std::string asked;
        std::string found;  ///< "" when nothing is
    };
    const std::vector<Case> cases{
        {{"Song.LYK", "Song.lyk"}, "Song.LYK", "Song.LYK"},
        {{"Song.lyk"}, "Song.LYK", "Song.lyk"},
        {{"Song.Lyk"}, "Song.LYK", "Song.Lyk"},
        {{"SONG.LYK", "Song.lyK"}, "Song.LYK", "Song.lyK"},
        {{"song.lyk", "SONG.lyk"}, "Song.LYK", "SONG.lyk"},
        {{"PERCH\u00C9.MID"}, "perch\u00E9.mid", "PERCH\u00C9.MID"},
        {{"caf\xE9.lyk", "caf\xE8.lyk"}, "Caf\xE9.LYK", "caf\xE9.lyk"},
        {{"a.b.mid"}, "A.B.MID", "a.b.mid"},
        {{"Song.lyk.bak", "Song2.lyk"}, "Song.LYK", ""},
    };
    for (const Case& c : cases) {
        const TempDirectory directory;
        for (const std::string& name : c.present) {
            directory.Write(name, "x");
        }
        const auto found = FindFile(directory / c.asked);
        EXPECT_EQ(found ? found->filename().string() : "", c.found) << c.asked;
    }
}

TEST(FindFile, FindsOnlyRegularFiles) {
    const TempDirectory directory;
    fs::create_directory(directory / "Song.LYK");
    EXPECT_EQ(FindFile(directory / "Song.LYK"), std::nullopt);
    directory.Write("song.lyk", "x");
    EXPECT_EQ(FindFile(directory / "Song.LYK"), directory / "song.lyk");
    fs::create_symlink("nowhere", directory / "Gone.LYK");
    EXPECT_EQ(FindFile(directory / "Gone.LYK"), std::nullopt);
    EXPECT_EQ(FindFile(directory / "missing" / "Song.LYK"), std::nullopt);
    EXPECT_EQ(FindFile(directory / std::string("song.lyk\0x", 10)), std::nullopt);
}

TEST(FindFile, IsNotStoppedByADirectoryThatCannotBeListed) {
    EXPECT_EQ(FindFile("/proc/self/fdinfo/../mem/Song.LYK"), std::nullopt);
    EXPECT_EQ(FindFile(fs::path(std::string(5000, 'x')) / "Song.LYK"), std::nullopt);
}

TEST(Files, PlainNamesStayInTheirDirectory) {
    for (const char* name : {"Song", "a..b", "...", "[live] *?", "AC-DC "}) {
        EXPECT_TRUE(IsPlainName(name)) << name;
    }
    for (const std::string& name :
         {std::string(), std::string(".."), std::string("."), std::string("../x"),
          std::string("/etc/x"), std::string("a\0b", 3)}) {
        EXPECT_FALSE(IsPlainName(name)) << name;
    }
}

TEST(ReadFile, TellsWhyItFails) {
    const TempDirectory directory;
    ASSERT_EQ(mkfifo((directory / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(ReadFile(directory / "missing").error().number, ENOENT);
    EXPECT_EQ(ReadFile(directory.Path()).error().number, EISDIR);
    EXPECT_EQ(ReadFile(directory / "pipe").error().number, EINVAL);
    EXPECT_EQ(ReadFile("/dev/zero").error().number, EINVAL);
    EXPECT_EQ(ReadFile(directory / std::string(300, 'x')).error().number, ENAMETOOLONG);
    EXPECT_EQ(ReadFile("/proc/self/mem").error().number, EIO);
    EXPECT_EQ(ReadFile(directory / "missing").error().text, "No such file or directory");
}

TEST(ReadFile, ReadsEveryByte) {
    const TempDirectory directory;
    std::string content(200'001, 'x');
    content[65'536] = '\0';
    EXPECT_EQ(Content(directory.Write("long", content)), content);
    EXPECT_EQ(Content(directory.Write("empty", "")), "");
}

fs::perms Permissions(const fs::path& path) {
    return fs::status(path).permissions();
}

TEST(WriteFileAtomically, MakesAndReplacesAFile) {
    const TempDirectory directory;
    const std::string content("a\0b\r\n", 5);
    EXPECT_FALSE(WriteFileAtomically(directory / "new", content));
    EXPECT_EQ(Content(directory / "new"), content);

    const auto kept = fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_read;
    fs::permissions(directory / "new", kept);
    EXPECT_FALSE(WriteFileAtomically(directory / "new", "second"));
    EXPECT_EQ(Content(directory / "new"), "second");
    EXPECT_EQ(Permissions(directory / "new"), kept);
    EXPECT_THAT(directory.Names(), ElementsAre("new"));
}

TEST(WriteFileAtomically, WritesTheTargetOfALink) {
    const TempDirectory directory;
    fs::create_directory(directory / "real");
    directory.Write("real/song", "old");
    fs::create_symlink("real/song", directory / "link");
    fs::create_symlink(directory / "link", directory / "linklink");
    EXPECT_FALSE(WriteFileAtomically(directory / "linklink", "new"));
    EXPECT_EQ(Content(directory / "real/song"), "new");
    EXPECT_TRUE(fs::is_symlink(directory / "link"));
    EXPECT_TRUE(fs::is_symlink(directory / "linklink"));

    fs::create_symlink("loop", directory / "loop");
    EXPECT_EQ(WriteFileAtomically(directory / "loop", "x")->number, ELOOP);
}

TEST(WriteFileAtomically, LeavesTheOldFileWhenItFails) {
    const TempDirectory directory;
    directory.Write("song", "old");
    fs::permissions(directory / "song", fs::perms::owner_read);
    fs::create_directory(directory / "folder");
    for (const auto& [name, number] : std::vector<std::pair<std::string, int>>{
             {"song", EACCES}, {"folder", EISDIR}, {"missing/song", ENOENT}, {"song/x", ENOTDIR}}) {
        const auto error = WriteFileAtomically(directory / name, "new");
        ASSERT_TRUE(error) << name;
        EXPECT_EQ(error->number, number) << name;
        EXPECT_THAT(error->text, AllOf(HasSubstr((directory / name).string()),
                                       HasSubstr(std::generic_category().message(number))));
    }
    EXPECT_EQ(Content(directory / "song"), "old");
    EXPECT_THAT(directory.Names(), ElementsAre("folder", "song"));
}

/// Files of this process grow to so many bytes only, as on a disk that is nearly full.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limited{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limited);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &before_);
        (void)std::signal(SIGXFSZ, handler_);
    }

  private:
    void (*handler_)(int);
    rlimit before_{};
};

TEST(WriteFileAtomically, LeavesTheOldFileWhenTheDiskIsFull) {
    const TempDirectory directory;
    directory.Write("song", "old");
    for (const std::size_t size : {std::size_t{1000}, std::size_t{1'000'000}}) {
        const FileSizeLimit limit(500);
        EXPECT_EQ(WriteFileAtomically(directory / "song", std::string(size, 'x'))->number, EFBIG);
    }
    EXPECT_EQ(Content(directory / "song"), "old");
    EXPECT_THAT(directory.Names(), ElementsAre("song"));
}

}  // namespace
}  // namespace sonnel::test
