#include "fakes/TempDirectory.h"
#include "song/LeggiIntestazione.h"

#include <cerrno>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

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
    const std::string mark = "\xEF\xBB\xBF";
    const std::vector<std::pair<std::string, std::string>> cases{
        {"", "||?"},
        {"First\r\n*TIRock & Roll\r\n*AU A \r\n*ALHits\r\n00100 1x\r\n", "Rock & Roll| A |Hits"},
        {"not a song\r*TIx\r", "x||?"},
        {"First\r\n*TIone\r\n*TItwo\r\n*AL\r\n", "two||"},
        {"First\r\n00100 1x\r\n*ALlate\r\n", "||?"},
        {"First\r\n10100 1x\r\n*TIlate\r\n", "late||?"},
        {"0\r\n*TIx\r\n", "||?"},
        {mark + "0\r\n*TIx\r\n", "||?"},
        {"x\n00100 1x\r\n*TIy\r\n", "y||?"},
        {"First\r\n*TIperch\xE9\r\n", "perch\u00E9||?"},
        {mark + "First\r\n*TI\u0416\r\n", "\u0416||?"}};
    for (const auto& [content, header] : cases) {
        const TempDirectory directory;
        directory.Write("song.lyk", content);
        EXPECT_EQ(Header(directory), header) << content;
    }
}

TEST(LeggiIntestazione, ReadsLongHeadersWholeButNotTheWholeFile) {
    const TempDirectory directory;
    for (std::size_t length = 4060; length < 4110; ++length) {
        directory.Write("song.lyk", "First\r\n;" + std::string(length, '0') +
                                        "\r\n*TItitle\r\n00100 1x\r\n*TIlate\r\n");
        // Nobody could hold this file in memory.
        std::filesystem::resize_file(directory / "song.lyk", std::uintmax_t{1} << 40U);
        EXPECT_EQ(Header(directory), "title||?") << length;
    }
}

TEST(LeggiIntestazione, FindsTheFileByItsNameOnlyOrTellsWhyNot) {
    const TempDirectory directory;
    std::filesystem::create_directory(directory / "inside");
    directory.Write("inside/song.lyk", "\r\n*TIinside");
    directory.Write("SONG.Lyk", "\r\n*TIa");
    directory.Write("[live] *?.lyk", "\r\n*TIb");
    EXPECT_EQ(Header(directory), "a||?");
    EXPECT_EQ(Header(directory, "[live] *?"), "b||?");
    EXPECT_EQ(Header(directory, "missing"), "error " + std::to_string(ENOENT));
    for (const std::string name : {"inside/song", "", ".."}) {
        EXPECT_EQ(Header(directory, name), "error " + std::to_string(EINVAL)) << name;
    }
    std::filesystem::create_symlink("/proc/self/mem", directory / "broken.lyk");
    EXPECT_THAT(LeggiIntestazione(directory.Path(), "broken").error().text,
                HasSubstr("broken.lyk: Input/output error"));
}

}  // namespace
}  // namespace sonnel::test
