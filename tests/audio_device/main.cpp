// Plays into the real sound device and compares what is heard there with what the output reports.
//   sonnel_audio_device_test sync PIPE   the position at each onset, against the recording in PIPE
//   sonnel_audio_device_test loss        plays for ten seconds while the device goes and comes

#include "Recording.h"

#include "platform/audio/UscitaCubeb.h"
#include "platform/audio/UscitaPredefinita.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <iterator>
#include <optional>
#include <string_view>

namespace sonnel::test {
namespace {

using std::chrono::milliseconds;

constexpr double kToleranceMs = 25;
constexpr int kRecordingRate = 48000;
constexpr int kClicks = 24;
constexpr milliseconds kQuiet{80};

/// The time of click `number`: after a silent start, at uneven distances so that a shift by one
/// click cannot pass for a match.
double ClickSeconds(int number) {
    return 1.5 + 0.2 * number + 0.03 * (number * number % 4);
}

/// 20 ms of a tone at each click's time.
class Clicks : public SoundSource {
  public:
    explicit Clicks(int sampleRate) : sampleRate_(sampleRate) {}
    void Fill(std::span<float> out) noexcept override {
        for (std::size_t i = 0; i + 1 < out.size(); i += 2, ++frame_) {
            out[i] = out[i + 1] = Sample();
        }
    }

  private:
    float Sample() {
        const double now = static_cast<double>(frame_) / sampleRate_;
        while (next_ < kClicks && now >= ClickSeconds(next_) + 0.02) {
            ++next_;
        }
        const double into = now - ClickSeconds(next_);
        return next_ < kClicks && into >= 0 ? static_cast<float>(0.5 * std::cos(6000 * into))
                                            : 0.0F;
    }
    int sampleRate_;
    std::int64_t frame_ = 0;
    int next_ = 0;
};

struct Reading {
    Clock::time_point time;
    double position;  // seconds
};

/// One performance: when each onset should be heard on the output's own clock, and what that clock
/// said meanwhile.
struct Performance {
    std::vector<double> onsets;  // seconds
    std::vector<Reading> readings;
};

/// Plays all the clicks and reads the position about every millisecond. What plays and what is read
/// is decided here alone.
std::optional<Performance> Play() {
    UscitaCubeb output;
    Clicks clicks(output.SampleRate());
    if (const auto error = output.Start(clicks)) {
        std::cout << error->text << "\n";
        return {};
    }
    std::cout << "output: " << output.System() << ", " << output.SampleRate() << " Hz, latency "
              << output.LatencyFrames() * 1000.0 / output.SampleRate() << " ms\n";
    Performance performance;
    for (int i = 0; i < kClicks; ++i) {
        performance.onsets.push_back(ClickSeconds(i));
    }
    const Clock::time_point limit = Clock::now() + std::chrono::seconds(30);
    double position = 0;
    // The stream runs on until its last click is recorded: the sink works in other steps when a
    // stream ends, which moves what it has in hand.
    while (position < performance.onsets.back() + 1.5) {
        const Clock::time_point before = Clock::now();
        position = static_cast<double>(output.FramesHeard()) / output.SampleRate();
        performance.readings.push_back({before + (Clock::now() - before) / 2, position});
        if (before > limit) {
            std::cout << "the position stands still at " << position << " s\n";
            return {};
        }
        std::this_thread::sleep_for(milliseconds(1));
    }
    output.Stop();
    return performance;
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
    const auto performance = Play();
    if (!performance) {
        return {};
    }
    const auto heard = recording.Onsets(kQuiet);
    if (heard.size() != performance->onsets.size()) {
        std::cout << performance->onsets.size() << " onsets were played, " << heard.size()
                  << " heard\n";
        return {};
    }
    std::vector<double> differences;
    for (std::size_t i = 0; i < heard.size(); ++i) {
        differences.push_back(
            1000 * (PositionAt(performance->readings, heard[i]) - performance->onsets[i]));
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
    Clicks clicks(output.SampleRate());
    if (const auto error = output.Start(clicks)) {
        std::cout << error->text << "\n";
        return false;
    }
    std::cout << "playing" << std::endl;  // the script waits for this line
    const Clock::time_point start = Clock::now();
    Clock::time_point moved = start;
    std::int64_t last = 0;
    double longest = 0;
    double slowest = 0;
    bool wentBack = false;
    while (Clock::now() - start < std::chrono::seconds(10)) {
        const Clock::time_point before = Clock::now();
        output.Maintain();
        slowest = std::max(
            slowest, std::chrono::duration<double, std::milli>(Clock::now() - before).count());
        const std::int64_t heard = output.FramesHeard();
        wentBack = wentBack || heard < last;
        if (heard != last) {
            longest = std::max(longest,
                               std::chrono::duration<double, std::milli>(before - moved).count());
            moved = before;
        }
        last = heard;
        std::this_thread::sleep_for(milliseconds(10));
    }
    output.Stop();
    const double seconds = static_cast<double>(last) / output.SampleRate();
    std::printf("position after 10 s: %.2f s, longest halt %.0f ms, slowest Maintain %.0f ms%s\n",
                seconds, longest, slowest, wentBack ? ", WENT BACK" : "");
    std::fflush(stdout);
    return !wentBack && longest <= longestHaltMs && seconds > 6;
}

}  // namespace
}  // namespace sonnel::test

int main(int argc, char** argv) {
    const std::string_view what = argc > 1 ? argv[1] : "";
    if (what == "sync" && argc == 3) {
        return sonnel::test::TestSync(argv[2]) ? 0 : 1;
    }
    if (what == "loss" && argc == 2) {
        return sonnel::test::TestLoss() ? 0 : 1;
    }
    std::cerr << "usage: " << argv[0] << " sync PIPE | loss\n";
    return 2;
}
