#include "fakes/TempDirectory.h"
#include "platform/Numbers.h"
#include "platform/Text.h"
#include "platform/files/Files.h"
#include "platform/files/ProfileFile.h"

#include <cerrno>
#include <cmath>
#include <cstdint>
#include <functional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

namespace sonnel::test {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

TEST(FindFile, TakesTheRegularFileOfTheNearestName) {
    // What is there, what is asked for, and what is found.
    const std::vector<std::tuple<std::vector<std::string>, std::string, std::string>> cases{
        {{"Song.Lyk"}, "Song.LYK", "Song.Lyk"},
        {{"SONG.Lyk", "Song.lyK"}, "Song.LYK", "Song.lyK"},
        {{"song.lyk", "SONG.lyk"}, "Song.LYK", "SONG.lyk"},
        {{"PERCH\u00C9.MID"}, "perch\u00E9.mid", "PERCH\u00C9.MID"},
        {{"Song.lyk.bak", "Song2.lyk"}, "Song.LYK", ""},
        {{"song.lyk"}, "song.lyk\0x"s, ""},
    };
    for (const auto& [present, asked, expected] : cases) {
        const TempDirectory directory;
        fs::create_directory(directory / "Song.LYK");
        fs::create_symlink("nowhere", directory / "SONG.LYK");
        for (const std::string& name : present) {
            directory.Write(name, "x");
        }
        const auto found = FindFile(directory / asked);
        EXPECT_EQ(found ? found->filename().string() : "", expected) << asked;
    }
}

TEST(WriteFileAtomically, ReplacesAFileAndTheTargetOfALinkWithTheirPermissions) {
    const TempDirectory directory;
    std::string content(200'001, 'x');
    content[65'536] = '\0';
    EXPECT_EQ(Content(directory.Write("long", content)), content);
    fs::create_directory(directory / "real");
    fs::create_symlink("real/song", directory / "link");
    fs::create_symlink(directory / "link", directory / "linklink");
    EXPECT_FALSE(WriteFileAtomically(directory / "real/song", content));
    EXPECT_EQ(Content(directory / "real/song"), content);

    const auto kept = fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_read;
    fs::permissions(directory / "real/song", kept);
    const uid_t user = geteuid() == 0 ? 12345 : geteuid();  // root may give it away
    ASSERT_EQ(chown((directory / "real/song").c_str(), user, static_cast<gid_t>(-1)), 0);
    EXPECT_FALSE(WriteFileAtomically(directory / "linklink", "new"));
    EXPECT_EQ(Content(directory / "real/song"), "new");
    EXPECT_EQ(fs::status(directory / "real/song").permissions(), kept);
    struct stat status {};
    ASSERT_EQ(stat((directory / "real/song").c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, user);
    EXPECT_TRUE(fs::is_symlink(directory / "linklink"));
    EXPECT_THAT(directory.Names(), ElementsAre("link", "linklink", "long", "real"));
}

TEST(WriteFileAtomically, LeavesTheOldFileWhenItFails) {
    const TempDirectory directory;
    directory.Write("song", "old");
    fs::permissions(directory / "song", fs::perms::owner_read);
    fs::create_directory(directory / "folder");
    fs::create_symlink("loop", directory / "loop");
    const std::vector<std::pair<std::string, int>> cases{
        {"song", EACCES}, {"folder", EISDIR}, {"missing/song", ENOENT}, {"loop", ELOOP}};
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

TEST(Text, CountsAndCutsByCodePoints) {
    const std::vector<std::tuple<std::string, std::size_t, std::string>> cases{
        {"\u00E8\u20AC\U0001F3A4!", 4, "\u00E8\u20AC"},
        {"\xC3(x", 3, "\xC3("},           // a lead byte without its tail
        {"\xE2\x82", 2, "\xE2\x82"},      // cut short
        {"\xE0\x80\xAF", 3, "\xE0\x80"},  // overlong
        {"\xED\xA0\x80", 3, "\xED\xA0"},  // surrogate
        {"\xF4\x90\x80\x80", 4, "\xF4\x90"}};
    for (const auto& [text, characters, firstTwo] : cases) {
        EXPECT_EQ(CodePoints(text), characters) << text;
        EXPECT_EQ(FirstCodePoints(text, 2), firstTwo) << text;
    }
}

TEST(Text, EveryByteOfAFileSurvives) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    EXPECT_EQ(EncodeFileText(DecodeFileText(bytes)), bytes);
    EXPECT_EQ(DecodeFileText("\x80 \x93perch\xE9\x94 \x81"),
              "\u20AC \u201Cperch\u00E9\u201D \u0081");
    // What the code page lacks is written as UTF-8.
    for (const std::string text :
         {"\u0416\u0438\u0437\u043D\u044C", "\u0080", "a\xFFz", "\u00EF\u00BB\u00BFseems marked"}) {
        EXPECT_EQ(EncodeFileText(text), "\xEF\xBB\xBF" + text);
        EXPECT_EQ(DecodeFileText("\xEF\xBB\xBF" + text), text);
    }
}

TEST(Text, FoldsCaseByCodePoint) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"AZaz@[`{", "azaz@[`{"},
        {"\u00C8 PI\u00D9 \u0141\u00D3D\u0179", "\u00E8 pi\u00F9 \u0142\u00F3d\u017A"},
        {"\u0391\u0386\u03A3 \u0401\u0416\u042F", "\u03B1\u03AC\u03C3 \u0451\u0436\u044F"},
        {"\u00D7\u00F7\u00DF", "\u00D7\u00F7\u00DF"},
        {"\u212Aey", "key"},
        {"\xC3X\xFF", "\xC3x\xFF"}};
    for (const auto& [text, folded] : cases) {
        EXPECT_EQ(FoldCase(text), folded);
        EXPECT_TRUE(FoldedEqual()(text, folded)) << text;
        EXPECT_EQ(FoldedHash()(text), FoldedHash()(folded)) << text;
    }
    EXPECT_EQ(FoldForSearch("Citt\u00E0 STRA\u00DFE \u2460"), "citta strasse 1");
    EXPECT_EQ(FoldForSearch("\u0130a\u0301 \xFFX"), FoldCase("\u0130a\u0301 \xFFX")) << "not UTF-8";
}

TEST(Numbers, AreReadAndRoundedIntoTheirRange) {
    const std::vector<std::pair<std::string, std::int16_t>> cases{
        {"", 0},  {"00150", 150}, {" \t 1", 1}, {"2.7", 3}, {"2.5", 2},       {"-.6", -1},
        {".", 0}, {"-4x", -4},    {"+7", 7},    {"+-7", 0}, {"40000", 32767}, {"-40000", -32768}};
    for (const auto& [text, number] : cases) {
        EXPECT_EQ(ReadInteger<std::int16_t>(text), number) << text;
    }
    const std::vector<std::pair<double, std::int16_t>> halves{
        {0.5, 0},          {1.5, 2},      {-1.5, -2},     {10.6, 11},
        {std::nan(""), 0}, {1e12, 32767}, {-1e12, -32768}};
    for (const auto& [value, rounded] : halves) {
        EXPECT_EQ(RoundHalfEven<std::int16_t>(value), rounded) << value;
    }
}

TEST(ProfileFile, FindsKeysAndValues) {
    // The file, the keys of "s", and the value of "k" in it.
    const std::vector<std::tuple<std::string, std::vector<std::string>, std::string>> cases{
        {"[s]\r\nK= \"a=b\" \r\n", {"K"}, " \"a=b\" "},
        {"[s]\r\nb=\r\n[t]\r\nk=1\r\n[s]\r\nk=2\r\n", {"b", "k"}, "2"},
        {"[s]\r\nk\r\n\r\n=x\r\n; a remark\r\n;song=x\r\n", {"k", ";song"}, ""},
        {"[s]\r\n[live] tune=x\r\n[x]y]\r\n[u=]\r\nk=v\n[t]\r\n",
         {"[live] tune", "[x]y]", "[u", "k"},
         "v\n[t]"},
        {"\xEF\xBB\xBF[s]\r\nk=\u0416\r\n", {"k"}, "\u0416"},
    };
    for (const auto& [content, keys, value] : cases) {
        const TempDirectory directory;
        const ProfileFile file(directory.Write("p", content));
        EXPECT_EQ(file.Keys("S"), keys) << content;
        EXPECT_EQ(file.Read("s", "k", "none"), value) << content;
    }
}

TEST(ProfileFile, WritesOneKeyAtATime) {
    using Write = std::function<void(ProfileFile&)>;
    const auto set = [](const char* section, const char* key, const char* value) {
        return [=](ProfileFile& f) { EXPECT_FALSE(f.Set(section, key, value)); };
    };
    const std::vector<std::tuple<std::string, Write, std::string>> cases{
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
    for (const auto& [before, write, after] : cases) {
        const TempDirectory directory;
        ProfileFile file(directory.Write("p", before));
        write(file);
        EXPECT_EQ(Content(file.Path()), after);
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
