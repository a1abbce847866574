#pragma once

#include "platform/AudioOutput.h"
#include "platform/Synthesizer.h"
#include "platform/midi/NoteSender.h"
#include "platform/midi/Performance.h"
#include "platform/midi/Sequence.h"
#include "platform/midi/SpscRing.h"

#include <atomic>
#include <cstdint>
#include <span>
#include <vector>

namespace sonnel {

/// A command to the engine. Serials count up from 1. The sender owns the events to chase and keeps
/// them until Restored() has reached the serial.
struct EngineCommand {
    enum class Kind { Play, Pause, Seek };
    Kind kind = Kind::Play;
    std::uint64_t serial = 0;
    std::int64_t frame = 0;                             ///< of a Seek: the target
    const std::vector<std::uint32_t>* chase = nullptr;  ///< of a Seek, never null: see Chase()
};

/// The song's own time is counted in these parts of a frame, so that any tempo in percent is exact.
inline constexpr std::int64_t kSongParts = 100;

/// At `streamFrame` of the sound output the song is at `songParts`, and advances from there by
/// `tempo` parts a frame when it is running.
struct EngineSegment {
    std::int64_t streamFrame = 0;
    std::int64_t songParts = 0;
    int tempo = kSongParts;
    std::uint64_t serial = 0;  ///< of the last command carried out
    bool running = false;
    bool ended = false;  ///< the song has come to its end
};

/// Plays a sequence on a synthesizer, on the sound output's thread: it neither locks, allocates nor
/// throws. Post, NextSegment and the counters are for one other thread. The synthesizer is also
/// rendered while the song stands still, so that its last sound can fade away. When a song has more
/// messages at once than can be sent in time, some are sent late so that the sound has no gaps.
class SequencerEngine final : public SoundSource {
  public:
    /// Both must outlive the engine; the synthesizer is freshly reset.
    SequencerEngine(const Sequence& sequence, Synthesizer& synthesizer);

    void Fill(std::span<float> out) noexcept override;

    /// Hands a command over; false when the queue is full. Each command gives at most two segments,
    /// which always fit when NextSegment is called until it returns false before each Post.
    bool Post(const EngineCommand& command) noexcept { return commands_.Push(command); }
    bool NextSegment(EngineSegment& segment) noexcept { return segments_.Pop(segment); }
    /// The newest record counts from the next block on. Any thread.
    void Perform(const Performance& performance) noexcept {
        wanted_.store(Packed(performance), std::memory_order_release);
    }
    /// Frames given to the output so far. All segments that begin before them can be taken.
    [[nodiscard]] std::int64_t FramesRendered() const noexcept {
        return rendered_.load(std::memory_order_acquire);
    }
    /// Serial of the last Seek whose chase is no longer needed.
    [[nodiscard]] std::uint64_t Restored() const noexcept {
        return restored_.load(std::memory_order_acquire);
    }

  private:
    enum class State : std::uint8_t {
        Stopped,   ///< the song stands still
        Playing,   ///< the song runs
        Ended,     ///< it ran to its end; the last sound rings on
        Rewound,   ///< then it was sought: the sound rings on, restoring waits for Play or Pause
        Fading,    ///< the sound goes down to silence, then on to goal_
        Restoring  ///< the chased events are being sent, then on to goal_
    };
    /// Where Fading and Restoring lead.
    enum class Goal : std::uint8_t { Silence, Restored, RestoredAndPlaying };

    void Adopt() noexcept;
    void TakeCommands() noexcept;
    void HandlePlay() noexcept;
    void HandlePause() noexcept;
    void HandleSeek(const EngineCommand& command) noexcept;
    void Enter(State state) noexcept;
    void StartFade(Goal goal) noexcept;
    void FinishFade() noexcept;
    void ReleaseNotes() noexcept;
    void RestoreSome() noexcept;
    std::int64_t FramesToNextStep() noexcept;
    std::int64_t SendDue() noexcept;
    [[nodiscard]] std::int64_t FramesTo(std::int64_t songFrame) const noexcept;
    void Send(const SequenceEvent& event) noexcept;
    void RenderBlock(std::span<float> block) noexcept;
    void Ramp(std::span<float> block) noexcept;

    const Sequence& sequence_;
    Synthesizer& synth_;
    NoteSender notes_;
    const std::int64_t fadeFrames_;

    std::int64_t streamFrame_ = 0;
    std::int64_t songParts_ = 0;
    int tempo_ = kSongParts;  ///< parts a frame
    std::size_t cursor_ = 0;
    std::int64_t window_ = -1;  ///< of the song: this many kWindowFrames from its start
    int room_ = 0;              ///< messages that may still be sent in it
    std::uint64_t serial_ = 0;
    State state_ = State::Stopped;
    Goal goal_ = Goal::Silence;
    EngineCommand seek_;  ///< the last Seek
    std::size_t restoredEvents_ = 0;
    std::int64_t level_;  ///< of the sound: 0 is silence, fadeFrames_ all of it

    SpscRing<EngineCommand, 64> commands_;
    SpscRing<EngineSegment, 256> segments_;
    std::atomic<std::int64_t> rendered_{0};
    std::atomic<std::uint64_t> restored_{0};
    std::atomic<std::uint32_t> wanted_{Packed({})};
    std::uint32_t adopted_ = Packed({});
};

}  // namespace sonnel
