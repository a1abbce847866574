#include "platform/midi/OpenSong.h"

#include "platform/Numbers.h"
#include "platform/midi/Chase.h"

#include <algorithm>
#include <utility>

namespace sonnel {

OpenSong::OpenSong(Sequence sequence, Synthesizer& synthesizer, AudioOutput& output,
                   const Clock& clock)
    : sequence_(std::move(sequence)),
      output_(output),
      clock_(clock),
      engine_(sequence_, synthesizer),
      heard_(sequence_.rate) {}

OpenSong::~OpenSong() {
    output_.Stop();
}

std::optional<Error> OpenSong::Start() {
    return output_.Start(engine_);
}

void OpenSong::Play() {
    Send({EngineCommand::Kind::Play});
    playSerial_ = serial_;
}

void OpenSong::Pause() {
    Send({EngineCommand::Kind::Pause});
}

void OpenSong::Seek(std::int32_t ms) {
    const double frame = 1e-3 * std::max(ms, 0) * sequence_.rate;
    seekFrame_ = ms >= sequence_.lengthMs
                     ? sequence_.endFrame
                     : std::min(RoundHalfEven<std::int64_t>(frame), sequence_.endFrame);
    backlog_.clear();  // a Seek replaces all commands before it
    auto chase = std::make_unique<const ChaseList>(
        ChaseList{serial_ + 1, Chase(sequence_, sequence_.FirstAt(seekFrame_))});
    const std::vector<std::uint32_t>* events = &chase->events;
    chases_.push_back(std::move(chase));
    Send({EngineCommand::Kind::Seek, 0, seekFrame_, events});
    seekSerial_ = serial_;
}

void OpenSong::Send(EngineCommand command) {
    command.serial = ++serial_;
    backlog_.push_back(command);
    Tidy();
}

void OpenSong::Tidy() {
    EngineSegment segment;
    while (engine_.NextSegment(segment)) {
        segments_.push_back(segment);
    }
    while (!backlog_.empty() && engine_.Post(backlog_.front())) {
        backlog_.pop_front();
    }
    const std::uint64_t restored = engine_.Restored();
    while (!chases_.empty() && chases_.front()->serial <= restored) {
        chases_.pop_front();
    }
}

/// The last thing the engine did that is already heard.
EngineSegment OpenSong::Heard() {
    const std::int64_t rendered = engine_.FramesRendered();
    const std::int64_t heard = heard_.Update(output_.FramesHeard(), rendered, clock_.Steady());
    Tidy();
    while (segments_.size() > 1 && segments_[1].streamFrame <= heard) {
        segments_.pop_front();
    }
    if (segments_.empty() || segments_.front().streamFrame > heard ||
        segments_.front().serial < seekSerial_) {
        return {heard, seekFrame_ * kSongParts, kSongParts, seekSerial_, false, false};
    }
    EngineSegment current = segments_.front();
    if (current.running) {
        current.songParts += (heard - current.streamFrame) * current.tempo;
    }
    return current;
}

std::int32_t OpenSong::PositionMs() {
    return ToMs(Heard().songParts);
}

bool OpenSong::Ended() {
    const EngineSegment heard = Heard();
    return heard.ended && heard.serial >= playSerial_;
}

std::int32_t OpenSong::ToMs(std::int64_t songParts) const {
    if (songParts >= sequence_.endFrame * kSongParts) {
        return sequence_.lengthMs;
    }
    const double ms = 1000.0 * static_cast<double>(songParts) / kSongParts / sequence_.rate;
    return std::min(RoundHalfEven<std::int32_t>(ms), sequence_.lengthMs);
}

}  // namespace sonnel
