// Plays a song into the real sound device, with the player's own sequencer and synthesiser, and
// compares what is heard there with the position the sequencer shows.
//   sonnel_audio_device_test sync PIPE   the position at each onset, against the recording in PIPE
//   sonnel_audio_device_test loss        plays for ten seconds while the device goes and comes

#include "Recording.h"

#include "fakes/ManualTimer.h"
#include "fakes/SmallSoundFont.h"
#include "fakes/SmfBuilder.h"
#include "fakes/TempDirectory.h"
#include "platform/audio/FluidSintetizzatore.h"
#include "platform/audio/UscitaCubeb.h"
#include "platform/audio/UscitaPredefinita.h"
#include "platform/midi/MMControl.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <iostream>
#include <iterator>
#include <optional>
#include <string_view>

namespace sonnel::test {
namespace {

using std::chrono::milliseconds;

constexpr double kToleranceMs = 25;
constexpr int kRecordingRate = 48000;
constexpr int kClicks = 40;
constexpr milliseconds kQuiet{80};

/// The time of click `number` in milliseconds: after a silent start, at uneven distances so that a
/// shift by one click cannot pass for a match.
int ClickMs(int number) {
    return 1500 + 200 * number + 30 * (number * number % 4);
}

/// A song of side sticks, a sound that is there with its first milliseconds and soon gone, without
/// echo. A tick is a millisecond. A last note nobody hears keeps the song going.
std::string ClickSong() {
    constexpr int drums = 9;
    constexpr int sideStick = 37;
    SmfBuilder song(0, 500);
    song.Control(0, 7, 127, drums).Control(0, 91, 0, drums).Control(0, 93, 0, drums);
    for (int i = 0; i < kClicks; ++i) {
        const auto tick = static_cast<std::uint32_t>(ClickMs(i));
        song.Message(tick, {0x90 + drums, sideStick, 127})
            .Message(tick + 50, {0x80 + drums, sideStick, 0});
    }
    return song.Control(15000, 7, 0, drums).Bytes();
}

class SteadyClock : public Orologio {
  public:
    [[nodiscard]] double TimeOfDay() const override { return 0; }
    [[nodiscard]] std::chrono::nanoseconds Steady() const override {
        return Clock::now().time_since_epoch();
    }
};

/// The click song, playing into an output.
class Player {
  public:
    explicit Player(UscitaAudio& output) : control(synth_, output, timer_, clock_) {}
    /// False, and the reason on standard output, when it cannot be played.
    bool Start() {
        control.SetFileName(folder_.Write("clicks.mid", ClickSong()).string());
        if (const auto error = control.Command(MciCommand::Open)) {
            std::cout << error->text << "\n";
            return false;
        }
        control.Command(MciCommand::Play);
        return true;
    }
    /// To be called often: the user-interface timer, every 10 ms.
    void Turn() {
        if (Clock::now() >= next_) {
            next_ = Clock::now() + milliseconds(10);
            timer_.Fire();
        }
    }

  private:
    TempDirectory folder_;
    FluidSintetizzatore synth_{SmallSoundFont};
    ManualTimer timer_;
    SteadyClock clock_;
    Clock::time_point next_;

