#include "fakes/KarScore.h"
#include "fakes/SongLibrary.h"
#include "library/AggiungiFile.h"

#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace sonnel::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::IsSupersetOf;
using ::testing::StartsWith;

struct AggiungiFileTest : ::testing::Test, SongLibrary {
    /// A folder of everything that people keep beside their songs.
    AggiungiFileTest() {
        fs::create_directory(source / "sub");
        fs::create_directory_symlink(source.Path(), source / "sub/circle");
        mkfifo((source / "pipe.kar").c_str(), 0600);
        const std::string song = KarScore("track|10 \\One |12 /two ").Bytes();
        source.Write("a - b.kar", song);
        source.Write("sub/c.rmi", std::string("RIFF\x40\0\0\0RMIDdata", 16) +
                                      static_cast<char>(song.size()) + std::string(3, '\0') + song +
                                      "LISTmore");
        source.Write("d.midi", KarScore("track|10 note").Bytes());
        source.Write("e.kar", song);
        source.Write("f=g.kar", song);
        source.Write("h.lyk", "Cantabelle1.0\r\n*TIHa\r\n0001001x\r\n");
        source.Write("H.MID", song);
        source.Write("lone.lyk", "Cantabelle1.0\r\n");
        source.Write("notes.txt", "MThx");
        Index("[Songs]\r\n");
        directory.Write("E.MID", "taken");
    }
    [[nodiscard]] std::vector<std::string> Excluded(const EsitoAggiunta& outcome) const {
        std::vector<std::string> lines;
        for (const auto& [file, reason] : outcome.esclusi) {
            lines.push_back(file.lexically_relative(source.Path()).string() + ": " + reason);
        }
        return lines;
    }
    TempDirectory source;
};

TEST_F(AggiungiFileTest, TakesTheSongsOfAFolderAndReportsTheRest) {
    const EsitoAggiunta outcome =
        AggiungiFile(libreria, {source.Path(), source / "H.MID", "/nowhere"}, windows.Windows());
    EXPECT_THAT(Excluded(outcome),
                ElementsAre("d.midi: it has no words", "e.kar: the library has a song of this name",
                            "f=g.kar: its name holds \"=\"", "lone.lyk: its MID file is missing"));
    EXPECT_THAT(Table(), ElementsAre("a - b=b|a|?", "h=Ha||?", "c=c||?"));
    EXPECT_EQ(Riepilogo(outcome), "3 songs were added; 4 were not.");
    EXPECT_THAT(directory.Names(), ElementsAre("E.MID", "a - b.lyk", "a - b.mid", "c.lyk", "c.mid",
                                               "h.lyk", "h.mid", "sonnel.snl"));
    EXPECT_EQ(Content(directory / "c.mid"), Content(source / "a - b.kar"));
    EXPECT_THAT(Content(directory / "c.lyk"),
                EndsWith("*TIc\r\n0000001One $Etwo \r\n00010024\r\n000120210\r\n"));
    EXPECT_THAT(windows.log, IsSupersetOf({StartsWith("progress Looking"), StartsWith("list")}));

    const EsitoAggiunta again = AggiungiFile(libreria, {directory.Path()}, windows.Windows());
    EXPECT_EQ(Riepilogo(again), "0 songs were added; 3 of the library's own passed over.");
}

TEST_F(AggiungiFileTest, KeepsWhatWasAddedWhenTheUserCancels) {
    windows.onTurn = [this](int) { windows.cancelled = fs::exists(directory / "a - b.lyk"); };
    const EsitoAggiunta outcome = AggiungiFile(libreria, {source.Path()}, windows.Windows());
    EXPECT_EQ(Riepilogo(outcome), "One song was added, then you cancelled.");
    EXPECT_THAT(Table(), ElementsAre("a - b=b|a|?"));
    EXPECT_THAT(Index(), EndsWith("a - b=b|a|?\r\n"));
    EXPECT_EQ(windows.pointer, Pointer::Normal);
}

}  // namespace
}  // namespace sonnel::test
