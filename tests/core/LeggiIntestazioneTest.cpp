#include "fakes/TempDirectory.h"
#include "song/LeggiIntestazione.h"

#include <cerrno>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

using ::testing::HasSubstr;

/// Title, author and album, separated by "|".
std::string Header(const TempDirectory& directory, std::string_view name = "song") {
    const Result<Intestazione> header = LeggiIntestazione(directory.Path(), name);
    return header ? header->Titolo + "|" + header->Autore + "|" + header->Album
                  : "error " + std::to_string(header.error().number);
}

TEST(LeggiIntestazione, ReadsUpToTheBody) {
    struct Case {
        std::string content;
        std::string header;
    };
    const std::vector<Case> cases{
        {"", "||?"},
        {"Cantabelle1.0\r\n*TIRock & Roll\r\n*AU A \r\n*ALHits\r\n00100 1x\r\n",
         "Rock & Roll| A |Hits"},
        {"not a song\r*TIx\r", "x||?"},
        {"*TIx", "x||?"},
        {"Cantabelle1.0\r\n*TIone\r\n*TItwo\r\n*AL\r\n", "two||"},
        {"Cantabelle1.0\r\n00100 1x\r\n*ALlate\r\n", "||?"},
        {"Cantabelle1.0\r\n10100 1x\r\n*TIlate\r\n", "late||?"},
        {"0\r\n*TIx\r\n", "||?"},
        {"\xEF\xBB\xBF"
         "0\r\n*TIx\r\n",
         "||?"},
        {"x\n00100 1x\r\n*TIy\r\n", "y||?"},
        {"Cantabelle1.0\r\n*TIperch\xE9\r\n", "perch\u00E9||?"},
        {"\xEF\xBB\xBF"
         "Cantabelle1.0\r\n*TI\u0416\r\n",
         "\u0416||?"},
    };
    for (const Case& c : cases) {
        const TempDirectory directory;
        directory.Write("song.lyk", c.content);
        EXPECT_EQ(Header(directory), c.header) << c.content;
    }
}

TEST(LeggiIntestazione, LongHeadersAreReadWhole) {
    const TempDirectory directory;
    for (std::size_t length = 4060; length < 4110; ++length) {
        directory.Write("song.lyk", "Cantabelle1.0\r\n;" + std::string(length, '0') +
                                        "\r\n*TItitle\r\n00100 1x\r\n*TIlate\r\n");
        EXPECT_EQ(Header(directory), "title||?") << length;
    }
}

TEST(LeggiIntestazione, DoesNotReadTheWholeFile) {
    const TempDirectory directory;
    directory.Write("song.lyk", "Cantabelle1.0\r\n*TItitle\r\n00100 1x\r\n");
    // Nobody could hold this file in memory.
    std::filesystem::resize_file(directory / "song.lyk", std::uintmax_t{1} << 40U);
    EXPECT_EQ(Header(directory), "title||?");
}

TEST(LeggiIntestazione, FindsTheFileByItsNameOnly) {
    const TempDirectory directory;
    std::filesystem::create_directory(directory / "inside");
    directory.Write("inside/song.lyk", "\r\n*TIinside");
    directory.Write("SONG.Lyk", "\r\n*TIa");
    directory.Write("[live] *?.lyk", "\r\n*TIb");
    EXPECT_EQ(Header(directory), "a||?");
    EXPECT_EQ(Header(directory, "[live] *?"), "b||?");
    for (const std::string name : {"inside/song", "../song", "", "..", "/song"}) {
        EXPECT_EQ(Header(directory, name), "error " + std::to_string(EINVAL)) << name;
    }
}

TEST(LeggiIntestazione, TellsWhyItFails) {
    const TempDirectory directory;
    EXPECT_EQ(Header(directory), "error " + std::to_string(ENOENT));
    std::filesystem::create_symlink("/proc/self/mem", directory / "broken.lyk");
    const Result<Intestazione> header = LeggiIntestazione(directory.Path(), "broken");
    EXPECT_EQ(header.error().number, EIO);
    EXPECT_THAT(header.error().text, HasSubstr("broken.lyk: Input/output error"));
}

}  // namespace
}  // namespace sonnel::test
