#include "fakes/DemoSong.h"
#include "fakes/SequencerRig.h"
#include "fakes/SmfBuilder.h"
#include "platform/midi/Performance.h"

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

using Melody = Performance::Melody;

struct Onset {
    std::int64_t frame;
    int channel;
    int key;
    int velocity;
};

std::vector<Onset> Onsets(const RecordingSynth& synth) {
    std::vector<Onset> onsets;
    for (const auto& [frame, message] : synth.recorded) {
        if (message.size() == 3 && (message[0] & 0xF0) == 0x90 && message[2] > 0) {
            onsets.push_back({frame, message[0] & 0x0F, message[1], message[2]});
        }
    }
    return onsets;
}

/// Plays a song to its end and beyond, in one go.
std::vector<Onset> Play(const std::string& midi, const Performance& performance) {
    SequencerRig rig;
    rig.control.Perform(performance);
    EXPECT_EQ(rig.Open(midi), "");
    rig.control.Command(MciCommand::Play);
    const std::int64_t length = rig.Frame(rig.control.Length());
    rig.output.Ask(length * 100 / performance.tempo + 1000, 441);
    EXPECT_EQ(rig.control.Position(), rig.control.Length());
    EXPECT_EQ(rig.synth.sounding.size(), 0U) << "notes hang";
    return Onsets(rig.synth);
}

TEST(Performance, ShiftsTheNotesOfEverySongAndScalesTheirTimes) {
    const std::vector<std::pair<int, int>> chosen{{-12, 90}, {-1, 150}, {1, 50}, {12, 100}};
    for (const auto& score : DemoScores()) {
        const std::string midi = DemoSong(score).midi;
        const std::vector<Onset> own = Play(midi, {});
        ASSERT_GT(own.size(), 50U);
        for (const auto& [key, tempo] : chosen) {
            const std::vector<Onset> changed = Play(midi, {key, tempo});
            ASSERT_EQ(changed.size(), own.size());
            for (std::size_t i = 0; i < own.size(); ++i) {
                ASSERT_EQ(changed[i].key, own[i].key + (own[i].channel == 9 ? 0 : key)) << i;
                const double frame = static_cast<double>(own[i].frame) * 100 / tempo;
                ASSERT_NEAR(static_cast<double>(changed[i].frame), frame, 3 * 44.1) << i;
            }
        }
    }
}

/// A note of two seconds at the beginning and one of two at each second, a tick a millisecond.
std::string LongNotes() {
    SmfBuilder song(0, 500);
    song.Note(0, 2000, 60).Note(0, 2000, 36, 9).Note(1000, 100, 2).Note(1000, 100, 126);
    return song.Note(1000, 2000, 62).Note(1500, 2000, 60).Control(5000, 7, 100).Bytes();
}

struct PerformanceTest : testing::Test, SequencerRig {
    using SequencerRig::Run;
    PerformanceTest() {
        EXPECT_EQ(Open(LongNotes()), "");
        control.Command(MciCommand::Play);
    }
    /// The note messages since the last call, as "+key" and "-key".
    std::string Notes() {
        std::string notes;
        for (; read < synth.recorded.size(); ++read) {
            const auto& message = synth.recorded[read].second;
            const bool on = (message[0] & 0xF0) == 0x90;
            notes += on || (message[0] & 0xF0) == 0x80
                         ? (on ? "+" : "-") + std::to_string(message[1]) + " "
                         : "";
        }
        return notes;
    }
    std::size_t read = 0;
};

TEST_F(PerformanceTest, ConcernsTheNotesThatBeginAndEndsThemAsTheyBegan) {
    Run(500);
    control.Perform({4});
    EXPECT_EQ(Notes(), "+60 +36 ");
    Run(700);
    EXPECT_EQ(Notes(), "+6 +66 -6 ") << "126 would be too high";
    control.Perform({2});
    Run(400);
    EXPECT_EQ(Notes(), "-60 +62 ") << "the same key begins anew";
    Run(500);
    EXPECT_EQ(Notes(), "-62 -36 ") << "drums stay";
    Run(2000);
    EXPECT_EQ(Notes(), "-66 -60 ");
    EXPECT_TRUE(synth.sounding.empty());
}

TEST_F(PerformanceTest, TheMelodyGoesSoftAndOffAndItsNotesEnd) {
    control.Perform({0, 100, Melody::Soft, 0});
    Run(1200);
    EXPECT_EQ(Onsets(synth).back().velocity, 50);
    control.Perform({0, 100, Melody::Off, 0});
    Run(100);
    EXPECT_EQ(synth.sounding, (std::set<std::pair<int, int>>{{9, 36}}));
    Run(3000);
    EXPECT_EQ(Onsets(synth).size(), 5U);
}

TEST_F(PerformanceTest, ChangesOfTempoLeaveNeitherGapNorJump) {
    std::mt19937 random(3);  // NOLINT(bugprone-random-generator-seed): the same every time
    double song = 0;
    for (int i = 0; i < 1000; ++i) {
        const int tempo = 50 + static_cast<int>(random() % 101);
        control.Perform({static_cast<int>(random() % 25) - 12, tempo,
                         static_cast<Melody>(random() % 3), static_cast<int>(random() % 2) - 1});
        output.Ask(44, 44);
        song += 44.0 / 44.1 * tempo / 100;
        if (i % 50 == 49) {
            clock.Advance(std::chrono::milliseconds(50));
            EXPECT_NEAR(control.Position(), song, 2);
        }
    }
    Run(8000);
    EXPECT_TRUE(synth.sounding.empty());
    EXPECT_EQ(control.Mode(), MciMode::Stopped);
}

}  // namespace
}  // namespace sonnel::test
