#include "platform/midi/SequencerEngine.h"

#include <algorithm>
#include <cstddef>
#include <limits>

namespace sonnel {
namespace {

constexpr std::int64_t kNever = std::numeric_limits<std::int64_t>::max();
constexpr std::size_t kRoomForCommands = 128;  // two segments for each that the queue holds
constexpr int kFadesPerSecond = 200;           // 5 ms each
/// A synthesizer with all its voices in use takes some 7 microseconds for a note, so this many take
/// about as long as the window lasts.
constexpr int kMostInWindow = 256;
constexpr std::int64_t kWindowFrames = 64;
constexpr std::uint8_t kControlChange = 0xB0;
constexpr std::uint8_t kSustainPedal = 64;
constexpr std::uint8_t kSostenutoPedal = 66;
constexpr std::uint8_t kAllNotesOff = 123;

}  // namespace

SequencerEngine::SequencerEngine(const Sequence& sequence, Synthesizer& synthesizer)
    : sequence_(sequence),
      synth_(synthesizer),
      notes_(synthesizer),
      fadeFrames_(std::max(1, sequence.rate / kFadesPerSecond)),
      level_(fadeFrames_) {}

void SequencerEngine::Fill(std::span<float> out) noexcept {
    while (out.size() >= 2) {
        if (state_ == State::Restoring) {
            RestoreSome();
        }
        TakeCommands();
        Adopt();
        const auto room = static_cast<std::int64_t>(out.size() / 2);
        const std::int64_t frames = std::min(room, FramesToNextStep());
        const auto samples = 2 * static_cast<std::size_t>(frames);
        RenderBlock(out.first(samples));
        out = out.subspan(samples);
    }
    rendered_.store(streamFrame_, std::memory_order_release);
}

/// Takes over the newest record. A change of tempo needs a segment, and leaves room for those of
/// commands: when there is none it waits.
void SequencerEngine::Adopt() noexcept {
    const std::uint32_t wanted = wanted_.load(std::memory_order_acquire);
    if (wanted == adopted_) {
        return;
    }
    const Performance performance = Unpacked(wanted);
    if (performance.tempo != tempo_) {
        if (state_ == State::Playing && segments_.Room() < kRoomForCommands) {
            return;
        }
        tempo_ = performance.tempo;
        if (state_ == State::Playing) {
            Enter(State::Playing);
        }
    }
    adopted_ = wanted;
    notes_.Adopt(performance);
}

void SequencerEngine::TakeCommands() noexcept {
    EngineCommand command;
    while (state_ != State::Fading && state_ != State::Restoring && commands_.Pop(command)) {
        serial_ = command.serial;
        switch (command.kind) {
            case EngineCommand::Kind::Play:
                HandlePlay();
                break;
            case EngineCommand::Kind::Pause:
                HandlePause();
                break;
            case EngineCommand::Kind::Seek:
                HandleSeek(command);
                break;
        }
    }
}

void SequencerEngine::HandlePlay() noexcept {
    if (state_ == State::Rewound) {
        StartFade(Goal::RestoredAndPlaying);
    } else {
        Enter(State::Playing);
    }
}

void SequencerEngine::HandlePause() noexcept {
    const Goal goal = state_ == State::Rewound ? Goal::Restored : Goal::Silence;
    Enter(State::Stopped);
    StartFade(goal);
}

void SequencerEngine::HandleSeek(const EngineCommand& command) noexcept {
    seek_ = command;
    songParts_ = command.frame * kSongParts;
    cursor_ = sequence_.FirstAt(command.frame);
    window_ = -1;
    if (state_ == State::Ended) {
        Enter(State::Rewound);
        ReleaseNotes();
    } else {
        Enter(State::Stopped);
        StartFade(Goal::Restored);
    }
}

/// Enters a state and reports it to the other thread, with the place in the song.
void SequencerEngine::Enter(State state) noexcept {
    state_ = state;
    segments_.Push({streamFrame_, songParts_, tempo_, serial_, state == State::Playing,
                    state == State::Ended});
}

void SequencerEngine::StartFade(Goal goal) noexcept {
    state_ = State::Fading;
    goal_ = goal;
    if (level_ == 0) {
        FinishFade();
    }
}

void SequencerEngine::FinishFade() noexcept {
    synth_.AllSoundOff();
    notes_.Forget();
    if (goal_ == Goal::Silence) {
        state_ = State::Stopped;
        return;
    }
    synth_.Reset();
    state_ = State::Restoring;
    restoredEvents_ = 0;
    RestoreSome();
}

void SequencerEngine::ReleaseNotes() noexcept {
    for (std::uint8_t channel = 0; channel < 16; ++channel) {
        const auto status = static_cast<std::uint8_t>(kControlChange | channel);
        for (const std::uint8_t controller : {kSustainPedal, kSostenutoPedal, kAllNotesOff}) {
            synth_.ChannelMessage(status, controller, 0);
        }
    }
}

/// Sends the next of the chased events; after the last one the song stands still or plays.
void SequencerEngine::RestoreSome() noexcept {
    const std::vector<std::uint32_t>& chase = *seek_.chase;
    const std::size_t end = std::min(chase.size(), restoredEvents_ + kMostInWindow);
    for (; restoredEvents_ < end; ++restoredEvents_) {
        Send(sequence_.events[chase[restoredEvents_]]);
    }
    if (restoredEvents_ < chase.size()) {
        return;
    }
    level_ = fadeFrames_;
    restored_.store(seek_.serial, std::memory_order_release);
    if (goal_ == Goal::RestoredAndPlaying) {
        Enter(State::Playing);
    } else {
        state_ = State::Stopped;
    }
}

/// Frames that can be rendered at once before there is something to do.
std::int64_t SequencerEngine::FramesToNextStep() noexcept {
    switch (state_) {
        case State::Fading:
            return level_;
        case State::Restoring:
            return kWindowFrames;
        case State::Playing:
            return SendDue();
        default:
            return kNever;
    }
}

/// Sends what is due now; returns the frames until more is.
std::int64_t SequencerEngine::SendDue() noexcept {
    const auto& events = sequence_.events;
    const std::int64_t songFrame = songParts_ / kSongParts;
    if (window_ != songFrame / kWindowFrames) {
        window_ = songFrame / kWindowFrames;
        room_ = kMostInWindow;
    }
    while (cursor_ < events.size() && events[cursor_].frame <= songFrame) {
        if (room_ == 0) {
            return FramesTo((window_ + 1) * kWindowFrames);
        }
        --room_;
        Send(events[cursor_++]);
    }
    if (songFrame >= sequence_.endFrame) {
        Enter(State::Ended);
        return kNever;
    }
    const std::int64_t next = cursor_ < events.size() ? events[cursor_].frame : sequence_.endFrame;
    return FramesTo(next);
}

/// Frames to be rendered until the song has come to a frame of its own that lies ahead.
std::int64_t SequencerEngine::FramesTo(std::int64_t songFrame) const noexcept {
    return (songFrame * kSongParts - songParts_ + tempo_ - 1) / tempo_;
}

void SequencerEngine::Send(const SequenceEvent& event) noexcept {
    if (event.status == kSysEx) {
        synth_.SystemExclusive(sequence_.Exclusive(event));
    } else {
        notes_.Send(event.status, event.data1, event.data2);
    }
}

void SequencerEngine::RenderBlock(std::span<float> block) noexcept {
    const auto frames = static_cast<std::int64_t>(block.size() / 2);
    synth_.Render(block);
    streamFrame_ += frames;
    if (state_ == State::Playing) {
        songParts_ += frames * tempo_;
    }
    Ramp(block);
}

/// Takes the sound down to silence, or up again (an echo may be left), without a click.
void SequencerEngine::Ramp(std::span<float> block) noexcept {
    const bool fading = state_ == State::Fading;
    for (std::size_t i = 0; i + 1 < block.size() && (fading || level_ < fadeFrames_); i += 2) {
        level_ += fading ? -1 : 1;
        const float gain = static_cast<float>(level_) / static_cast<float>(fadeFrames_);
        block[i] *= gain;
        block[i + 1] *= gain;
    }
    if (fading && level_ == 0) {
        FinishFade();
    }
}

}  // namespace sonnel
