#include "platform/midi/MMControl.h"

#include "platform/Paths.h"
#include "platform/midi/OpenSong.h"
#include "platform/midi/SmfReader.h"

#include <algorithm>
#include <utility>

namespace sonnel {
namespace {

/// Calls a copy of the handler, because a handler may replace itself.
template <class Handler, class... Arguments>
void Call(Handler handler, Arguments... arguments) {
    if (handler) {
        handler(arguments...);
    }
}

}  // namespace

MMControl::MMControl(Synthesizer& synthesizer, AudioOutput& output, Timer& timer,
                     const Clock& clock)
    : synth_(synthesizer), output_(output), timer_(timer), clock_(clock) {}

MMControl::~MMControl() {
    Close();
}

std::optional<Error> MMControl::Command(MciCommand command) {
    ++commands_;
    if (command == MciCommand::Open) {
        return Open();
    }
    if (!song_) {
        return std::nullopt;
    }
    switch (command) {
        case MciCommand::Close:
            Close();
            break;
        case MciCommand::Play:
            Play();
            break;
        case MciCommand::Pause:
            Pause();
            break;
        case MciCommand::Seek:
            Seek(seekTarget_);
            break;
        case MciCommand::Prev:
            Seek(0);
            break;
        case MciCommand::Open:
            break;
    }
    return std::nullopt;
}

std::optional<Error> MMControl::Open() {
    const std::string name = fileName_;
    Close();
    auto error = OpenFile(name);
    if (error) {
        song_.reset();
        return error;
    }
    fileName_ = name;
    mode_ = MciMode::Stopped;
    RequestReport();
    return std::nullopt;
}

std::optional<Error> MMControl::OpenFile(const std::string& name) {
    const auto file = ReadSmfFile(PathFromUtf8(name));
    if (!file) {
        return file.error();
    }
    if (auto refusal = RefusalToPlay(*file)) {
        return refusal;
    }
    const int rate = std::max(1, output_.SampleRate());
    if (auto error = synth_.Prepare(rate)) {
        return error;
    }
    synth_.Reset();
    song_ = std::make_unique<OpenSong>(MakeSequence(*file, rate), synth_, output_, clock_);
    song_->Perform(performance_);
    return song_->Start();
}

void MMControl::Perform(const Performance& performance) {
    performance_ = Unpacked(Packed(performance));
    if (song_) {
        song_->Perform(performance_);
    }
}

void MMControl::Close() {
    ++openings_;
    song_.reset();
    fileName_.clear();
    mode_ = MciMode::NotReady;
    aborted_ = 0;
    reportDue_ = false;
    pausing_ = false;
    UpdateTimer();
}

void MMControl::Play() {
    if (mode_ != MciMode::Playing) {
        output_.LookAgain();
        mode_ = MciMode::Playing;
        pausing_ = false;
        song_->Play();
    }
    RequestReport();
}

void MMControl::Pause() {
    if (mode_ == MciMode::Playing) {
        EndPlaying(MciMode::Paused);
        song_->Pause();
        pausing_ = true;
    }
    RequestReport();
}

void MMControl::Seek(std::int32_t ms) {
    EndPlaying(MciMode::Stopped);
    pausing_ = false;
    song_->Seek(ms);
    RequestReport();
}

void MMControl::EndPlaying(MciMode next) {
    aborted_ += mode_ == MciMode::Playing ? 1 : 0;
    mode_ = next;
}

void MMControl::RequestReport() {
    reportDue_ = true;
    UpdateTimer();
}

bool MMControl::ReportDue() const {
    return mode_ == MciMode::Playing || reportDue_ || aborted_ > 0;
}

void MMControl::Tick() {
    output_.Maintain();
    if (song_) {
        song_->Tidy();
    }
    // The position has moved on since the report that followed the command.
    if (pausing_ && song_->Settled()) {
        pausing_ = false;
        reportDue_ = true;
    }
    if (song_ && quiet_ == 0 && ReportDue()) {
        const Quiet quiet(*this);  // a handler may let events run, and reports never overlap
        Deliver();
    }
    UpdateTimer();
}

void MMControl::Deliver() {
    const bool ended = mode_ == MciMode::Playing && song_->Ended();
    if (ended) {
        mode_ = MciMode::Stopped;
    }
    // Once a handler has opened or closed a song, the remaining reports no longer apply.
    const std::uint64_t opening = openings_;
    for (int i = std::exchange(aborted_, 0); i > 0 && openings_ == opening; --i) {
        Call(onDone, MciNotify::Aborted);
    }
    if (openings_ != opening) {
        return;
    }
    reportDue_ = false;
    Call(onStatusUpdate);
    if (ended && openings_ == opening) {
        Call(onDone, MciNotify::Successful);
    }
}

void MMControl::UpdateTimer() {
    const bool needed = song_ && (ReportDue() || pausing_ || song_->HasBacklog());
    const int interval = needed ? updateInterval_ : 0;
    if (interval == timerInterval_) {
        return;
    }
    timerInterval_ = interval;
    if (needed) {
        timer_.Start(interval, [this] { Tick(); });
    } else {
        timer_.Stop();
    }
}

std::int32_t MMControl::Position() {
    return song_ ? song_->PositionMs() : 0;
}

std::int32_t MMControl::Length() const {
    return song_ ? song_->LengthMs() : 0;
}

void MMControl::SetUpdateInterval(int ms) {
    updateInterval_ = std::max(1, ms);
    UpdateTimer();
}

}  // namespace sonnel
