// From the start of the program to its window on the screen.

#include "e2e/Player.h"

#include <algorithm>
#include <chrono>
#include <thread>

#include <benchmark/benchmark.h>

namespace {

using namespace sonnel::test;
using Clock = std::chrono::steady_clock;

/// Takes the time until something large is painted in the colour of the lyrics area, which is
/// nowhere else on the screen.
void TimeUntilShown(benchmark::State& state, const VirtualScreen& screen,
                    Clock::time_point started) {
    const auto shown = [&] {
        const auto pixels = screen.Grab();
        return std::count(pixels.begin(), pixels.end(), Player::kBackground) > 10'000;
    };
    std::chrono::duration<double> took(0);
    bool found = shown();
    while (!found && took < std::chrono::seconds(10)) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        found = shown();
        took = Clock::now() - started;
    }
    if (!found) {
        state.SkipWithError("no window came");
    }
    state.SetIterationTime(took.count());
}

/// With a song on the command line, which leaves out the pause for the splash.
void StartToWindow(benchmark::State& state) {
    for ([[maybe_unused]] auto iteration : state) {
        const Player player("Twinkle Twinkle");
        TimeUntilShown(state, player.screen, player.started);
    }
}
BENCHMARK(StartToWindow)->Iterations(10)->UseManualTime()->Unit(benchmark::kMillisecond);

/// The least that can take: a program of the same library that has one empty window.
void StartBareWindow(benchmark::State& state) {
    const TempDirectory home;
    for ([[maybe_unused]] auto iteration : state) {
        const VirtualScreen screen;
        const auto started = Clock::now();
        Program program;
        program.setProcessEnvironment(EnvironmentIn(home.Path()));
        program.start(SONNEL_BARE_WINDOW);
        TimeUntilShown(state, screen, started);
    }
}
BENCHMARK(StartBareWindow)->Iterations(10)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
