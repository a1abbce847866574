#include "fakes/DemoSong.h"
#include "fakes/SequencerRig.h"
#include "fakes/SmallSoundFont.h"
#include "fakes/SmfBuilder.h"
#include "platform/audio/FluidSintetizzatore.h"

#include <algorithm>
#include <cmath>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

using testing::ElementsAre;

constexpr int kSideStick = 37;
constexpr double kToleranceMs = 3;

/// The player's sequencer and synthesiser, what they give kept.
struct Band {
    Band() { rig.output.keepSound = true; }
    void Play(const std::string& midi, int ms) {
        ASSERT_EQ(rig.Open(midi), "");
        rig.control.Command(MciCommand::Play);
        rig.Run(ms);
    }
    [[nodiscard]] const std::vector<float>& Sound() const { return rig.output.sound; }
    /// The loudest sample of the last milliseconds.
    [[nodiscard]] float LastPeak(int ms) const {
        const auto samples = static_cast<std::ptrdiff_t>(2 * rig.Frame(ms));
        float peak = 0;
        for (auto sample = Sound().end() - samples; sample != Sound().end(); ++sample) {
            peak = std::max(peak, std::abs(*sample));
        }
        return peak;
    }
    /// When sound begins after a tenth of a second of silence, in milliseconds.
    [[nodiscard]] std::vector<double> Onsets() const {
        std::vector<double> onsets;
        double loudAt = -100;
        for (std::size_t i = 0; i < Sound().size(); ++i) {
            const double ms = 500.0 * static_cast<double>(i) / rig.output.rate;
            if (std::abs(Sound()[i]) > 0.001F) {
                if (ms - loudAt >= 100) {
                    onsets.push_back(ms);
                }
                loudAt = ms;
            }
        }
        return onsets;
    }

    FluidSintetizzatore synth{SmallSoundFont};
    SequencerRig rig{synth};
};

/// Side sticks without echo at the first tick, in and between stretches of different tempo.
std::string Sticks() {
    SmfBuilder song(1, 480);
    song.Track().Tempo(480, 400000).Tempo(960, 1000000).Tempo(1440, 250000).Tempo(2400, 600000);
    song.Track().Control(0, 91, 0, 9).Control(0, 93, 0, 9);
    for (const std::uint32_t tick : {0, 480, 960, 1200, 1440, 2160, 2640, 3121}) {
        song.Note(tick, 100, kSideStick, 9);
    }
    return song.Bytes();
}
const std::vector<double> kStickTimes = {0, 500, 900, 1400, 1900, 2275, 2700, 3301.25};

TEST(SongSound, NotesAreHeardWhenTheTemposSayAlsoAfterAPause) {
    Band band;
    band.Play(Sticks(), 1600);
    band.rig.control.Command(MciCommand::Pause);
    band.rig.Run(700);
    EXPECT_EQ(band.rig.control.Position(), 1600);
    band.rig.control.Command(MciCommand::Play);
    band.rig.Run(2500);
    const std::vector<double> onsets = band.Onsets();
    ASSERT_EQ(onsets.size(), kStickTimes.size());
    for (std::size_t i = 0; i < onsets.size(); ++i) {
        const double time = kStickTimes[i] + (i < 4 ? 0 : 700);
        EXPECT_GE(onsets[i], time);
        EXPECT_LE(onsets[i], time + kToleranceMs);
    }
}

class DemoSongSoundTest : public testing::TestWithParam<std::filesystem::path> {
  protected:
    DemoSong demo{GetParam()};
};

TEST_P(DemoSongSoundTest, PauseLeavesNoNoteHanging) {
    Band band;
    band.Play(demo.midi, 9000);
    EXPECT_GT(band.synth.ActiveVoices(), 0);
    EXPECT_GT(band.LastPeak(500), 0.01F);
    band.rig.control.Command(MciCommand::Pause);
    band.rig.Run(20);
    EXPECT_EQ(band.synth.ActiveVoices(), 0);
    band.rig.Run(3000);
    EXPECT_LT(band.LastPeak(500), 1e-4F);
}

TEST_P(DemoSongSoundTest, TheLastSoundRingsOnAndTheSongIsRewound) {
    Band band;
    ASSERT_EQ(band.rig.Open(demo.midi), "");
    band.rig.control.onDone = [&band](MciNotify how) {
        band.rig.done.push_back(how);
        band.rig.control.Command(MciCommand::Prev);
    };
    band.rig.SeekTo(band.rig.control.Length() - 8000);
    band.rig.control.Command(MciCommand::Play);
    band.rig.Run(8100);
    EXPECT_THAT(band.rig.done, ElementsAre(MciNotify::Successful));
    EXPECT_EQ(band.rig.control.Position(), 0);
    EXPECT_GT(band.LastPeak(50), 1e-3F) << "cut off";
    band.rig.Run(5000);
    EXPECT_LT(band.LastPeak(500), 1e-4F) << "never ends";
    EXPECT_EQ(band.rig.done.size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(Songs, DemoSongSoundTest, testing::ValuesIn(DemoScores()), TestName);

TEST(SongSound, IsTheSameEveryTime) {
    const DemoSong demo(DemoScores().at(3));
    const int length = static_cast<int>(demo.song.Milliseconds(demo.song.endTick)) + 1000;
    Band first;
    first.Play(demo.midi, length);
    Band second;
    second.Play(demo.midi, length);
    EXPECT_THAT(first.rig.done, ElementsAre(MciNotify::Successful));
    EXPECT_TRUE(first.Sound() == second.Sound());
}

}  // namespace
}  // namespace sonnel::test
