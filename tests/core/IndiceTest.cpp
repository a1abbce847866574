#include "fakes/TempDirectory.h"
#include "library/EliminaBrano.h"
#include "library/Indice.h"
#include "library/RiscriviIntestazione.h"
#include "song/LeggiIntestazione.h"

#include <cerrno>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

using ::testing::ElementsAre;
namespace fs = std::filesystem;
using ::testing::HasSubstr;

TEST(Indice, WritesSongsAndAlbums) {
    const TempDirectory directory;
    ProfileFile index(directory / "sonnel.snl");
    CreaIndice(index);
    ScriviBrano(index, "summer", "Summer", "The Singers", "Hits");
    ScriviBrano(index, "old", "Old Song", "", "?");
    ScriviBrano(index, "Summer", "Summer\nNights", "The Singers", "Hits");
    EXPECT_EQ(Content(index.Path()),
              "[Songs]\r\nsummer=Summer Nights|The Singers|Hits\r\nold=Old Song||?\r\n"
              "[Album]\r\n?=|\r\nHits=|\r\n");
}

TEST(Indice, SplitsASongsEntry) {
    const TempDirectory directory;
    directory.Write("Sonnel.SNL", "[SONGS]\r\na=AC|DC|Band|Hits\r\nc\r\ne=t|u\r\ng=" +
                                      std::string(9000, '\xE9') + "|u|v\r\n");
    EXPECT_TRUE(EsisteIndice(directory.Path().string()));
    const ProfileFile index(PercorsoIndice(directory.Path().string()));
    const std::vector<std::pair<std::string_view, std::string>> cases{
        {"A", "AC;DC;Band|Hits"}, {"c", ";;"}, {"missing", ";;"}, {"e", "t;u;"}};
    for (const auto& [name, fields] : cases) {
        const Intestazione song = LeggiBrano(index, name);
        EXPECT_EQ(song.Titolo + ";" + song.Autore + ";" + song.Album, fields);
    }
    EXPECT_EQ(LeggiBrano(index, "g").Titolo.size(), 2 * 8191U);  // in UTF-8
}

TEST(EliminaFileBrano, TakesTheFilesOfOneSongOnly) {
    using FileNames = std::set<std::string>;
    const FileNames files{"tune.lyk",   "tune.mid",  "tune.bak", "tune",     "tune.old.mid",
                          "Tune.lyk",   "Tune.mid",  "key.LYK",  "KEY.mid",  "[a]*.lyk",
                          "a.lyk",      "..lyk",     "lone.lyk", "LONE.lyk", "LONE.mid",
                          "sonnel.lyk", "sonnel.snl"};
    const std::map<std::string, FileNames> deletions{{"tune", {"tune.lyk", "tune.mid", "tune.bak"}},
                                                     {"kEy", {"key.LYK", "KEY.mid"}},
                                                     {"lone", {"lone.lyk"}},
                                                     {"[a]*", {"[a]*.lyk"}},
                                                     {"sonnel", {"sonnel.lyk"}},
                                                     {".", {}},
                                                     {"", {}}};
    for (const auto& [song, gone] : deletions) {
        const TempDirectory library;
        for (const std::string& file : files) {
            library.Write(file, "");
        }
        EliminaFileBrano(library.Path(), song);
        FileNames left = files;
        std::erase_if(left, [&gone = gone](const auto& name) { return gone.contains(name); });
        EXPECT_EQ(library.Names(), left) << song;
    }
    const TempDirectory outside;
    fs::create_directory(outside / "library");
    outside.Write("x.lyk", "");
    EliminaFileBrano(outside / "library", "../x");
    EXPECT_TRUE(fs::exists(outside / "x.lyk"));
}

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
        {"not a song\r*TIRock & Roll\r*AU A \r*TItwo\r*AL\r00100 1x\r*ALlate\r", "two| A |"},
        {"First\r\n10100 1x\r\n*TIlate\r\n", "late||?"},
        {mark + "0\r\n*TIx\r\n", "||?"},
        {"x\n00100 1x\r\n*TIperch\xE9\r\n", "perch\u00E9||?"},
        {mark + "First\r\n*TI\u0416\r\n", "\u0416||?"}};
    const TempDirectory directory;
    fs::create_directory(directory / "inside");
    directory.Write("inside/song.lyk", "");
    for (const auto& [content, header] : cases) {
        directory.Write("SONG.Lyk", content);
        EXPECT_EQ(Header(directory), header) << content;
    }
    EXPECT_EQ(Header(directory, "missing"), "error " + std::to_string(ENOENT));
    EXPECT_EQ(Header(directory, "inside/song"), "error " + std::to_string(EINVAL));
}

