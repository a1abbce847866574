#include "fakes/DemoSong.h"
#include "fakes/ScriptedMsgBox.h"
#include "generator/Lyk.h"
#include "platform/Text.h"
#include "platform/midi/SmfReader.h"
#include "platform/midi/TempoMap.h"
#include "song/LeggiKaraoke.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

namespace sonnel::songs {
namespace {

using testing::ElementsAre;

TEST(ScoreTest, ABrokenScoreIsRefusedWithTheLineToMend) {
    const std::string good = *ReadFile(test::DemoScores().front());
    for (const auto& [added, message] :
         {std::pair("autor X\n", "line 1: \"autor\" is unknown"),
          {"time 3/5\n", "line 1: \"3/5\" is not a time signature"}}) {
        try {
            (void)ReadScore(added + good);
            ADD_FAILURE() << "the score was taken: " << added;
        } catch (const ScoreError& error) {
            EXPECT_THAT(error.what(), testing::StartsWith(message));
        }
    }
}

/// A demo song, its music and its words read as the player reads them.
class DemoSongTest : public testing::TestWithParam<std::filesystem::path> {
  protected:
    const test::DemoSong demo{GetParam()};
    const SmfFile midi = *ReadSmf(demo.midi);
    Timeline words;
};

/// What a sequencer would stumble over in a track, or "".
std::string FaultIn(const SmfTrack& track) {
    std::set<std::pair<int, int>> sounding;
    for (const SmfEvent& event : track) {
        const std::pair<int, int> key{event.status & 0x0F, event.data1};
        if ((event.status & 0xF0) == 0x90 && !sounding.insert(key).second) {
            return "struck while sounding at " + std::to_string(event.tick);
        }
        if ((event.status & 0xF0) == 0x80 && sounding.erase(key) == 0) {
            return "released without sounding at " + std::to_string(event.tick);
        }
    }
    return sounding.empty() ? "" : "hanging notes";
}

TEST_P(DemoSongTest, MidiIsSound) {
    EXPECT_FALSE(midi.damaged);
    for (const SmfTrack& track : midi.tracks) {
        EXPECT_EQ(FaultIn(track), "");
    }
}

TEST_P(DemoSongTest, WordsAreColouredWithTheirNotes) {
    test::ScriptedMsgBox msgBox;
    InformazioniBrano info;
    ASSERT_EQ(LeggiRighe(WriteLyk(demo.score, demo.song), true, words, info, msgBox),
              EsitoLettura::Completa);
    const TempoMap tempos(midi);
    auto note = midi.tracks.at(1).begin();
    const auto sungAt = [&](std::int32_t ms) {
        note = std::find_if(note, midi.tracks[1].end(), [&](const SmfEvent& event) {
            return (event.status & 0xF0) == 0x90 && tempos.Milliseconds(event.tick) >= ms - 51;
        });
        return note != midi.tracks[1].end() && tempos.Milliseconds((note++)->tick) <= ms + 51;
    };
    std::size_t count = 0;
    std::size_t length = 0;
    for (std::int16_t i = 1; i <= words.NumEventi(); ++i) {
        const Evento& event = words.Eventi(i);
        if (event.Tipo == TipoEvento::Pagina) {
            EXPECT_EQ(count, length) << "a page is left unsung at " << event.Tempo;
            length = CodePoints(event.Testo);
            count = 0;
        } else {
            count = std::stoul(event.Testo);
            EXPECT_TRUE(sungAt(100 * event.Tempo)) << event.Tempo;
        }
    }
    EXPECT_EQ(count, length);
    EXPECT_GT(words.NumEventi(), 80);
}

/// What the tracks from `first` on tell a synthesiser, and when in milliseconds.
std::pair<std::vector<int>, std::vector<int>> Heard(const SmfFile& file, std::size_t first) {
    const TempoMap tempos(file);
    std::pair<std::vector<int>, std::vector<int>> heard;
    for (std::size_t track = first; track < file.tracks.size(); ++track) {
        for (const SmfEvent& event : file.tracks[track]) {
            heard.first.push_back(event.status << 16 | event.data1 << 8 | event.data2);
            heard.second.push_back(tempos.Milliseconds(event.tick));
        }
    }
    return heard;
}

// One tempo for the converter's sake, and yet to the ear the same song.
TEST_P(DemoSongTest, TheKarSoundsLikeTheMidi) {
    const auto kar = Heard(*ReadSmf(WriteKar(demo.score, demo.song)), 3);
    const auto expected = Heard(midi, 1);
    EXPECT_EQ(kar.first, expected.first);
    EXPECT_THAT(kar.second, testing::Pointwise(testing::DoubleNear(1), expected.second));
}

INSTANTIATE_TEST_SUITE_P(Songs, DemoSongTest, testing::ValuesIn(test::DemoScores()),
                         test::TestName);

TEST(LykTest, TheIndexListsSongsInOrderAndEveryAlbumOnce) {
    EXPECT_EQ(WriteIndex({{"beta", "B", "Traditional", "Hits"},
                          {"Alpha", "A", "Traditional", "?"},
                          {"Gamma", "C", "", "Hits"}}),
              "[Songs]\r\nAlpha=A|Traditional|?\r\nbeta=B|Traditional|Hits\r\nGamma=C||Hits\r\n"
              "[Album]\r\n?=|\r\nHits=|\r\n");
}

// What a band would hear: tempo by tempo, and a chord that changes under a held pattern.
TEST(ArrangerTest, SlowsDownAndFollowsTheChords) {
    const Arrangement song = Arrange(ReadScore(
        "title T\nauthor A\ntempo 120\n[tracks]\nflute tune\npad chords low 60\nbass bass\n"
        "[style s]\npad x---\nbass R--8\n[section a]\nchords C F/A\ntune c1\n"
        "[play]\na style=s\na style=s slow=60 shift=2\na style=s\n"));
    EXPECT_NEAR(song.Milliseconds(song.endTick), 2000 + 571.4 + 666.7 + 800 + 1000 + 2000, 1);
    std::map<int, std::multiset<int>> struck;  // by the tick, by all but the tune
    for (std::size_t track = 1; track < song.tracks.size(); ++track) {
        for (const MidiEvent& event : song.tracks[track].events) {
            if (event.rank == Rank::NoteOn) {
                struck[event.tick].insert(event.bytes[1]);
            }
        }
    }
    EXPECT_THAT(struck[0], ElementsAre(36, 60, 64, 67));
    EXPECT_THAT(struck[960], ElementsAre(33, 60, 65, 69));
    EXPECT_THAT(struck[1440], ElementsAre(45));
    EXPECT_THAT(struck[1920], ElementsAre(38, 62, 66, 69));
}

}  // namespace
}  // namespace sonnel::songs
