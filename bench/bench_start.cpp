// From the start of the program to its window on the screen.

#include "e2e/Player.h"

#include <algorithm>
#include <chrono>
#include <thread>

#include <benchmark/benchmark.h>

namespace {

using namespace sonnel::test;

/// The lyrics area is painted, in a colour that is nowhere else on the screen.
bool Shown(const Player& player) {
    const auto pixels = player.screen.Grab();
    return std::count(pixels.begin(), pixels.end(), Player::kBackground) > 10'000;
}

/// With a song on the command line, which leaves out the pause for the splash.
void StartToWindow(benchmark::State& state) {
    for ([[maybe_unused]] auto iteration : state) {
        Player player("Twinkle Twinkle");
        std::chrono::duration<double> took(0);
        while (!Shown(player) && took < std::chrono::seconds(10)) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            took = Clock::now() - player.started;
        }
        if (!Shown(player)) {
            state.SkipWithError("no window came");
        }
        state.SetIterationTime(took.count());
    }
}
BENCHMARK(StartToWindow)->Iterations(10)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
