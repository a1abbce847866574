#include "platform/midi/MMControl.h"

#include "platform/Paths.h"
#include "platform/midi/OpenSong.h"
#include "platform/midi/SmfReader.h"

#include <algorithm>
#include <utility>

namespace sonnel {
namespace {

/// Sets a flag while it lives.
class Flag {
  public:
    explicit Flag(bool& flag) : flag_(flag) { flag_ = true; }
    ~Flag() { flag_ = false; }
    Flag(const Flag&) = delete;
    Flag& operator=(const Flag&) = delete;

  private:
    bool& flag_;
};

}  // namespace

struct MMControl::Impl {
    Impl(MMControl& owner, Synthesizer& synthesizer, AudioOutput& audioOutput, Timer& ticks,
         const Clock& time)
        : control(owner), synth(synthesizer), output(audioOutput), timer(ticks), clock(time) {}

    std::optional<Error> Open();
    std::optional<Error> OpenFile(const std::string& name);
    void Close();
    void Play();
    void Pause();
    void Seek(std::int32_t ms);
    void EndPlaying(MciMode next);
    void RequestReport();
    [[nodiscard]] bool ReportDue() const {
        return mode == MciMode::Playing || reportDue || aborted > 0;
    }

    void Tick();
    void Deliver();
    bool DeliverStatus(std::uint64_t opening);
    [[nodiscard]] bool DeliverDone(MciNotify how, std::uint64_t opening) const;
    void UpdateTimer();

    MMControl& control;
    Synthesizer& synth;
    AudioOutput& output;
    Timer& timer;
    const Clock& clock;

    std::string fileName;
    std::unique_ptr<OpenSong> song;
    MciMode mode = MciMode::NotReady;
    std::int32_t seekTarget = 0;
    int updateInterval = 10;
    int timerInterval = 0;  ///< 0 while the timer stands

    std::uint64_t openings = 0;  ///< tells a handler's caller that the song has changed
    int aborted = 0;             ///< Plays that were interrupted and not yet reported
    bool reportDue = false;
    bool pausing = false;  ///< until the Pause is heard
    bool delivering = false;
    int quiet = 0;
};

std::optional<Error> MMControl::Impl::Open() {
    const std::string name = fileName;
    Close();
    auto error = OpenFile(name);
    if (error) {
        song.reset();
        return error;
    }
    fileName = name;
    mode = MciMode::Stopped;
    RequestReport();
    return std::nullopt;
}

std::optional<Error> MMControl::Impl::OpenFile(const std::string& name) {
    const auto file = ReadSmfFile(PathFromUtf8(name));
    if (!file) {
        return file.error();
    }
    const int rate = std::max(1, output.SampleRate());
    if (auto error = synth.Prepare(rate)) {
        return error;
    }
    synth.Reset();
    song = std::make_unique<OpenSong>(MakeSequence(*file, rate), synth, output, clock);
    return song->Start();
}

void MMControl::Impl::Close() {
    ++openings;
    song.reset();
    fileName.clear();
    mode = MciMode::NotReady;
    aborted = 0;
    reportDue = false;
    pausing = false;
    UpdateTimer();
}

void MMControl::Impl::Play() {
    if (mode != MciMode::Playing) {
        output.Maintain();
        mode = MciMode::Playing;
        pausing = false;
        song->Play();
    }
    RequestReport();
}

void MMControl::Impl::Pause() {
    if (mode == MciMode::Playing) {
        EndPlaying(MciMode::Paused);
        song->Pause();
        pausing = true;
    }
    RequestReport();
}

void MMControl::Impl::Seek(std::int32_t ms) {
    EndPlaying(MciMode::Stopped);
    pausing = false;
    song->Seek(ms);
    RequestReport();
}

void MMControl::Impl::EndPlaying(MciMode next) {
    aborted += mode == MciMode::Playing ? 1 : 0;
    mode = next;
}

void MMControl::Impl::RequestReport() {
    reportDue = true;
    UpdateTimer();
}

void MMControl::Impl::Tick() {
    output.Maintain();
    if (song) {
        song->Tidy();
    }
    // The position has moved on since the report that followed the command.
    if (pausing && song->Settled()) {
        pausing = false;
        reportDue = true;
    }
    // A handler may let events run: a report never overlaps another one.
    if (song && quiet == 0 && !delivering && ReportDue()) {
        const Flag flag(delivering);
        Deliver();
    }
    UpdateTimer();
}

void MMControl::Impl::Deliver() {
    const std::uint64_t opening = openings;
    const bool ended = mode == MciMode::Playing && song->Ended();
    if (ended) {
        mode = MciMode::Stopped;
    }
    for (int i = std::exchange(aborted, 0); i > 0; --i) {
        if (!DeliverDone(MciNotify::Aborted, opening)) {
            return;
        }
    }
    if (DeliverStatus(opening) && ended) {
        (void)DeliverDone(MciNotify::Successful, opening);  // nothing comes after it
    }
}

/// Both return whether the song is still the one that was open; a handler may have closed it.
bool MMControl::Impl::DeliverStatus(std::uint64_t opening) {
    reportDue = false;
    if (const auto handler = control.onStatusUpdate) {
        handler();
    }
    return openings == opening;
}

bool MMControl::Impl::DeliverDone(MciNotify how, std::uint64_t opening) const {
    if (const auto handler = control.onDone) {
        handler(how);
    }
    return openings == opening;
}

void MMControl::Impl::UpdateTimer() {
    const bool needed = song && (ReportDue() || pausing || song->HasBacklog());
    const int interval = needed ? updateInterval : 0;
    if (interval == timerInterval) {
        return;
    }
    timerInterval = interval;
    if (needed) {
        timer.Start(interval, [this] { Tick(); });
    } else {
        timer.Stop();
    }
}

MMControl::MMControl(Synthesizer& synthesizer, AudioOutput& output, Timer& timer,
                     const Clock& clock)
    : impl_(std::make_unique<Impl>(*this, synthesizer, output, timer, clock)) {}

MMControl::~MMControl() {
    impl_->Close();
}

void MMControl::SetFileName(std::string fileName) {
    impl_->fileName = std::move(fileName);
}

const std::string& MMControl::FileName() const {
    return impl_->fileName;
}

std::optional<Error> MMControl::Command(MciCommand command) {
    if (command == MciCommand::Open) {
        return impl_->Open();
    }
    if (!impl_->song) {
        return std::nullopt;
    }
    switch (command) {
        case MciCommand::Close:
            impl_->Close();
            break;
        case MciCommand::Play:
            impl_->Play();
            break;
        case MciCommand::Pause:
            impl_->Pause();
            break;
        case MciCommand::Seek:
            impl_->Seek(impl_->seekTarget);
            break;
        case MciCommand::Prev:
            impl_->Seek(0);
            break;
        case MciCommand::Open:
            break;
    }
    return std::nullopt;
}

MciMode MMControl::Mode() const {
    return impl_->mode;
}

std::int32_t MMControl::Position() const {
    return impl_->song ? impl_->song->PositionMs() : 0;
}

std::int32_t MMControl::Length() const {
    return impl_->song ? impl_->song->LengthMs() : 0;
}

void MMControl::SetTo(std::int32_t ms) {
    impl_->seekTarget = ms;
}

void MMControl::SetUpdateInterval(int ms) {
    impl_->updateInterval = std::max(1, ms);
    impl_->UpdateTimer();
}

MMControl::Quiet::Quiet(MMControl& control) : control_(control) {
    ++control_.impl_->quiet;
}

MMControl::Quiet::~Quiet() {
    --control_.impl_->quiet;
}

}  // namespace sonnel
