#include "platform/midi/SequencerEngine.h"

#include <algorithm>
#include <cstddef>
#include <limits>

namespace sonnel {
namespace {

constexpr int kFadesPerSecond = 200;  // 5 ms each
/// A synthesiser with all its voices in use takes some 7 microseconds for a note, so this many take
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
      fadeFrames_(std::max(1, sequence.rate / kFadesPerSecond)),
      level_(fadeFrames_) {}

void SequencerEngine::Fill(std::span<float> out) noexcept {
    while (out.size() >= 2) {
        if (restoring_) {
            RestoreSome();
        }
        TakeCommands();
        auto frames = static_cast<std::int64_t>(out.size() / 2);
        if (fading_) {
            frames = std::min(frames, level_);
        } else if (restoring_) {
            frames = std::min(frames, kWindowFrames);
        } else if (running_) {
            frames = std::min(frames, SendDue());
        }
        const auto samples = 2 * static_cast<std::size_t>(frames);
        RenderBlock(out.first(samples));
        out = out.subspan(samples);
    }
    rendered_.store(streamFrame_, std::memory_order_release);
}

void SequencerEngine::TakeCommands() noexcept {
    EngineCommand command;
    while (!fading_ && !restoring_ && commands_.Pop(command)) {
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
    if (restorePending_) {
        playAfterFade_ = true;
        StartFade();
    } else {
        StartPlaying();
    }
}

void SequencerEngine::HandlePause() noexcept {
    running_ = false;
    ended_ = false;
    Publish();
    StartFade();
}

void SequencerEngine::HandleSeek(const EngineCommand& command) noexcept {
    seek_ = command;
    restorePending_ = true;
    songFrame_ = command.frame;
    cursor_ = sequence_.FirstAt(command.frame);
    window_ = -1;
    running_ = false;
    const bool rewound = ended_;
    ended_ = false;
    Publish();
    if (rewound) {
        // The last chord may ring on while the song is rewound; Play will restore.
        ReleaseNotes();
    } else {
        StartFade();
    }
}

void SequencerEngine::StartPlaying() noexcept {
    running_ = true;
    ended_ = false;
    Publish();
}

void SequencerEngine::StartFade() noexcept {
    fading_ = true;
    if (level_ == 0) {
        FinishFade();
    }
}

void SequencerEngine::FinishFade() noexcept {
    fading_ = false;
    synth_.AllSoundOff();
    if (restorePending_) {
        restorePending_ = false;
        synth_.Reset();
        restoring_ = true;
        restoredEvents_ = 0;
        RestoreSome();
    }
}

void SequencerEngine::ReleaseNotes() noexcept {
    for (std::uint8_t channel = 0; channel < 16; ++channel) {
        const auto status = static_cast<std::uint8_t>(kControlChange | channel);
        for (const std::uint8_t controller : {kSustainPedal, kSostenutoPedal, kAllNotesOff}) {
            synth_.ChannelMessage(status, controller, 0);
        }
    }
}

/// Sends the next of the chased events, and begins to play after the last of them when that is due.
void SequencerEngine::RestoreSome() noexcept {
    const std::vector<std::uint32_t>& chase = *seek_.chase;
    const std::size_t end = std::min(chase.size(), restoredEvents_ + kMostInWindow);
    for (; restoredEvents_ < end; ++restoredEvents_) {
        Send(sequence_.events[chase[restoredEvents_]]);
    }
    if (restoredEvents_ < chase.size()) {
        return;
    }
    restoring_ = false;
    level_ = fadeFrames_;
    restored_.store(seek_.serial, std::memory_order_release);
    if (playAfterFade_) {
        playAfterFade_ = false;
        StartPlaying();
    }
}

/// Sends what is due now; returns the frames until more is.
std::int64_t SequencerEngine::SendDue() noexcept {
    const auto& events = sequence_.events;
    if (window_ != songFrame_ / kWindowFrames) {
        window_ = songFrame_ / kWindowFrames;
        room_ = kMostInWindow;
    }
    while (cursor_ < events.size() && events[cursor_].frame <= songFrame_) {
        if (room_ == 0) {
            return (window_ + 1) * kWindowFrames - songFrame_;
        }
        --room_;
        Send(events[cursor_++]);
    }
    if (songFrame_ >= sequence_.endFrame) {
        running_ = false;
        ended_ = true;
        Publish();
        return std::numeric_limits<std::int64_t>::max();
    }
    const std::int64_t next = cursor_ < events.size() ? events[cursor_].frame : sequence_.endFrame;
    return next - songFrame_;
}

void SequencerEngine::Send(const SequenceEvent& event) noexcept {
    if (event.status == kSysEx) {
        synth_.SystemExclusive(sequence_.Exclusive(event));
    } else {
        synth_.ChannelMessage(event.status, event.data1, event.data2);
    }
}

void SequencerEngine::RenderBlock(std::span<float> block) noexcept {
    const auto frames = static_cast<std::int64_t>(block.size() / 2);
    synth_.Render(block);
    streamFrame_ += frames;
    if (running_) {
        songFrame_ += frames;
    }
    if (fading_ || level_ < fadeFrames_) {
        Ramp(block);
    }
}

/// Takes the sound down to silence, or up again (an echo may be left), without a step that would
/// click.
void SequencerEngine::Ramp(std::span<float> block) noexcept {
    for (std::size_t i = 0; i + 1 < block.size() && (fading_ || level_ < fadeFrames_); i += 2) {
        level_ += fading_ ? -1 : 1;
        const float gain = static_cast<float>(level_) / static_cast<float>(fadeFrames_);
        block[i] *= gain;
        block[i + 1] *= gain;
    }
    if (fading_ && level_ == 0) {
        FinishFade();
    }
}

void SequencerEngine::Publish() noexcept {
    segments_.Push({streamFrame_, songFrame_, serial_, running_, ended_});
}

}  // namespace sonnel
