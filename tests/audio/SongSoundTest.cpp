#include "fakes/DemoSong.h"
#include "fakes/SequencerRig.h"
#include "fakes/SmallSoundFont.h"
#include "platform/audio/FluidSynthesizer.h"

#include <algorithm>
#include <cmath>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

TEST(SongSound, NoNoteHangsInAPauseAndTheLastOneRingsOnWhenTheSongIsRewound) {
    FluidSynthesizer synth(SmallSoundFont);
    SequencerRig rig(synth);
    MMControl& control = rig.control;
    const auto peakOfTheLast = [&rig](int ms) {
        const std::vector<float>& sound = rig.output.sound;
        float peak = 0;
        for (auto at = sound.end() - 2 * rig.Frame(ms); at != sound.end(); ++at) {
            peak = std::max(peak, std::abs(*at));
        }
        return peak;
    };
    rig.output.keepSound = true;
    ASSERT_EQ(rig.Open(DemoSong(DemoScores().front()).midi), "");
    control.Command(MciCommand::Play);
    rig.Run(9000);
    EXPECT_GT(peakOfTheLast(500), 0.01F);
    control.Command(MciCommand::Pause);
    rig.Run(20);
    EXPECT_EQ(synth.ActiveVoices(), 0);
    rig.Run(3000);
    EXPECT_LT(peakOfTheLast(500), 1e-4F);

    rig.done.clear();
    control.onDone = [&rig](MciNotify how) {
        rig.done.push_back(how);
        rig.control.Command(MciCommand::Prev);
    };
    rig.SeekTo(control.Length() - 8000);
    control.Command(MciCommand::Play);
    rig.Run(8100);
    EXPECT_THAT(rig.done, testing::ElementsAre(MciNotify::Successful));
    EXPECT_EQ(control.Position(), 0);
    EXPECT_GT(peakOfTheLast(50), 1e-3F) << "cut off";
    rig.Run(5000);
    EXPECT_LT(peakOfTheLast(500), 1e-4F) << "never ends";
}

}  // namespace
}  // namespace sonnel::test