  public:
    MMControl control;
};

struct Reading {
    Clock::time_point time;
    double position;  // milliseconds
};

/// Plays the song to its last click and reads the position about every millisecond. What plays and
/// what is read is decided here alone. Empty when it does not play.
std::vector<Reading> Play() {
    UscitaCubeb output;
    Player player(output);
    if (!player.Start()) {
        return {};
    }
    std::cout << "output: " << output.System() << ", " << output.SampleRate() << " Hz, latency "
              << output.LatencyFrames() * 1000.0 / output.SampleRate() << " ms\n";
    std::vector<Reading> readings;
    const Clock::time_point limit = Clock::now() + std::chrono::seconds(30);
    int position = 0;
    // The stream runs on until its last click is recorded: the sink works in other steps when a
    // stream ends, which moves what it has in hand.
    while (position < ClickMs(kClicks - 1) + 1500) {
        player.Turn();
        const Clock::time_point before = Clock::now();
        position = player.control.Position();
        readings.push_back({before + (Clock::now() - before) / 2, static_cast<double>(position)});
        if (before > limit) {
            std::cout << "the position stands still at " << position << " ms\n";
            return {};
        }
        std::this_thread::sleep_for(milliseconds(1));
    }
    return readings;
}

/// The reported position at a moment, on the straight line between the readings around it.
double PositionAt(const std::vector<Reading>& readings, Clock::time_point time) {
    const auto after = std::lower_bound(
        readings.begin(), readings.end(), time,
        [](const Reading& reading, Clock::time_point moment) { return reading.time < moment; });
    if (after == readings.begin() || after == readings.end()) {
        return after == readings.end() ? readings.back().position : after->position;
    }
    const auto before = std::prev(after);
    const double part = std::chrono::duration<double>(time - before->time) /
                        std::chrono::duration<double>(after->time - before->time);
    return before->position + part * (after->position - before->position);
}

/// How far the position reported is ahead of what is heard, in milliseconds, for each onset.
std::optional<std::vector<double>> Measure(const std::string& pipe) {
    Recording recording(pipe, kRecordingRate);
    const Clock::time_point limit = Clock::now() + std::chrono::seconds(10);
    while (!recording.Running()) {
        if (Clock::now() > limit) {
            std::cout << "nothing comes from the monitor\n";
            return {};
        }
        std::this_thread::sleep_for(milliseconds(20));
    }
    const std::vector<Reading> readings = Play();
    if (readings.empty()) {
        return {};
    }
    const auto heard = recording.Onsets(kQuiet);
    if (heard.size() != kClicks) {
        std::cout << kClicks << " onsets were played, " << heard.size() << " heard\n";
        return {};
    }
    std::vector<double> differences;
    differences.reserve(kClicks);
    for (int i = 0; i < kClicks; ++i) {
        differences.push_back(PositionAt(readings, heard[static_cast<std::size_t>(i)]) -
                              ClickMs(i));
    }
    return differences;
}

bool Judge(std::vector<double> differences) {
    std::sort(differences.begin(), differences.end());
    const double worst = std::max(std::abs(differences.front()), std::abs(differences.back()));
    std::printf("position against sound, ms: median %.2f, from %.2f to %.2f, worst %.2f\n",
                differences[differences.size() / 2], differences.front(), differences.back(),
                worst);
    std::fflush(stdout);
    return worst <= kToleranceMs;
}

bool TestSync(const std::string& pipe) {
    constexpr int attempts = 3;
    for (int attempt = 1; attempt <= attempts; ++attempt) {
        const auto differences = Measure(pipe);
        if (differences && Judge(*differences)) {
            return true;
        }
        std::cout << "attempt " << attempt << " of " << attempts
                  << (differences ? ": more than 25 ms apart" : ": not measured") << std::endl;
    }
    return false;
}

/// Plays for ten seconds as the player does, while the script takes the device away and brings it
/// back. The position must go on, without going back and without long halts.
bool TestLoss() {
    // A null sink that nobody listens to yet works in steps of two seconds.
    constexpr double longestHaltMs = 2500;
    UscitaPredefinita output({});
    Player player(output);
    if (!player.Start()) {
        return false;
    }
    std::cout << "playing" << std::endl;  // the script waits for this line
    const Clock::time_point start = Clock::now();
    Clock::time_point moved = start;
    int last = 0;
    double longest = 0;
    double slowest = 0;
    bool wentBack = false;
    while (Clock::now() - start < std::chrono::seconds(10)) {
        const Clock::time_point before = Clock::now();
        player.Turn();
        slowest = std::max(
            slowest, std::chrono::duration<double, std::milli>(Clock::now() - before).count());
        const int position = player.control.Position();
        wentBack = wentBack || position < last;
        if (position != last) {
            longest = std::max(longest,
                               std::chrono::duration<double, std::milli>(before - moved).count());
            moved = before;
        }
        last = position;
        std::this_thread::sleep_for(milliseconds(10));
    }
    std::printf("position after 10 s: %.2f s, longest halt %.0f ms, slowest turn %.0f ms%s\n",
                last / 1000.0, longest, slowest, wentBack ? ", WENT BACK" : "");
    std::fflush(stdout);
    return !wentBack && longest <= longestHaltMs && last > 6000;
}

}  // namespace
}  // namespace sonnel::test

int main(int argc, char** argv) {
    const std::string_view what = argc > 1 ? argv[1] : "";
    try {
        if (what == "sync" && argc == 3) {
            return sonnel::test::TestSync(argv[2]) ? 0 : 1;
        }
        if (what == "loss" && argc == 2) {
            return sonnel::test::TestLoss() ? 0 : 1;
        }
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
        return 1;
    }
    std::cerr << "usage: " << argv[0] << " sync PIPE | loss\n";
    return 2;
}
