#include "fakes/TempDirectory.h"
#include "library/RiscriviIntestazione.h"

#include <cerrno>
#include <functional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

const Intestazione Fields{"T", "A", "B"};
const std::string Before = "M\r\n*TIold\r\n00010 1page\r\n";

TEST(RiscriviIntestazione, WritesTheHeaderAndKeepsTheBody) {
    struct Case {
        std::string before;
        Intestazione fields;
        std::string after;
    };
    const std::string body = "0004001 one,$Etwo \x80\x81\xFF\n\r\n00060024 \r\n10000\r\n";
    const std::vector<Case> cases{
        {"M x\r*TI1\r*BYme\r\r;note\r*TIold\r00010 1p\r*AUlate\r;x\r00020 1q\r", Fields,
         "M x\r\n*TIT\r\n*BYme\r\n*TIT\r\n*AUA\r\n*ALB\r\n00010 1p\r\n*AUA\r\n00020 1q\r\n"},
        {body, {"a&|=\r\nd\u00E9", "\u20AC", ""}, "*TIa&|=  d\xE9\r\n*AU\x80\r\n*AL\r\n" + body},
        {"\xE9\r\n0\xE8\r\n",
         {"\u0416", "\u00E9", "?"},
         "\xEF\xBB\xBF\u00E9\r\n*TI\u0416\r\n*AU\u00E9\r\n*AL?\r\n0\u00E8\r\n"},
        {"\xEF\xBB\xBFM\r\n" + body,
         {"\u00E9", "", "?"},
         "\xEF\xBB\xBFM\r\n*TI\u00E9\r\n*AU\r\n*AL?\r\n" + body},
    };
    const auto kept = fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_read;
    for (const Case& c : cases) {
        const TempDirectory directory;
        fs::permissions(directory.Write("Song.LYK", c.before), kept);
        EXPECT_FALSE(RiscriviIntestazione(directory.Path(), "song", c.fields));
        EXPECT_EQ(Content(directory / "Song.LYK"), c.after);
        EXPECT_EQ(fs::status(directory / "Song.LYK").permissions(), kept);
        EXPECT_THAT(directory.Names(), ElementsAre("Song.LYK"));
    }
}

TEST(RiscriviIntestazione, LeavesTheSongWhenAStepFails) {
    struct Case {
        int number;
        std::function<void(const TempDirectory&)> arrange;
    };
    const std::vector<Case> cases{
        {ENOENT, [](const auto& d) { fs::remove(d / "song.lyk"); }},
        {EACCES, [](const auto& d) { fs::permissions(d / "song.lyk", fs::perms::owner_read); }},
        {ENOTEMPTY, [](const auto& d) { fs::create_directories(d / "sonnel.tmp" / "x"); }},
        {ENOTEMPTY, [](const auto& d) { fs::create_directories(d / "song.bak" / "x"); }},
    };
    for (const Case& c : cases) {
        const TempDirectory directory;
        directory.Write("song.lyk", Before);
        c.arrange(directory);
        const auto names = directory.Names();
        const std::string content = Content(directory / "song.lyk");
        const auto error = RiscriviIntestazione(directory.Path(), "song", Fields);
        ASSERT_TRUE(error);
        EXPECT_EQ(error->number, c.number);
        EXPECT_THAT(error->text, HasSubstr((directory / "song.lyk").string() + ": "));
        EXPECT_EQ(Content(directory / "song.lyk"), content);
        EXPECT_EQ(directory.Names(), names);
    }
}

}  // namespace
}  // namespace sonnel::test
