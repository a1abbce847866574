#include "fakes/SequencerRig.h"
#include "fakes/SmfBuilder.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

namespace sonnel::test {
namespace {

using ::testing::EndsWith;
using ::testing::MatchesRegex;

/// Two seconds at a tick a millisecond, with all that a song sets up.
std::string SongOfAllEvents() {
    SmfBuilder song(1, 500);
    song.Track().Text(0, 3, "Song").Tempo(0, 500000);
    song.Track().Control(0, 0, 2).Control(0, 32, 3).Program(0, 40).Control(5, 0, 9);
    song.Control(10, 101, 0).Control(10, 100, 0).Control(10, 6, 12);
    song.Control(20, 101, 0).Control(20, 100, 1).Control(20, 6, 70).Control(20, 38, 5);
    song.Control(21, 97, 0).Control(22, 97, 0).Control(700, 6, 60).Control(700, 99, 1);
    song.Control(700, 98, 8).Control(700, 6, 33).Control(1500, 121, 0).Control(1501, 6, 99);
    song.Note(100, 1000, 60).Note(1200, 300, 62).Control(300, 64, 127).Control(1300, 64, 0);
    song.Program(800, 41).Program(1400, 42);
    song.Track().Exclusive(0, "\x7E\x7F\x09\x01\xF7").Exclusive(900, "\x41\x10\xF7");
    for (std::uint32_t tick = 50; tick < 1900; tick += 50) {
        const int value = static_cast<int>(tick / 20);
        song.Control(tick, 7, value, 1).Message(tick, {0xD1, value});
        song.Message(tick, {0xE1, 5, value}).Message(tick, {0xA1, 48, value});
    }
    return song.Note(500, 1500, 48, 1).Bytes();
}

/// The log holds a "u" for each report and the number of each completion: 1 successful, 4 aborted.
class MMControlTest : public testing::Test, protected SequencerRig {
  protected:
    MMControlTest() {
        control.onStatusUpdate = [this] { log += 'u'; };
        control.onDone = [this](MciNotify how) { Log(how); };
    }
    void Log(MciNotify how) { log += std::to_string(static_cast<int>(how)); }
    using SequencerRig::Run;

    void Play() { control.Command(MciCommand::Play); }
    void Pause() { control.Command(MciCommand::Pause); }
    void Rewind() { control.Command(MciCommand::Prev); }
    /// The log up to so many milliseconds from now, since it was last read.
    std::string After(int ms) {
        Run(ms);
        return std::exchange(log, {});
    }
    std::int32_t PositionAfter(int ms) {
        Run(ms);
        return control.Position();
    }
    void ExpectClosed() {
        Play();
        EXPECT_EQ(State(), std::pair(MciMode::NotReady, 0));
        EXPECT_EQ(control.FileName(), "");
        EXPECT_FALSE(output.Running());
        EXPECT_EQ(After(50), "");
    }

