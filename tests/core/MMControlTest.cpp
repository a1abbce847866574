#include "fakes/ManualClock.h"
#include "fakes/ManualOutput.h"
#include "fakes/ManualTimer.h"
#include "fakes/RecordingSynth.h"
#include "fakes/SmfBuilder.h"
#include "platform/midi/MMControl.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

namespace sonnel::test {
namespace {

using std::chrono::milliseconds;

/// Two seconds at a tick a millisecond, with all that a song sets up.
std::string Song() {
    SmfBuilder song(1, 500);
    song.Track().Text(0, 3, "Song").Tempo(0, 500000);
    song.Track().Control(0, 0, 2).Control(0, 32, 3).Program(0, 40).Control(5, 0, 9);
    song.Control(10, 101, 0).Control(10, 100, 0).Control(10, 6, 12);
    song.Control(20, 101, 0).Control(20, 100, 1).Control(20, 6, 70).Control(20, 38, 5);
    song.Control(21, 97, 0).Control(700, 6, 60).Control(700, 99, 1).Control(700, 98, 8);
    song.Control(700, 6, 33).Control(1500, 121, 0).Control(1501, 6, 99);
    song.Note(100, 1000, 60).Note(1200, 300, 62).Control(300, 64, 127).Control(1300, 64, 0);
    song.Program(800, 41).Program(1400, 42);
    song.Track().Exclusive(0, "\x7E\x7F\x09\x01\xF7").Exclusive(900, "\x41\x10\xF7");
    for (std::uint32_t tick = 50; tick < 1900; tick += 50) {
        song.Bend(tick, static_cast<int>(tick), 1).Control(tick, 7, static_cast<int>(tick / 20), 1);
        song.Message(tick, {0xD1, static_cast<int>(tick / 25)});
    }
    return song.Note(500, 1500, 48, 1).Bytes();
}

class MMControlTest : public testing::Test {
  protected:
    void SetUp() override {
        std::filesystem::create_directories(folder);
        Write("song.mid", Song());
    }
    void TearDown() override {
        control.reset();
        std::filesystem::remove_all(folder);
    }

    void Write(const std::string& name, const std::string& bytes) const {
        std::ofstream(folder / name, std::ios::binary) << bytes;
    }
    std::optional<Error> Open(const std::string& name = "song.mid") {
        control->onStatusUpdate = [this] { log += 'u'; };
        control->onDone = [this](MciNotify how) { log += std::to_string(static_cast<int>(how)); };
        control->SetFileName((folder / name).string());
        return control->Command(MciCommand::Open);
    }
    void Send(MciCommand command) { EXPECT_FALSE(control->Command(command)); }
    void SeekTo(std::int32_t ms) {
        control->SetTo(ms);
        Send(MciCommand::Seek);
    }
    /// Lets time pass in steps of 10 ms: sound, clock and timer.
    void Run(int ms) {
        for (int i = 0; i < ms; i += 10) {
            output.Ask(output.rate / 100);
            clock.Advance(milliseconds(10));
            timer.Fire();
        }
    }
    std::string TakeLog() { return std::exchange(log, {}); }

