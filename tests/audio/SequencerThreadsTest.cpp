#include "fakes/DemoSong.h"
#include "fakes/ManualClock.h"
#include "fakes/ManualTimer.h"
#include "fakes/SmallSoundFont.h"
#include "fakes/TempDirectory.h"
#include "platform/audio/DefaultOutput.h"
#include "platform/audio/FluidSynthesizer.h"
#include "platform/midi/MMControl.h"

#include <array>
#include <chrono>
#include <random>
#include <thread>

#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

/// The sequencer of a real output: its sound is asked for on a thread of its own while commands
/// come in a hurry. The thread sanitizer watches it.
TEST(SequencerThreads, CommandsInAHurryMeetTheSoundThread) {
    const TempDirectory folder;
    const std::string song = folder.Write("song.mid", DemoSong(DemoScores().front()).midi).string();
    FluidSynthesizer synth(SmallSoundFont);
    ManualClock clock;
    DefaultOutput output(AudioDriver{AudioDriver::Kind::Silence, ""}, clock);
    ManualTimer timer;
    MMControl control(synth, output, timer, clock);
    std::mt19937 random(1);  // NOLINT(bugprone-random-generator-seed): the same every time
    int played = 0;
    for (int round = 0; round < 300; ++round) {
        if (control.FileName().empty()) {
            control.SetFileName(song);
            ASSERT_FALSE(control.Command(MciCommand::Open));
        }
        control.SetTo(static_cast<std::int32_t>(random() % 60000));
        constexpr std::array Commands = {MciCommand::Play,  MciCommand::Play, MciCommand::Play,
                                         MciCommand::Pause, MciCommand::Seek, MciCommand::Seek,
                                         MciCommand::Prev,  MciCommand::Close};
        control.Command(Commands.at(random() % Commands.size()));
        control.Perform({static_cast<int>(random() % 25) - 12,
                         50 + static_cast<int>(random() % 101),
                         static_cast<Performance::Melody>(random() % 3), 0});
        const std::int32_t before = control.Position();
        std::this_thread::sleep_for(std::chrono::milliseconds(random() % 8));
        clock.Advance(std::chrono::milliseconds(8));
        timer.Fire();
        played += IsPlaying(control.Mode()) ? 1 : 0;
        ASSERT_TRUE(!IsPlaying(control.Mode()) || control.Position() >= before);
        ASSERT_LE(control.Position(), control.Length());
    }
    EXPECT_GT(played, 50);
}

}  // namespace
}  // namespace sonnel::test
