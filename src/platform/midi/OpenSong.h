#pragma once

#include "platform/AudioOutput.h"
#include "platform/Clock.h"
#include "platform/Result.h"
#include "platform/midi/HeardFrames.h"
#include "platform/midi/Sequence.h"
#include "platform/midi/SequencerEngine.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <vector>

namespace sonnel {

/// An open song on the user-interface thread: sends commands to the engine and works out which
/// place of the song is heard.
class OpenSong {
  public:
    /// The synthesizer must be freshly reset.
    OpenSong(Sequence sequence, Synthesizer& synthesizer, AudioOutput& output, const Clock& clock);
    ~OpenSong();
    OpenSong(const OpenSong&) = delete;
    OpenSong& operator=(const OpenSong&) = delete;

    /// Starts the sound output, silent until Play.
    std::optional<Error> Start();
    void Play();
    void Pause();
    void Perform(const Performance& performance) { engine_.Perform(performance); }
    /// Moves to a place, at most to the start or the end.
    void Seek(std::int32_t ms);

    [[nodiscard]] std::int32_t LengthMs() const { return sequence_.lengthMs; }
    /// The place that is heard, in milliseconds; right after a Seek, its target.
    [[nodiscard]] std::int32_t PositionMs();
    /// True when the last command is heard.
    [[nodiscard]] bool Settled() { return Heard().serial >= serial_; }
    /// True when the end of the last Play has been heard.
    [[nodiscard]] bool Ended();

    /// Sends the commands that the engine had no room for and frees what it no longer needs.
    void Tidy();
    /// True while Tidy has to be called again.
    [[nodiscard]] bool HasBacklog() const { return !backlog_.empty(); }

  private:
    void Send(EngineCommand command);
    [[nodiscard]] EngineSegment Heard();
    [[nodiscard]] std::int32_t ToMs(std::int64_t songParts) const;

    struct ChaseList {
        std::uint64_t serial;
        std::vector<std::uint32_t> events;
    };

    const Sequence sequence_;
    AudioOutput& output_;
    const Clock& clock_;
    SequencerEngine engine_;
    HeardFrames heard_;
    std::uint64_t serial_ = 0;
    std::uint64_t playSerial_ = 0;
    std::uint64_t seekSerial_ = 0;
    std::int64_t seekFrame_ = 0;
    std::deque<EngineSegment> segments_;
    std::deque<EngineCommand> backlog_;
    std::deque<std::unique_ptr<const ChaseList>> chases_;
};

}  // namespace sonnel