    std::filesystem::path folder =
        std::filesystem::path(testing::TempDir()) / ("sonnel-midi-" + std::to_string(getpid()));
    RecordingSynth synth;
    ManualOutput output;
    ManualTimer timer;
    ManualClock clock;
    std::unique_ptr<MMControl> control = std::make_unique<MMControl>(synth, output, timer, clock);
    std::string log;
};

TEST_F(MMControlTest, OpenReadsTheSongAndReportsOnce) {
    EXPECT_EQ(control->Mode(), MciMode::NotReady);
    ASSERT_FALSE(Open("SONG.MID"));
    EXPECT_EQ(control->Mode(), MciMode::Stopped);
    EXPECT_EQ(control->Position(), 0);
    EXPECT_EQ(control->Length(), 2000);
    EXPECT_EQ(log, "");
    Run(100);
    EXPECT_EQ(TakeLog(), "u");
    EXPECT_FALSE(timer.Running());
    EXPECT_TRUE(output.Running());
    Send(MciCommand::Close);
    EXPECT_EQ(control->Mode(), MciMode::NotReady);
    EXPECT_EQ(control->FileName(), "");
    EXPECT_FALSE(output.Running());
    Send(MciCommand::Play);
    EXPECT_EQ(control->Mode(), MciMode::NotReady);
}

TEST_F(MMControlTest, AFailedOpenTellsWhyAndLeavesNothingOpen) {
    Write("text.mid", "no music");
    Write("two.mid", SmfBuilder(2).Note(0, 1, 60).Bytes());
    std::filesystem::create_directory(folder / "folder.mid");
    const auto fails = [this](const std::string& name) {
        EXPECT_FALSE(Open());
        const auto error = Open(name);
        EXPECT_EQ(control->Mode(), MciMode::NotReady);
        EXPECT_EQ(control->FileName(), "");
        EXPECT_FALSE(output.Running());
        Run(50);
        EXPECT_EQ(TakeLog(), "");
        return error ? error->text : "no error";
    };
    EXPECT_EQ(fails("missing.mid"), "No such file or directory");
    EXPECT_EQ(fails("folder.mid"), "Is a directory");
    EXPECT_EQ(fails("text.mid"),
              "This is not a MIDI file: choose a song whose MID file other players can play");
    EXPECT_EQ(fails("two.mid"), "The MIDI file is of format 2, only formats 0 and 1 can be played");
    synth.prepareError = Error{7, "No SoundFont"};
    EXPECT_EQ(Open()->text, "No SoundFont");
    synth.prepareError.reset();
    output.startError = Error{8, "No output"};
    EXPECT_EQ(Open()->number, 8);
    EXPECT_EQ(control->Mode(), MciMode::NotReady);
}

TEST_F(MMControlTest, PlaysToTheEndAndCompletesOnce) {
    ASSERT_FALSE(Open());
    Send(MciCommand::Play);
    EXPECT_EQ(control->Mode(), MciMode::Playing);
    Run(1000);
    EXPECT_EQ(TakeLog(), std::string(100, 'u'));
    EXPECT_EQ(control->Position(), 1000);
    EXPECT_GT(synth.sounding.size(), 0U);
    Run(2000);
    EXPECT_EQ(TakeLog(), std::string(101, 'u') + "1") << "the end is heard in the next 10 ms";
    EXPECT_EQ(control->Mode(), MciMode::Stopped);
    EXPECT_EQ(control->Position(), 2000);
    EXPECT_TRUE(synth.sounding.empty());
    EXPECT_FALSE(timer.Running());
    Send(MciCommand::Play);
    Run(50);
    EXPECT_EQ(TakeLog(), "u1") << "at the end Play completes at once";
    Send(MciCommand::Prev);
    EXPECT_EQ(control->Position(), 0);
    Run(50);
    EXPECT_EQ(TakeLog(), "u");
}

TEST_F(MMControlTest, TheLastSoundRingsOnWhenTheSongIsRewound) {
    Write("chord.mid", SmfBuilder(0, 500).Note(0, 900, 60).Message(100, {0x90, 64, 90}).Bytes());
    ASSERT_FALSE(Open("chord.mid"));
    control->onDone = [this](MciNotify) { Send(MciCommand::Prev); };
    output.keepSound = true;
    Send(MciCommand::Play);
    Run(950);
    EXPECT_EQ(control->Mode(), MciMode::Stopped);
    EXPECT_TRUE(synth.sounding.empty()) << "a note that was never ended hangs";
    EXPECT_EQ(output.sound.at(79000), 1.0F);
    Send(MciCommand::Play);
    Run(100);
    EXPECT_EQ(control->Position(), 95);
    EXPECT_EQ(synth.sounding.size(), 1U);
}

TEST_F(MMControlTest, PauseKeepsThePlaceAndPlayGoesOn) {
    ASSERT_FALSE(Open());
    output.keepSound = true;
    Send(MciCommand::Play);
    Run(600);
    TakeLog();
    Send(MciCommand::Pause);
    EXPECT_EQ(control->Mode(), MciMode::Paused);
    const std::size_t played = output.sound.size();
    Run(50);
    EXPECT_EQ(TakeLog(), "4u");
    EXPECT_EQ(control->Position(), 600);
    EXPECT_TRUE(synth.sounding.empty());
    for (std::size_t i = played; i < output.sound.size(); i += 2) {
        EXPECT_LT(std::abs(output.sound[i] - output.sound[i - 2]), 0.01F) << "a click";
    }
    Send(MciCommand::Pause);
    Run(10);
    EXPECT_EQ(control->Mode(), MciMode::Paused);
    Send(MciCommand::Play);
    Run(1500);
    EXPECT_EQ(control->Position(), 2000);
    EXPECT_EQ(log.find('4'), std::string::npos);
    EXPECT_EQ(log.back(), '1');
}

TEST_F(MMControlTest, EachPlayCompletesOnceAlsoWhenTheyAreHurried) {
    ASSERT_FALSE(Open());
    for (int i = 0; i < 100; ++i) {
        Send(MciCommand::Play);
        Send(MciCommand::Play);
        Send(i % 2 == 0 ? MciCommand::Pause : MciCommand::Prev);
    }
    Run(2000);
    EXPECT_EQ(TakeLog(), std::string(100, '4') + "u");
    Send(MciCommand::Play);
    Run(100);
    EXPECT_EQ(control->Position(), 100);
}

TEST_F(MMControlTest, SeekShowsItsTargetAtOnceAndExactly) {
    for (const int rate : {22050, 44100, 48000}) {
        output.rate = rate;
        output.latency = rate / 20;
        ASSERT_FALSE(Open());
        Send(MciCommand::Play);
        Run(300);
        for (const int target : {-5, 0, 1, 333, 777, 1999, 2000, 5000}) {
            SeekTo(target);
            const int shown = std::clamp(target, 0, 2000);
            EXPECT_EQ(control->Mode(), MciMode::Stopped);
            EXPECT_EQ(control->Position(), shown);
            Run(200);
            EXPECT_EQ(control->Position(), shown);
            EXPECT_TRUE(synth.sounding.empty());
        }
    }
}

TEST_F(MMControlTest, SeekBringsTheSynthesiserWherePlayingWould) {
    for (const int ms : {0, 1, 15, 25, 450, 705, 850, 1350, 1501, 1600, 1999, 2000}) {
        ASSERT_FALSE(Open());
        Send(MciCommand::Play);
        output.Ask(static_cast<std::int64_t>(std::lround(ms * 44.1)));
        const RecordingSynth::State played = synth.state;
        SeekTo(1234);
        Run(50);
        SeekTo(ms);
        synth.recorded.clear();
        Run(50);
        EXPECT_EQ(synth.state, played) << ms;
        for (const auto& [frame, message] : synth.recorded) {
            EXPECT_FALSE(message[0] == 0x90 || message[0] == 0x91) << "a note at " << ms;
        }
    }
}

TEST_F(MMControlTest, SeekSendsLittleHoweverMuchWasOverridden) {
    SmfBuilder song(0, 500);
    for (std::uint32_t tick = 0; tick < 20000; ++tick) {
        song.Bend(tick, static_cast<int>(tick % 16384))
            .Control(tick, 6, static_cast<int>(tick % 128));
    }
    Write("bends.mid", song.Bytes());
    ASSERT_FALSE(Open("bends.mid"));
    SeekTo(19000);
    Run(50);
    EXPECT_EQ(synth.recorded.size(), 2U);
    EXPECT_EQ(synth.state.channels[0].bend, 18999 % 16384);
}

TEST_F(MMControlTest, OddSongsPlayToTheirEndAndAreRewound) {
    constexpr std::uint32_t farTick = 0x0FFFFFFF;
    const std::vector<std::pair<SmfBuilder, std::int32_t>> songs = {
        {SmfBuilder(0).Track(), 0},
        {SmfBuilder(0).Note(0, 0, 60), 0},
        {SmfBuilder(0, 480).Tempo(0, 0).Note(0, 480, 60), 500},
        {SmfBuilder(0, 0).Note(0, 96, 60), 500},
        {SmfBuilder(0, 1).Note(0, 1, 60), 500},
        {SmfBuilder(0, 32767).Note(0, 32767, 60), 500},
        {SmfBuilder(0, 1).Note(0, farTick, 60).Note(2 * farTick, 9, 61), 2147483647},
        {SmfBuilder(0).Exclusive(0, std::string(1 << 20, 'x') + '\xF7').Note(0, 480, 60), 500},
    };
    for (const auto& [song, length] : songs) {
        Write("odd.mid", song.Bytes());
        ASSERT_FALSE(Open("odd.mid"));
        EXPECT_EQ(control->Length(), length);
        Send(MciCommand::Play);
        Run(100);
        SeekTo(std::max(0, length - 50));
        Run(20);
        TakeLog();
        Send(MciCommand::Play);
        Run(200);
        EXPECT_EQ(std::count(log.begin(), log.end(), '1'), 1) << length;
        EXPECT_EQ(control->Position(), length);
        Send(MciCommand::Prev);
        Run(50);
        EXPECT_EQ(control->Position(), 0);
        EXPECT_TRUE(synth.sounding.empty());
    }
}

TEST_F(MMControlTest, ACrowdOfEventsDoesNotHoldUpTheSound) {
    constexpr std::size_t crowd = 20000;
    SmfBuilder song(0, 500);
    for (std::size_t i = 0; i < crowd; ++i) {
        song.Exclusive(100, "\x7E\x7F\x09\x01\xF7");
        song.Message(200 + static_cast<std::uint32_t>(i / 5000), {0x90, 60, 100});
    }
    Write("crowd.mid", song.Message(203, {0x80, 60, 0}).Bytes());
    ASSERT_FALSE(Open("crowd.mid"));
    const auto plays = [this](std::size_t messages) {
        synth.recorded.clear();
        Send(MciCommand::Play);
        for (std::size_t i = 0; i < 1000 && control->Mode() == MciMode::Playing; ++i) {
            const std::size_t before = synth.recorded.size();
            output.Ask(441);
            EXPECT_LE(synth.recorded.size() - before, 4096U);
            timer.Fire();
        }
        EXPECT_EQ(synth.recorded.size(), messages);
        EXPECT_TRUE(synth.sounding.empty());
        EXPECT_EQ(control->Position(), 203);
        EXPECT_EQ(log.back(), '1');
    };
    plays(2 * crowd + 1);
    SeekTo(150);
    output.Ask(1);  // releases the notes
    EXPECT_EQ(control->Position(), 150);
    plays(2 * crowd + 1);
}

TEST_F(MMControlTest, EveryEventComesAtItsFrameWhateverTheOutputAsksFor) {
    const auto record = [this](std::int64_t block, int rate) {
        output.rate = rate;
        EXPECT_FALSE(Open());
        synth.recorded.clear();
        synth.frame = 0;
        Send(MciCommand::Play);
        output.Ask(std::int64_t{3} * rate, block);
        return synth.recorded;
    };
    const auto reference = record(1, 44100);
    ASSERT_GT(reference.size(), 100U);
    for (const int block : {64, 441, 1000, 50000}) {
        EXPECT_EQ(record(block, 44100), reference) << block;
    }
    const auto other = record(480, 96000);
    ASSERT_EQ(other.size(), reference.size());
    for (std::size_t i = 0; i < other.size(); ++i) {
        EXPECT_EQ(other[i].message, reference[i].message);
        EXPECT_NEAR(static_cast<double>(other[i].frame) / 96000,
                    static_cast<double>(reference[i].frame) / 44100, 0.00002);
    }
}

TEST_F(MMControlTest, PositionIsWhatIsHeard) {
    output.latency = 4410;
    ASSERT_FALSE(Open());
    Run(500);
    Send(MciCommand::Play);
    EXPECT_EQ(control->Position(), 0);
    Run(100);
    EXPECT_EQ(control->Position(), 0);
    Run(300);
    EXPECT_EQ(control->Position(), 300);
    Send(MciCommand::Pause);
    EXPECT_EQ(control->Position(), 300) << "what was rendered is still to be heard";
    Run(50);
    EXPECT_EQ(control->Position(), 350);
    Run(200);
    EXPECT_EQ(control->Position(), 400);
}

TEST_F(MMControlTest, APauseBeforeTheRenderedEndIsHeardAborts) {
    output.latency = 4410;
    ASSERT_FALSE(Open());
    Send(MciCommand::Play);
    Run(2050);
    TakeLog();
    Send(MciCommand::Pause);
    Run(500);
    EXPECT_EQ(TakeLog(), "4u");
    EXPECT_EQ(control->Mode(), MciMode::Paused);
    EXPECT_EQ(control->Position(), 2000);
    Send(MciCommand::Play);
    Run(500);
    EXPECT_EQ(log.back(), '1');
    EXPECT_EQ(control->Mode(), MciMode::Stopped);
}

TEST_F(MMControlTest, PositionRunsOnBetweenReadingsAndNeverBack) {
    ASSERT_FALSE(Open());
    Send(MciCommand::Play);
    output.Ask(44100);
    output.reported = 4410;
    EXPECT_EQ(control->Position(), 100);
    clock.Advance(milliseconds(7));
    EXPECT_EQ(control->Position(), 107);
    output.reported = 4410 + 220;  // 5 ms
    EXPECT_EQ(control->Position(), 107);
    clock.Advance(milliseconds(4));
    EXPECT_EQ(control->Position(), 109);
    clock.Advance(milliseconds(5000));
    EXPECT_EQ(control->Position(), 1000) << "more than was rendered";
}

TEST_F(MMControlTest, ALyingDeviceCannotStopTheSong) {
    const std::vector<std::function<std::int64_t()>> lies = {
        [this] { return output.asked + 50000; },
        [] { return std::int64_t{0}; },
        [this] { return output.asked % 60000; },
        [this] { return -output.asked; },
    };
    for (const auto& lie : lies) {
        ASSERT_FALSE(Open());
        TakeLog();
        Send(MciCommand::Play);
        std::int32_t last = 0;
        for (int i = 0; i < 300; ++i) {
            output.reported = lie();
            Run(10);
            EXPECT_GE(control->Position(), last);
            EXPECT_LE(control->Position(), 10 * (i + 1));
            last = control->Position();
        }
        EXPECT_EQ(control->Position(), 2000);
        EXPECT_EQ(log.back(), '1');
    }
}

TEST_F(MMControlTest, HandlersMayCommandCloseAndOpen) {
    ASSERT_FALSE(Open());
    int reports = 0;
    control->onStatusUpdate = [&] {
        if (++reports == 5) {
            Send(MciCommand::Close);
        }
    };
    Send(MciCommand::Play);
    Run(200);
    EXPECT_EQ(reports, 5);
    EXPECT_EQ(log, "") << "Close drops what is pending";

    ASSERT_FALSE(Open());
    control->onDone = [this](MciNotify how) {
        log += std::to_string(static_cast<int>(how));
        Send(how == MciNotify::Successful ? MciCommand::Close : MciCommand::Play);
        if (how == MciNotify::Successful) {
            EXPECT_FALSE(Open());
        }
    };
    Send(MciCommand::Play);
    Send(MciCommand::Pause);
    Run(3000);
    EXPECT_EQ(log.substr(0, 2), "4u");
    EXPECT_EQ(log.substr(log.size() - 3), "u1u");
    EXPECT_EQ(control->Mode(), MciMode::Stopped);
}

TEST_F(MMControlTest, QuietHoldsReportsBack) {
    ASSERT_FALSE(Open());
    Send(MciCommand::Play);
    Run(50);
    TakeLog();
    {
        const MMControl::Quiet quiet(*control);
        Send(MciCommand::Pause);
        Send(MciCommand::Play);
        Run(2500);
        EXPECT_EQ(log, "");
    }
    EXPECT_EQ(log, "");
    Run(10);
    EXPECT_EQ(TakeLog(), "4u1");
}

}  // namespace
}  // namespace sonnel::test
