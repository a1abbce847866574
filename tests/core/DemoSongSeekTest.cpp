#include "fakes/DemoSong.h"
#include "fakes/RecordingSynth.h"
#include "fakes/SequencerRig.h"

#include <algorithm>
#include <map>
#include <set>

#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

constexpr int kRate = 48000;              // a whole number of frames in a millisecond
constexpr std::int64_t kStretch = 24000;  // frames compared after each place

/// Ten places all over a song, and those just before, at and after each change of tempo.
std::set<std::int32_t> Places(const songs::Arrangement& song) {
    std::set<std::int32_t> places;
    const auto length = static_cast<std::int32_t>(song.Milliseconds(song.endTick));
    for (std::int32_t i = 0; i < 10; ++i) {
        places.insert(length * i / 10 + i);
    }
    for (const songs::TempoChange& change : song.tempos) {
        const auto ms = static_cast<std::int32_t>(song.Milliseconds(change.tick));
        places.insert({std::max(0, ms - 1), ms, ms + 1, ms + 2});
    }
    return places;
}

/// What plays in the half second after a place, at frames counted from it.
std::vector<RecordingSynth::Recorded> After(const RecordingSynth& synth, std::int64_t from) {
    std::vector<RecordingSynth::Recorded> messages;
    for (const auto& [frame, message] : synth.recorded) {
        if (frame >= from && frame < from + kStretch) {
            messages.push_back({frame - from, message});
        }
    }
    return messages;
}

class DemoSongSeekTest : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(DemoSongSeekTest, GoesOnFromEveryPlaceAsThePlayedSongDoes) {
    const DemoSong demo(GetParam());
    const std::set<std::int32_t> places = Places(demo.song);
    RecordingSynth played;
    SequencerRig straight(played);
    straight.output.rate = kRate;
    ASSERT_EQ(straight.Open(demo.midi), "");
    straight.control.Command(MciCommand::Play);
    std::map<std::int32_t, RecordingSynth::State> states;
    for (const std::int32_t place : places) {
        straight.output.Ask(straight.Frame(place) - straight.output.asked);
        states[place] = played.state;
    }
    straight.output.Ask(kStretch);

    RecordingSynth sought;
    SequencerRig jumping(sought);
    jumping.output.rate = kRate;
    ASSERT_EQ(jumping.Open(demo.midi), "");
    for (const std::int32_t place : places) {  // each time while notes sound
        jumping.SeekTo(place);
        jumping.Run(50);
        EXPECT_EQ(jumping.control.Position(), place);
        EXPECT_TRUE(sought.state == states[place]) << "settings at " << place << " ms";
        EXPECT_TRUE(sought.sounding.empty()) << "notes at " << place << " ms";
        const std::int64_t from = sought.frame;
        jumping.control.Command(MciCommand::Play);
        jumping.output.Ask(kStretch);
        EXPECT_TRUE(After(sought, from) == After(played, straight.Frame(place)))
            << "what comes after " << place << " ms";
    }
}

INSTANTIATE_TEST_SUITE_P(Songs, DemoSongSeekTest, testing::ValuesIn(DemoScores()), TestName);

}  // namespace
}  // namespace sonnel::test
