// From the start of the program to its window on the screen.

#include "e2e/Player.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include <benchmark/benchmark.h>

namespace {

using namespace sonnel::test;
using Clock = std::chrono::steady_clock;

/// Waits until something large is painted in the colour of the lyrics area, which is nowhere else
/// on the screen. Returns the seconds since `started`; 10 when it never comes.
double SecondsUntilShown(const VirtualScreen& screen, Clock::time_point started) {
    constexpr double limit = 10;
    double took = 0;
    for (bool found = false; !found && took < limit;) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        const auto pixels = screen.Grab();
        found = std::count(pixels.begin(), pixels.end(), Player::kBackground) > 10'000;
        took = std::chrono::duration<double>(Clock::now() - started).count();
    }
    return took;
}

void WriteIndex(const std::filesystem::path& file) {
    constexpr int songs = 32'000;
    std::ofstream index(file, std::ios::binary);
    index << "[Songs]\r\n";
    for (int song = 0; song < songs; ++song) {
        index << "Song " << song << "=Title " << song << "|Singer " << song % 500 << "|Album "
              << song % 1000 << "\r\n";
    }
    index << "[Album]\r\n?=|\r\n";
}

/// With a library of 32,000 songs and a song on the command line, which leaves out the pause for
/// the splash.
void StartToWindow(benchmark::State& state) {
    const std::string song = "Twinkle Twinkle";
    Player player(song);
    WriteIndex(player.Library("sonnel.snl"));
    SecondsUntilShown(player.screen, player.started);
    for ([[maybe_unused]] auto iteration : state) {
        if (!player.Exits()) {
            state.SkipWithError("the player does not end");
            break;
        }
        player.Start({QString::fromStdString(player.Library(song).string())});
        state.SetIterationTime(SecondsUntilShown(player.screen, player.started));
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
        state.SetIterationTime(SecondsUntilShown(screen, started));
    }
}
BENCHMARK(StartBareWindow)->Iterations(10)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
