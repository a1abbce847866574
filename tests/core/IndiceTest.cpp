#include "fakes/TempDirectory.h"
#include "library/Indice.h"

#include <functional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

using ::testing::ElementsAre;
using Write = std::function<void(ProfileFile&)>;

TEST(Indice, WritesSongsAndAlbums) {
    struct Case {
        std::string before;
        Write write;
        std::string after;
    };
    const std::string created = "[Songs]\r\n[Album]\r\n?=|\r\n";
    const std::vector<Case> cases{
        {"", CreaIndice, created},
        {created,
         [](ProfileFile& i) {
             ScriviBrano(i, "summer", "Summer Nights", "The Singers", "Hits");
             ScriviBrano(i, "oldsong", "Old Song", "", "?");
         },
         "[Songs]\r\nsummer=Summer Nights|The Singers|Hits\r\noldsong=Old Song||?\r\n"
         "[Album]\r\n?=|\r\nHits=|\r\n"},
        {"[songs]\r\na=x\r\nb=y\r\n", [](ProfileFile& i) { ScriviBrano(i, "A", "t\n", "u", "?"); },
         "[songs]\r\na=t |u|?\r\nb=y\r\n"},
    };
    for (const Case& c : cases) {
        const TempDirectory directory;
        ProfileFile index(directory.Write("sonnel.snl", c.before));
        c.write(index);
        EXPECT_EQ(Content(index.Path()), c.after);
    }
}

TEST(Indice, SplitsASongsEntry) {
    const TempDirectory directory;
    directory.Write("Sonnel.SNL",
                    "[SONGS]\r\na=AC|DC|Band|Hits\r\nb=\r\nc\r\n"
                    "e=t|u\r\nf=||\r\ng=" +
                        std::string(9000, '\xE9') + "|u|v\r\n");
    const ProfileFile index(PercorsoIndice(directory.Path().string()));
    EXPECT_TRUE(EsisteIndice(directory.Path().string()));
    const auto entry = [&](std::string_view name) {
        const Intestazione song = LeggiBrano(index, name);
        return std::vector<std::string>{song.Titolo, song.Autore, song.Album};
    };
    EXPECT_THAT(entry("A"), ElementsAre("AC", "DC", "Band|Hits"));
    for (const char* name : {"b", "c", "f", "missing"}) {
        EXPECT_THAT(entry(name), ElementsAre("", "", "")) << name;
    }
    EXPECT_THAT(entry("e"), ElementsAre("t", "u", ""));
    EXPECT_EQ(entry("g")[0].size(), 2 * 8191U);  // in UTF-8
    EXPECT_EQ(LeggiIndice(index, "Songs", "x", "none"), "none");
    EXPECT_EQ(LeggiIndice(index, "Album", "", "none"), "");
}

}  // namespace
}  // namespace sonnel::test
