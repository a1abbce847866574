// Plays a song on the default sound device, with the player's own sequencer and synthesizer. Run by
// sound_device.py.
//   sound_device sync PIPE   compares the position at each onset with the recording in PIPE; prints
//                            the largest difference in milliseconds
//   sound_device gaps PIPE   plays a level for twenty seconds and prints how often the recording in
//                            PIPE falls silent
//   sound_device loss        plays for ten seconds while the device goes away and comes back;
//   prints
//                            the longest time in milliseconds in which the position stood still

#include "fakes/ManualTimer.h"
#include "fakes/SmallSoundFont.h"
#include "fakes/SmfBuilder.h"
#include "fakes/TempDirectory.h"
#include "platform/audio/CubebOutput.h"
#include "platform/audio/DefaultOutput.h"
#include "platform/audio/FluidSynthesizer.h"
#include "platform/midi/MMControl.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>
#include <thread>

#include <fcntl.h>
#include <unistd.h>

namespace sonnel::test {
namespace {

using Steady = std::chrono::steady_clock;
using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr int kRecordingRate = 48000;
constexpr int kClicks = 40;

double Ms(Steady::duration time) {
    return std::chrono::duration<double, std::milli>(time).count();
}

/// The time of click `number` in milliseconds: after a silent start, at uneven distances so that a
/// shift by one click cannot pass for a match.
int ClickMs(int number) {
    return 1500 + 200 * number + 30 * (number * number % 4);
}

/// A song of side sticks, which are loud from their first milliseconds and soon over, without echo.
/// A tick is a millisecond. A last, silent event keeps the song going.
std::string ClickSong() {
    constexpr int drums = 9;
    constexpr int sideStick = 37;
    SmfBuilder song(0, 500);
    song.Control(0, 7, 127, drums).Control(0, 91, 0, drums).Control(0, 93, 0, drums);
    for (int i = 0; i < kClicks; ++i) {
        song.Message(static_cast<std::uint32_t>(ClickMs(i)), {0x90 + drums, sideStick, 127});
    }
    return song.Control(15000, 7, 0, drums).Bytes();
}

class SteadyClock : public Clock {
  public:
    [[nodiscard]] double TimeOfDay() const override { return 0; }
    [[nodiscard]] std::chrono::nanoseconds Steady() const override {
        return Steady::now().time_since_epoch();
    }
};

/// The click song, playing into an output.
class Player {
  public:
    explicit Player(AudioOutput& output) : control_(synth_, output, timer_, clock_) {
        control_.SetFileName(folder_.Write("clicks.mid", ClickSong()).string());
        if (const auto error = control_.Command(MciCommand::Open)) {
            throw std::runtime_error(error->text);
        }
        control_.Command(MciCommand::Play);
    }
    /// The position in milliseconds. To be called often, because it runs the timer.
    int Position() {
        if (Steady::now() >= next_) {
            next_ = Steady::now() + milliseconds(10);
            timer_.Fire();
        }
        return control_.Position();
    }

  private:
    TempDirectory folder_;
    FluidSynthesizer synth_{SmallSoundFont};
    ManualTimer timer_;
    SteadyClock clock_;
    Steady::time_point next_;
    MMControl control_;
};

/// What is heard at a sink's monitor: stereo floats read from a named pipe.
class Recording {
  public:
    explicit Recording(const std::string& pipe)
        : file_(open(pipe.c_str(), O_RDONLY | O_NONBLOCK)) {}
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;
    ~Recording() { close(file_); }

    /// Takes what has arrived; false when nothing has.
    bool Read() {
        std::array<float, 8192> samples{};
        const ssize_t bytes = read(file_, samples.data(), sizeof samples);
        if (bytes <= 0) {
            return false;
        }
        const auto end = samples.begin() + bytes / static_cast<ssize_t>(sizeof(float));
        samples_.insert(samples_.end(), samples.begin(), end);
        arrivals_.push_back({Steady::now(), samples_.size() / 2});
        return true;
    }

    /// The moments at which sound began after a silence.
    std::vector<Steady::time_point> Onsets() const {
        constexpr float loud = 0.05F;
        constexpr std::size_t quietFrames = kRecordingRate * 80 / 1000;
        std::vector<Steady::time_point> onsets;
        std::size_t silentFrom = 0;
        for (std::size_t frame = 0; 2 * frame < samples_.size(); ++frame) {
            if (std::abs(samples_[2 * frame]) >= loud) {
                if (frame - silentFrom >= quietFrames) {
                    onsets.push_back(TimeOf(frame));
                }
                silentFrom = frame;
            }
        }
        return onsets;
    }

    /// How often the sound falls silent once it has begun.
    [[nodiscard]] int Gaps() const {
        int gaps = 0;
        bool sounds = false;
        for (std::size_t frame = 0; 2 * frame < samples_.size(); ++frame) {
            const bool silent = samples_[2 * frame] == 0;
            gaps += sounds && silent ? 1 : 0;
            sounds = !silent;
        }
        return gaps;
    }

