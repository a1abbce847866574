#pragma once

#include "platform/AudioOutput.h"
#include "platform/Clock.h"
#include "platform/Result.h"
#include "platform/Synthesizer.h"
#include "platform/Timer.h"
#include "platform/midi/Performance.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace sonnel {

class OpenSong;

/// State of the sequencer, with the numbers it shows.
enum class MciMode : int {
    NotReady = 524,
    Stopped = 525,
    Playing = 526,
    Recording = 527,
    Seeking = 528,
    Paused = 529,
    Open = 530
};

/// How a command ended.
enum class MciNotify : std::int16_t { Successful = 1, Superseded = 2, Aborted = 4, Failure = 8 };

enum class MciCommand { Open, Close, Play, Pause, Seek, Prev };

/// The MIDI sequencer as the player drives it, on the user-interface thread: one file at a time,
/// times in milliseconds.
class MMControl {
  public:
    MMControl(Synthesizer& synthesizer, AudioOutput& output, Timer& timer, const Clock& clock);
    ~MMControl();
    MMControl(const MMControl&) = delete;
    MMControl& operator=(const MMControl&) = delete;

    /// The file that the next Open opens; "" when no file is open. Close and a failed Open clear
    /// it.
    void SetFileName(std::string fileName) { fileName_ = std::move(fileName); }
    [[nodiscard]] const std::string& FileName() const { return fileName_; }

    /// Carries out a command. Only Open reports an error; the others ignore what cannot be done.
    std::optional<Error> Command(MciCommand command);
    /// How many commands there have been; of two equal readings none came between.
    [[nodiscard]] std::uint64_t Commands() const { return commands_; }

    [[nodiscard]] MciMode Mode() const { return mode_; }
    /// The position that is heard, in milliseconds; never goes back while playing.
    [[nodiscard]] std::int32_t Position();
    /// Length of the open file in milliseconds: its last event that is not an end-of-track mark.
    [[nodiscard]] std::int32_t Length() const;
    /// Target of the next Seek, in milliseconds; beyond the end means the end.
    void SetTo(std::int32_t ms) { seekTarget_ = ms; }

    /// Plays this song and the next ones in this key, tempo and melody; at once, also while
    /// playing.
    void Perform(const Performance& performance);
    [[nodiscard]] const Performance& Performed() const { return performance_; }

    /// The sound device in use, "" when there is none.
    [[nodiscard]] std::string OutputName() { return output_.Name(); }

    /// Asks for status reports every `ms` milliseconds while playing, one after each command, and
    /// one when the last sound before a Pause has been heard.
    void SetUpdateInterval(int ms);
    /// Handlers are called by the timer. Their owner must clear them before being destroyed.
    std::function<void()> onStatusUpdate;
    /// Play completes with Successful at the end of the song, with Aborted by Pause and Seek.
    std::function<void(MciNotify)> onDone;

    /// While one of these lives no report and no completion is delivered; they come afterwards.
    class Quiet {
      public:
        explicit Quiet(MMControl& control) : control_(control) { ++control_.quiet_; }
        ~Quiet() { --control_.quiet_; }
        Quiet(const Quiet&) = delete;
        Quiet& operator=(const Quiet&) = delete;

      private:
        MMControl& control_;
    };

  private:
    std::optional<Error> Open();
    std::optional<Error> OpenFile(const std::string& name);
    void Close();
    void Play();
    void Pause();
    void Seek(std::int32_t ms);
    void EndPlaying(MciMode next);
    void RequestReport();
    [[nodiscard]] bool ReportDue() const;
    void Tick();
    void Deliver();
    void UpdateTimer();

    Synthesizer& synth_;
    AudioOutput& output_;
    Timer& timer_;
    const Clock& clock_;

    std::string fileName_;
    std::unique_ptr<OpenSong> song_;
    MciMode mode_ = MciMode::NotReady;
    std::int32_t seekTarget_ = 0;
    Performance performance_;
    int updateInterval_ = 10;
    int timerInterval_ = 0;  ///< 0 while the timer is stopped

    std::uint64_t commands_ = 0;
    std::uint64_t openings_ = 0;  ///< counts Open and Close
    int aborted_ = 0;             ///< Plays that were interrupted and not yet reported
    bool reportDue_ = false;
    bool pausing_ = false;  ///< until the Pause is heard
    int quiet_ = 0;         ///< how many Quiets exist
};

/// The player's test for playing: true for the modes 526 and 527 only.
[[nodiscard]] constexpr bool IsPlaying(MciMode mode) {
    return (static_cast<int>(mode) & 526) == 526;
}

}  // namespace sonnel
