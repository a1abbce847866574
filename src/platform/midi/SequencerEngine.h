#pragma once

#include "platform/AudioOutput.h"
#include "platform/Synthesizer.h"
#include "platform/midi/Sequence.h"
#include "platform/midi/SpscRing.h"

#include <atomic>
#include <cstdint>
#include <span>
#include <vector>

namespace sonnel {

/// What the engine is to do. Serials count up from 1. The events to chase stay the sender's and
/// must live until Restored() has reached the serial.
struct EngineCommand {
    enum class Kind { Play, Pause, Seek };
    Kind kind = Kind::Play;
    std::uint64_t serial = 0;
    std::int64_t frame = 0;                             ///< of a Seek: the target
    const std::vector<std::uint32_t>* chase = nullptr;  ///< of a Seek, never null: see Chase()
};

/// From `streamFrame` of the sound output on the song is at `songFrame`, and goes on from there
/// when it is running.
struct EngineSegment {
    std::int64_t streamFrame = 0;
    std::int64_t songFrame = 0;
    std::uint64_t serial = 0;  ///< of the last command carried out
    bool running = false;
    bool ended = false;  ///< the song has come to its end
};

/// Plays a sequence on a synthesiser, on the sound output's thread: it neither locks, allocates nor
/// throws. Post, NextSegment and the counters are for one other thread. While the song does not run
/// the synthesiser is still rendered, so what rings on is heard. Where a song has more messages at
/// once than can be sent in time, they come a little later, so that the sound goes on.
class SequencerEngine final : public SoundSource {
  public:
    /// Both must outlive the engine; the synthesiser is freshly reset.
    SequencerEngine(const Sequence& sequence, Synthesizer& synthesizer);

    void Fill(std::span<float> out) noexcept override;

    /// Hands a command over; false when there is no room for it now. Each gives at most two
    /// segments; there is room for all as long as NextSegment is emptied before each Post.
    bool Post(const EngineCommand& command) noexcept { return commands_.Push(command); }
    bool NextSegment(EngineSegment& segment) noexcept { return segments_.Pop(segment); }
    /// Frames given to the output so far. All segments that begin before are there to be taken.
    [[nodiscard]] std::int64_t FramesRendered() const noexcept {
        return rendered_.load(std::memory_order_acquire);
    }
    /// Serial of the last Seek whose chase is no longer needed.
    [[nodiscard]] std::uint64_t Restored() const noexcept {
        return restored_.load(std::memory_order_acquire);
    }

  private:
    void TakeCommands() noexcept;
    void HandlePlay() noexcept;
    void HandlePause() noexcept;
    void HandleSeek(const EngineCommand& command) noexcept;
    void StartPlaying() noexcept;
    void StartFade() noexcept;
    void FinishFade() noexcept;
    void ReleaseNotes() noexcept;
    void RestoreSome() noexcept;
    std::int64_t SendDue() noexcept;
    void Send(const SequenceEvent& event) noexcept;
    void RenderBlock(std::span<float> block) noexcept;
    void Ramp(std::span<float> block) noexcept;
    void Publish() noexcept;

    const Sequence& sequence_;
    Synthesizer& synth_;
    const std::int64_t fadeFrames_;

    std::int64_t streamFrame_ = 0;
    std::int64_t songFrame_ = 0;
    std::size_t cursor_ = 0;
    std::int64_t window_ = -1;  ///< of the song: this many kWindowFrames from its start
    int room_ = 0;              ///< messages that may still be sent in it
    std::uint64_t serial_ = 0;
    bool running_ = false;
    bool ended_ = false;
    EngineCommand seek_;           ///< whose restoring is still to be done
    bool restorePending_ = false;  ///< for seek_
    bool restoring_ = false;       ///< it is under way
    std::size_t restoredEvents_ = 0;
    bool playAfterFade_ = false;  ///< and after the restoring it leads to
    bool fading_ = false;
    std::int64_t level_;  ///< of the sound: 0 is silence, fadeFrames_ all of it

    SpscRing<EngineCommand, 64> commands_;
    SpscRing<EngineSegment, 256> segments_;
    std::atomic<std::int64_t> rendered_{0};
    std::atomic<std::uint64_t> restored_{0};
};

}  // namespace sonnel