  private:
    struct Arrival {
        Steady::time_point time;
        std::size_t frames = 0;  // received so far
    };

    /// A reading can only come late, never early: the reading within a second after the frame that
    /// gives the earliest time is the right one.
    Steady::time_point TimeOf(std::size_t frame) const {
        Steady::time_point earliest = Steady::time_point::max();
        for (const Arrival& arrival : arrivals_) {
            if (arrival.frames > frame && arrival.frames <= frame + kRecordingRate) {
                const auto after = static_cast<std::int64_t>(arrival.frames - frame);
                earliest = std::min(earliest, arrival.time - after * seconds(1) / kRecordingRate);
            }
        }
        return earliest;
    }

    int file_;
    std::vector<float> samples_;
    std::vector<Arrival> arrivals_;
};

/// A constant level: any silence in it is a gap.
class Level : public SoundSource {
  public:
    void Fill(std::span<float> out) noexcept override { std::fill(out.begin(), out.end(), 0.25F); }
};

/// Prints how many gaps are heard in twenty seconds.
bool MeasureGaps(const std::string& pipe) {
    Recording recording(pipe);
    CubebOutput output;
    Level level;
    if (output.Start(level)) {
        return false;
    }
    const Steady::time_point end = Steady::now() + seconds(20);
    while (Steady::now() < end) {
        recording.Read();
        std::this_thread::sleep_for(milliseconds(1));
    }
    std::cout << recording.Gaps() << std::endl;
    return true;
}

struct Reading {
    Steady::time_point time;
    int position;  // milliseconds
};

/// Plays the song and reads the position about every millisecond, while the recording goes on.
std::vector<Reading> Play(Recording& recording) {
    CubebOutput output;
    Player player(output);
    std::cerr << "output: " << output.System() << ", " << output.SampleRate() << " Hz, latency "
              << output.LatencyFrames() * 1000.0 / output.SampleRate() << " ms\n";
    std::vector<Reading> readings;
    const Steady::time_point limit = Steady::now() + seconds(30);
    // The stream runs on until its last click is recorded, because the sink changes its step when a
    // stream ends, and that moves what is still to be heard.
    for (int position = 0; position < ClickMs(kClicks - 1) + 1500 && Steady::now() < limit;) {
        position = player.Position();
        readings.push_back({Steady::now(), position});
        recording.Read();
        std::this_thread::sleep_for(milliseconds(1));
    }
    return readings;
}

/// Prints how far the position reported is at most from what is heard. Fails when other onsets than
/// the clicks are heard.
bool MeasureSync(const std::string& pipe) {
    Recording recording(pipe);
    for (const auto limit = Steady::now() + seconds(10); !recording.Read();) {
        if (Steady::now() > limit) {
            throw std::runtime_error("nothing comes from the monitor");
        }
        std::this_thread::sleep_for(milliseconds(20));
    }
    const std::vector<Reading> readings = Play(recording);
    const auto heard = recording.Onsets();
    if (heard.size() != kClicks) {
        std::cerr << kClicks << " onsets were played, " << heard.size() << " heard\n";
        return false;
    }
    double worst = 0;
    for (int i = 0; i < kClicks; ++i) {
        const auto onset = heard[static_cast<std::size_t>(i)];
        const auto after = std::lower_bound(
            readings.begin(), readings.end() - 1, onset,
            [](const Reading& reading, Steady::time_point time) { return reading.time < time; });
        const double position = after->position - Ms(after->time - onset);
        worst = std::max(worst, std::abs(position - ClickMs(i)));
    }
    std::cout << worst << std::endl;
    return true;
}

/// Plays for ten seconds as the player does, while the script takes the device away and brings it
/// back, and prints the longest halt. Fails when the position goes back or does not go on.
bool MeasureLoss() {
    const SteadyClock clock;
    DefaultOutput output({}, clock);
    Player player(output);
    std::cout << "playing" << std::endl;  // the script waits for this line
    const Steady::time_point start = Steady::now();
    Steady::time_point moved = start;
    int last = 0;
    double longest = 0;
    bool wentBack = false;
    while (Steady::now() - start < seconds(10)) {
        const int position = player.Position();
        wentBack = wentBack || position < last;
        longest = std::max(longest, Ms(Steady::now() - moved));
        if (position != last) {
            moved = Steady::now();
        }
        last = position;
        std::this_thread::sleep_for(milliseconds(10));
    }
    std::cout << longest << std::endl;
    return !wentBack && last > 6000;
}

}  // namespace
}  // namespace sonnel::test

int main(int argc, char** argv) {
    using namespace sonnel::test;
    try {
        const std::string what = argc > 1 ? argv[1] : "";
        if (argc == 3) {
            return (what == "gaps" ? MeasureGaps(argv[2]) : MeasureSync(argv[2])) ? 0 : 1;
        }
        return MeasureLoss() ? 0 : 1;
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
        return 1;
    }
}