    const std::string song = SongOfAllEvents();
    std::string log;
};

TEST_F(MMControlTest, OpenReportsOnceAndAFailedOneLeavesNothingOpen) {
    ASSERT_EQ(Open(song), "");
    EXPECT_EQ(State(), std::pair(MciMode::Stopped, 0));
    EXPECT_EQ(control.Length(), 2000);
    EXPECT_EQ(After(100), "u");
    EXPECT_EQ(timer.interval, 0);
    Play();
    Rewind();
    control.Command(MciCommand::Close);
    ExpectClosed();
    for (std::optional<Error>* failure : {&synth.prepareError, &output.startError}) {
        ASSERT_EQ(Open(song), "");
        EXPECT_EQ(After(50), "u") << "what was pending when the song was closed is dropped";
        *failure = Error{7, "No sound"};
        EXPECT_EQ(Open(song), "No sound");
        ExpectClosed();
        failure->reset();
    }
    EXPECT_EQ(Open(SmfBuilder(2).Note(0, 900, 60).Bytes()),
              "The MIDI file is of format 2, only formats 0 and 1 can be played");
    ExpectClosed();
}

TEST_F(MMControlTest, PlaysToTheEndAndCompletesOnce) {
    Open(song);
    Play();
    EXPECT_EQ(After(1000), std::string(100, 'u'));
    EXPECT_EQ(State(), std::pair(MciMode::Playing, 1000));
    EXPECT_GE(output.maintained, 100) << "a device that goes away is not noticed";
    EXPECT_EQ(After(2000), std::string(101, 'u') + "1") << "the end is heard in the next 10 ms";
    EXPECT_EQ(State(), std::pair(MciMode::Stopped, 2000));
    EXPECT_EQ(timer.interval, 0);
    Play();
    EXPECT_EQ(After(50), "u1") << "at the end Play completes at once";
    control.SetTo(1000);
    Rewind();
    EXPECT_EQ(After(50), "u");
    EXPECT_EQ(State(), std::pair(MciMode::Stopped, 0));
}

TEST_F(MMControlTest, TheLastSoundRingsOnWhenTheSongIsRewound) {
    Open(SmfBuilder(0, 500).Note(0, 900, 60).Message(100, {0x90, 64, 90}).Bytes());
    control.onDone = [this](MciNotify) { Rewind(); };
    output.keepSound = true;
    Play();
    Run(950);
    EXPECT_EQ(synth.recorded.at(2), std::pair(Frame(900), RecordingSynth::Message({0x80, 60, 64})));
    EXPECT_TRUE(synth.sounding.empty()) << "a note that was never ended hangs";
    EXPECT_EQ(output.sound.at(79000), 1.0F);
    Play();
    EXPECT_EQ(PositionAfter(100), 95);
    EXPECT_EQ(synth.sounding.size(), 1U);
}

TEST_F(MMControlTest, SeekShowsItsTargetAtOnceAndExactly) {
    for (const int rate : {22050, 44100, 48000}) {
        output.rate = rate;
        output.latency = rate / 20;
        Open(song);
        Play();
        Run(300);
        for (const int target : {-5, 0, 1, 333, 777, 1999, 2000, 5000}) {
            SeekTo(target);
            for (const int later : {0, 200}) {
                Run(later);
                EXPECT_EQ(State(), std::pair(MciMode::Stopped, std::clamp(target, 0, 2000)));
            }
            EXPECT_TRUE(synth.sounding.empty());
        }
    }
}

TEST_F(MMControlTest, SeekBringsTheSynthesizerWherePlayingWould) {
    // The events come at their frames whatever the output asks for at a time.
    const auto next = [this](std::int64_t block) {
        synth.recorded.clear();
        synth.frame = 0;
        Play();
        output.Ask(Frame(200), block);
        return synth.recorded;
    };
    for (const int ms : {0, 1, 15, 25, 450, 705, 850, 1350, 1501, 1600, 1999, 2000}) {
        Open(song);
        Play();
        output.Ask(Frame(ms));
        const RecordingSynth::State played = synth.state;
        const auto playedNext = next(1);
        SeekTo(1234);
        Run(50);
        synth.recorded.clear();
        SeekTo(ms);
        Run(50);
        EXPECT_LT(synth.recorded.size(), 40U) << "what is overridden was sent";
        EXPECT_EQ(synth.state, played) << ms;
        EXPECT_TRUE(synth.sounding.empty()) << ms;
        EXPECT_EQ(next(1000), playedNext) << ms;
    }
    EXPECT_EQ(synth.state.exclusive.size(), 2U);
}

TEST_F(MMControlTest, OddSongsPlayToTheirEnd) {
    constexpr std::uint32_t farTick = 0x0FFFFFFF;
    const std::vector<std::pair<SmfBuilder, std::int32_t>> songs = {
        {SmfBuilder(0).Track(), 0},
        {SmfBuilder(0, 0).Note(0, 96, 60), 500},
        {SmfBuilder(0, 1).Note(0, farTick, 60).Note(2 * farTick, 9, 61), 2147483647},
        {SmfBuilder(0).Exclusive(0, std::string(1 << 20, 'x') + '\xF7').Note(0, 480, 60), 500},
    };
    for (const auto& [odd, length] : songs) {
        ASSERT_EQ(Open(odd.Bytes()), "");
        SeekTo(std::max(0, length - 50));
        After(20);
        Play();
        EXPECT_THAT(After(200), MatchesRegex("u+1")) << length;
        EXPECT_EQ(control.Position(), length);
    }
}

TEST_F(MMControlTest, ACrowdOfEventsDoesNotHoldUpTheSound) {
    constexpr std::size_t crowd = 20000;
    SmfBuilder crowded(0, 500);
    for (std::size_t i = 0; i < crowd; ++i) {
        crowded.Exclusive(100, "\x7E\x7F\x09\x01\xF7").Message(200, {0x90, 60, 100});
    }
    Open(crowded.Message(200, {0x80, 60, 0}).Bytes());
    for (const int from : {0, 150}) {
        SeekTo(from);
        output.Ask(441);
        synth.recorded.clear();
        Play();
        for (std::size_t last = 0; control.Mode() == MciMode::Playing && output.asked < 999999;) {
            output.Ask(441);
            EXPECT_LE(synth.recorded.size() - std::exchange(last, synth.recorded.size()), 4096U);
            timer.Fire();
        }
        EXPECT_EQ(synth.recorded.size(), 2 * crowd + 1) << "none is lost";
        EXPECT_TRUE(synth.sounding.empty());
    }
}

TEST_F(MMControlTest, PositionAndPauseAreWhatIsHeardAndPlayGoesOn) {
    output.latency = 4410;
    output.keepSound = true;
    Open(song);
    Run(500);
    Play();
    EXPECT_EQ(PositionAfter(100), 0);
    EXPECT_EQ(PositionAfter(600), 600);
    log.clear();
    Pause();
    const std::size_t played = output.sound.size();
    EXPECT_EQ(PositionAfter(0), 600) << "what was rendered is still to be heard";
    EXPECT_EQ(PositionAfter(50), 650);
    EXPECT_EQ(After(200), "4uu") << "the second report when all is heard";
    Pause();
    EXPECT_EQ(After(50), "u");
    EXPECT_EQ(State(), std::pair(MciMode::Paused, 700));
    EXPECT_TRUE(synth.sounding.empty());
    for (std::size_t i = played; i < output.sound.size(); i += 2) {
        EXPECT_LT(std::abs(output.sound[i] - output.sound[i - 2]), 0.01F) << "a click";
    }
    Play();
    Run(1350);
    log.clear();
    Pause();
    EXPECT_EQ(After(500), "4uu") << "paused when all was rendered, but not yet heard";
    EXPECT_EQ(State(), std::pair(MciMode::Paused, 2000));
    Play();
    EXPECT_THAT(After(500), MatchesRegex("u+1"));
}

TEST_F(MMControlTest, PositionRunsOnBetweenReadingsAndNeverBack) {
    struct Step {
        int reported, wait, position;
    };
    Open(song);
    Play();
    output.Ask(Frame(1000));
    for (const auto& [reported, wait, position] :
         {Step{100, 0, 100}, {100, 7, 107}, {105, 0, 107}, {105, 4, 109}, {105, 5000, 1000}}) {
        output.reported = Frame(reported);
        clock.Advance(std::chrono::milliseconds(wait));
        EXPECT_EQ(control.Position(), position) << "1000 ms were rendered";
    }
}

TEST_F(MMControlTest, ALyingDeviceCannotStopTheSong) {
    for (const bool beginsAnew : {false, true}) {
        Open(song);
        Play();
        std::int32_t last = 0;
        for (int ms = 10; ms <= 3000; ms += 10) {
            output.reported = beginsAnew ? output.asked % 60000 : output.asked + 50000;
            Run(10);
            EXPECT_GE(control.Position(), last);
            EXPECT_LE(control.Position(), ms);
            last = control.Position();
        }
        EXPECT_EQ(last, 2000);
        EXPECT_THAT(After(0), EndsWith("1"));
    }
}

TEST_F(MMControlTest, HandlersMayCommandCloseAndOpen) {
    control.onDone = [this](MciNotify how) {
        Log(how);
        how == MciNotify::Successful ? (void)Open(song) : Play();
    };
    Open(song);
    Play();
    Pause();
    EXPECT_THAT(After(3000), MatchesRegex("4u+1u"));
    EXPECT_EQ(control.Mode(), MciMode::Stopped);

    control.onStatusUpdate = [this] {
        log += 'u';
        timer.Fire();  // as a message box does; no report comes inside a report
        if (control.Mode() == MciMode::Stopped) {
            control.Command(MciCommand::Close);
        }
    };
    Play();
    Pause();
    EXPECT_THAT(After(3000), MatchesRegex("4u+")) << "Close drops the completion that is due";
}

TEST_F(MMControlTest, QuietHoldsReportsBackAndEachPlayCompletesOnce) {
    Open(song);
    Play();
    After(50);
    {
        const MMControl::Quiet quiet(control);
        for (int i = 0; i < 100; ++i) {
            i % 2 == 0 ? Pause() : Rewind();
            Play();
        }
        EXPECT_EQ(After(2100), "") << "the song is at its end";
    }
    EXPECT_EQ(After(10), std::string(100, '4') + "u1");
}

}  // namespace
}  // namespace sonnel::test
