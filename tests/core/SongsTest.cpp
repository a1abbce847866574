#include "fakes/DemoSong.h"
#include "fakes/ScriptedMsgBox.h"
#include "generator/Lyk.h"
#include "platform/Text.h"
#include "platform/midi/SmfReader.h"
#include "platform/midi/TempoMap.h"
#include "song/LeggiKaraoke.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

namespace sonnel::songs {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

constexpr std::string_view SmallScore = R"(title Small
author Traditional
time 3/4
[tracks]
flute tune program 74
piano chords
[style plain]
piano x.-
[section intro]
chords C
[section verse]
pickup 4
chords C | F G7 . | C/E |
tune c4 | d4 e f | g4. a8 b4 | c'2 r4 |
[words 1]
One two-_
three four five six seven
[play]
intro style=plain
verse style=plain words=1
)";

TEST(ScoreTest, ABrokenScoreIsRefusedWithTheLineToMend) {
    const Arrangement song = Arrange(ReadScore(SmallScore));
    ASSERT_EQ(song.pages.size(), 1U);
    EXPECT_EQ(song.pages[0][0][0].tick, 2 * TicksPerQuarter) << "the pickup is in the bar before";
    EXPECT_EQ(song.pages[0][1][0].tick, 5 * TicksPerQuarter) << "the melisma took a note";
    struct Case {
        std::string_view from;
        std::string_view to;
        std::string_view message;
    };
    const std::vector<Case> cases{
        {"d4 e f |", "d4 e f8. g |",
         "line 14: bar 1 of the tune lasts 3.5 quarter notes instead of 3"},
        {"d4 e f |", "d4 e |", "line 14: bar 1 of the tune lasts 2 "},
        {"pickup 4", "pickup 2", "line 14: bar 0 of the tune lasts 1 "},
        {"c'2 r4 |", "", "line 14: the tune has 2 bars, the chords 3"},
        {"d4 e f |", "d4 h f |", "line 14: \"h\" is not a note"},
        {"d4 e f |", "d5 e f |", "line 14: \"5\" is not a duration"},
        {"d4 e f |", "d4~ e f |", "line 14: a tie joins"},
        {"F G7", "F G13", "line 13: \"G13\" is not a chord"},
        {"C/E", "C/", "line 13: \"C/\" is not a chord"},
        {"F G7 .", "F G7 . . . . .", "line 13: a bar of chords"},
        {"x.-", "x.?", "line 8: \"x.?\" is not a bar of piano"},
        {"piano x", "horn x", "line 8: no track or drum \"horn\""},
        {"two-_\n", "two-_ ", "line 16: a page has two or three lines, not 1"},
        {" seven", "", "line 15: these words have 7 syllables, the tune of verse has 8 notes"},
        {"intro style=plain\n", "", "line 19: there is no room for the pickup"},
        {"verse style", "verse stile", "line 20: \"stile\""},
        {"verse style=plain", "verse style=odd", "line 20: there is no style"},
        {"3/4", "3/5", "line 3: \"3/5\" is not a time signature"},
        {"author", "autor", "line 2: \"autor\" is unknown"},
        {"program 74", "program 200", "line 5: \"200\" is not a number"},
    };
    for (const Case& c : cases) {
        std::string text(SmallScore);
        text.replace(text.find(c.from), c.from.size(), c.to);
        try {
            (void)ReadScore(text);
            ADD_FAILURE() << "the score was taken: " << c.message;
        } catch (const ScoreError& error) {
            EXPECT_THAT(error.what(), StartsWith(c.message));
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
    EXPECT_EQ(midi.tracks.size(), demo.score.tracks.size() + 1);
    for (const SmfTrack& track : midi.tracks) {
        EXPECT_EQ(FaultIn(track), "");
    }
    EXPECT_EQ(demo.midi, test::DemoSong(GetParam()).midi) << "not twice the same";
}

TEST_P(DemoSongTest, WordsAreColouredWithTheirNotes) {
    test::ScriptedMsgBox msgBox;
    InformazioniBrano info;
    ASSERT_EQ(LeggiRighe(WriteLyk(demo.score, demo.song), true, words, info, msgBox),
              EsitoLettura::Completa);
    EXPECT_TRUE(msgBox.shown.empty());
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

/// What a synthesiser is told by the instruments, which begin with track `first`, and when.
std::pair<std::vector<std::string>, std::vector<int>> Heard(const SmfFile& file,
                                                            std::size_t first) {
    const TempoMap tempos(file);
    std::pair<std::vector<std::string>, std::vector<int>> heard;
    for (std::size_t track = first; track < file.tracks.size(); ++track) {
        for (const SmfEvent& event : file.tracks[track]) {
            heard.first.push_back({static_cast<char>(event.status), static_cast<char>(event.data1),
                                   static_cast<char>(event.data2)});
            heard.second.push_back(tempos.Milliseconds(event.tick));
        }
    }
    return heard;
}

// One tempo for the converter's sake, and yet to the ear the same song.
TEST_P(DemoSongTest, TheKarSoundsLikeTheMidi) {
    const SmfFile kar = *ReadSmf(WriteKar(demo.score, demo.song));
    EXPECT_EQ(std::count_if(kar.tracks[0].begin(), kar.tracks[0].end(),
                            [](const SmfEvent& event) { return event.IsMeta(kMetaTempo); }),
              1);
    const auto [messages, times] = Heard(kar, 3);
    const auto expected = Heard(midi, 1);
    EXPECT_EQ(messages, expected.first);
    EXPECT_THAT(times, testing::Pointwise(testing::DoubleNear(1), expected.second));
    for (const SmfTrack& track : kar.tracks) {
        EXPECT_EQ(FaultIn(track), "");
    }
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

/// The keys struck at a tick by any of the tracks but the tune.
std::multiset<int> StruckAt(const Arrangement& song, int tick) {
    std::multiset<int> keys;
    for (std::size_t track = 1; track < song.tracks.size(); ++track) {
        for (const MidiEvent& event : song.tracks[track].events) {
            if (event.rank == Rank::NoteOn && event.tick == tick) {
                keys.insert(event.bytes[1]);
            }
        }
    }
    return keys;
}

// What a band would hear: tempo by tempo, and a chord that changes under a held pattern.
TEST(ArrangerTest, SlowsDownAndFollowsTheChords) {
    const Arrangement song = Arrange(ReadScore(
        "title T\nauthor A\ntempo 120\n[tracks]\nflute tune\npad chords low 60\nbass bass\n"
        "[style s]\npad x---\nbass R--8\n[section a]\nchords C F/A\ntune c1\n"
        "[play]\na style=s\na style=s slow=60 shift=2\na style=s\n"));
    std::vector<int> tempos;
    for (const TempoChange& change : song.tempos) {
        tempos.push_back(change.microseconds);
    }
    EXPECT_THAT(tempos, ElementsAre(500000, 571429, 666667, 800000, 1000000, 500000));
    EXPECT_NEAR(song.Milliseconds(song.endTick), 2000 + 571.4 + 666.7 + 800 + 1000 + 2000, 1);
    EXPECT_THAT(StruckAt(song, 0), ElementsAre(36, 60, 64, 67));
    EXPECT_THAT(StruckAt(song, 960), ElementsAre(33, 60, 65, 69));
    EXPECT_THAT(StruckAt(song, 1440), ElementsAre(45));
    EXPECT_THAT(StruckAt(song, 1920), ElementsAre(38, 62, 66, 69));
}

}  // namespace
}  // namespace sonnel::songs
