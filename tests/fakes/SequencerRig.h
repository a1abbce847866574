#pragma once

#include "fakes/ManualClock.h"
#include "fakes/ManualOutput.h"
#include "fakes/ManualTimer.h"
#include "fakes/RecordingSynth.h"
#include "fakes/TempDirectory.h"
#include "platform/Numbers.h"
#include "platform/midi/MMControl.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <utility>

namespace sonnel::test {

/// The sequencer on a recording synthesizer or one of the test's choice, sound, clock and timer
/// moved by hand.
struct SequencerRig {
    SequencerRig() : SequencerRig(synth) {}
    explicit SequencerRig(Synthesizer& chosen) : control(chosen, output, timer, clock) {}

    /// Opens a song of these bytes; returns the error's text, or "".
    std::string Open(const std::string& midi) {
        control.SetFileName(folder.Write("song.mid", midi).string());
        const auto error = control.Command(MciCommand::Open);
        return error ? error->text : "";
    }
    void SeekTo(std::int32_t ms) {
        control.SetTo(ms);
        control.Command(MciCommand::Seek);
    }
    /// Lets time pass in steps of 10 ms.
    void Run(int ms) {
        for (int i = 0; i < ms; i += 10) {
            output.Ask(output.rate / 100);
            clock.Advance(std::chrono::milliseconds(10));
            timer.Fire();
        }
    }
    /// What the sequencer does, and at which millisecond.
    std::pair<MciMode, std::int32_t> State() { return {control.Mode(), control.Position()}; }
    std::int64_t Frame(double ms) const {
        return RoundHalfEven<std::int64_t>(ms * output.rate / 1000);
    }

    TempDirectory folder;
    RecordingSynth synth;
    ManualOutput output;
    ManualTimer timer;
    ManualClock clock;
    MMControl control;
};

}  // namespace sonnel::test
