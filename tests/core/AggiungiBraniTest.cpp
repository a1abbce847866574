#include "fakes/ScriptedDialog.h"
#include "fakes/SongLibrary.h"
#include "library/AggiungiBrani.h"

#include <chrono>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

struct AggiungiBraniTest : ::testing::Test, SongLibrary {
    /// The two files of a song in the other directory.
    void Source(const std::string& name) const {
        source.Write(name + ".lyk", "Cantabelle1.0\r\n*TIT\r\n*ALNew\r\n0001001x\r\n");
        source.Write(name + ".mid", "music of " + name);
    }
    void Import(const std::vector<fs::path>& files) {
        dialog.files.push_back(files);
        AggiungiBrani(libreria, dialog, windows);
        EXPECT_EQ(windows.pointer, Pointer::Normal);
    }
    TempDirectory source;
    ScriptedDialog dialog;
};

TEST_F(AggiungiBraniTest, CopiesAndIndexesTheSongs) {
    Source("b");
    Source("a");
    source.Write("c.LYK", "not a song");
    source.Write("C.Mid", "music");
    directory.Write("B.MID", "an orphan");
    const auto time = fs::file_time_type::clock::now() - std::chrono::hours(24 * 1000);
    fs::last_write_time(source / "a.mid", time);
    Import({source / "b.lyk", source / "a.lyk", source / "c.LYK"});
    EXPECT_THAT(Table(), ElementsAre("b=T||New", "a=T||New", "c=||?"));
    EXPECT_THAT(Index(), HasSubstr("[Album]\r\nNew=|\r\n"));
    EXPECT_EQ(Content(directory / "a.lyk"), Content(source / "a.lyk"));
    EXPECT_EQ(fs::last_write_time(directory / "a.mid"), time);
    EXPECT_EQ(Content(directory / "B.MID"), "music of b");
    EXPECT_THAT(windows.log, ElementsAre("busy", "list", "normal"));
    EXPECT_THAT(Messages(), ElementsAre(StartsWith("3 songs have been correctly imported.")));
}

TEST_F(AggiungiBraniTest, GoesOnAfterASongItCannotTake) {
    directory.Write("there.lyk", "M");
    for (const char* name : {"there", "a=b", "line\nend", "good"}) {
        Source(name);
    }
    source.Write("alone.lyk", "M");
    Import({source / "alone.lyk", source / "THERE.lyk", source / "a=b.lyk",
            source / "line\nend.lyk", source / "x", source / "good.lyk"});
    EXPECT_EQ(msgBox.shown[0].title, "alone");
    EXPECT_THAT(Messages(),
                ElementsAre(HasSubstr("MID file missing!"), HasSubstr("is already stored"),
                            HasSubstr("can't store"), HasSubstr("can't store"),
                            HasSubstr("MID file missing!"), StartsWith("One song has been")));
    EXPECT_THAT(Table(), ElementsAre("good=T||New"));
}

TEST_F(AggiungiBraniTest, RefusesTheLibraryItselfAndTooManyFiles) {
    directory.Write("song.lyk", "M");
    const fs::path path = directory.Path();
    fs::create_symlink(path, source / "link");
    std::string otherCase = path.string();
    otherCase[1] = 'T';
    for (const fs::path& spelling :
         {path, source / "link", path / ".." / path.filename(), fs::path(otherCase)}) {
        Import({spelling / "song.lyk"});
        EXPECT_THAT(Messages(), ElementsAre(StartsWith("You can't add a song from the same")))
            << spelling;
    }
    // The directory takes 192 characters and each name 100, with a NUL after it.
    std::vector<fs::path> files(80, "/" + std::string(190, 'd') + "/" + std::string(99, 'n'));
    Import(files);
    EXPECT_EQ(Messages().size(), 80U);  // all of them lack the music
    files.back() += "n";
    Import(files);
    EXPECT_THAT(Messages(), ElementsAre(HasSubstr("too many files!")));
    EXPECT_EQ(Content(directory / "song.lyk"), "M");
}

TEST_F(AggiungiBraniTest, AFailedCopyEndsTheImport) {
    for (const char* name : {"a", "big", "z"}) {
        Source(name);
    }
    fs::create_directory(directory / "big.mid");
    Import({source / "a.lyk", source / "big.lyk", source / "z.lyk"});
    const auto told = StartsWith("Can't write the file " + (directory / "big.mid").string() +
                                 ": Is a directory.\r\n\r\n");
    EXPECT_THAT(Messages(), ElementsAre(told, StartsWith("One song has been")));
    EXPECT_THAT(Table(), ElementsAre("a=T||New"));
    EXPECT_THAT(directory.Names(), ElementsAre("a.lyk", "a.mid", "big.mid", "sonnel.snl"));
}

}  // namespace
}  // namespace sonnel::test