TEST(LeggiIntestazione, ReadsLongHeadersWholeButNotTheWholeFile) {
    const TempDirectory directory;
    for (std::size_t length = 4060; length < 4110; ++length) {
        directory.Write("song.lyk", "First\r\n;" + std::string(length, '0') +
                                        "\r\n*TItitle\r\n00100 1x\r\n*TIlate\r\n");
        // Nobody could hold this file in memory.
        fs::resize_file(directory / "song.lyk", std::uintmax_t{1} << 40U);
        EXPECT_EQ(Header(directory), "title||?") << length;
    }
}

TEST(RiscriviIntestazione, WritesTheHeaderAndKeepsTheBody) {
    const std::string body = "0004001 one,$Etwo \x80\x81\xFF\n\r\n00060024 \r\n10000\r\n";
    const std::vector<std::tuple<std::string, Intestazione, std::string>> cases{
        {"M x\r*TI1\r*BYme\r\r;note\r*TIold\r00010 1p\r*AUlate\r;x\r00020 1q\r",
         {"T", "A", "B"},
         "M x\r\n*TIT\r\n*BYme\r\n*TIT\r\n*AUA\r\n*ALB\r\n00010 1p\r\n*AUA\r\n00020 1q\r\n"},
        {body, {"a&|=\r\nd\u00E9", "\u20AC", ""}, "*TIa&|=  d\xE9\r\n*AU\x80\r\n*AL\r\n" + body},
        {"\xE9\r\n0\xE8\r\n",
         {"\u0416", "\u00E9", "?"},
         "\xEF\xBB\xBF\u00E9\r\n*TI\u0416\r\n*AU\u00E9\r\n*AL?\r\n0\u00E8\r\n"}};
    const auto kept = fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_read;
    for (const auto& [before, fields, after] : cases) {
        const TempDirectory directory;
        fs::permissions(directory.Write("Song.LYK", before), kept);
        EXPECT_FALSE(RiscriviIntestazione(directory.Path(), "song", fields));
        EXPECT_EQ(Content(directory / "Song.LYK"), after);
        EXPECT_EQ(fs::status(directory / "Song.LYK").permissions(), kept);
        EXPECT_THAT(directory.Names(), ElementsAre("Song.LYK"));
    }
}

TEST(RiscriviIntestazione, LeavesTheSongWhenAStepFails) {
    const std::vector<std::pair<int, std::function<void(const TempDirectory&)>>> cases{
        {EACCES, [](const auto& d) { fs::permissions(d / "song.lyk", fs::perms::owner_read); }},
        {ENOTEMPTY, [](const auto& d) { fs::create_directories(d / "sonnel.tmp" / "x"); }},
        {ENOTEMPTY, [](const auto& d) { fs::create_directories(d / "song.bak" / "x"); }}};
    for (const auto& [number, arrange] : cases) {
        const TempDirectory directory;
        directory.Write("song.lyk", "M\r\n*TIold\r\n");
        arrange(directory);
        const auto names = directory.Names();
        const auto error = RiscriviIntestazione(directory.Path(), "song", {"T", "A", "B"});
        ASSERT_TRUE(error);
        EXPECT_EQ(error->number, number);
        EXPECT_THAT(error->text, HasSubstr((directory / "song.lyk").string() + ": "));
        EXPECT_EQ(Content(directory / "song.lyk"), "M\r\n*TIold\r\n");
        EXPECT_EQ(directory.Names(), names);
    }
}

}  // namespace
}  // namespace sonnel::test
