// The words of a song on the screen against its sound, as both come out of the program.

#include "bench/SoundFile.h"
#include "e2e/Player.h"

#include "fakes/ScriptedMsgBox.h"
#include "platform/midi/Sequence.h"
#include "platform/midi/SmfReader.h"
#include "song/LeggiKaraoke.h"

#include <algorithm>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include <benchmark/benchmark.h>

namespace sonnel::bench {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

/// Looks at the screen and at the length of the sound file every 2 ms.
std::vector<Sample> Watch(const test::Player& player, seconds time) {
    std::vector<Sample> seen;
    for (const auto end = Clock::now() + time; Clock::now() < end;) {
        std::error_code missing;
        const auto bytes = std::filesystem::file_size(player.Sound(), missing);
        const auto sung = player.Pixels(test::Player::kSung);
        // The time after all this: a step is never taken to be earlier than it was.
        seen.push_back({Clock::now(), sung, missing ? 0 : bytes});
        std::this_thread::sleep_for(milliseconds(2));
    }
    return seen;
}

/// When the words sung were seen to change. What goes on within 60 ms is the same step: the screen
/// may have been looked at half painted.
std::vector<Clock::time_point> SeenSteps(const std::vector<Sample>& seen) {
    std::vector<Clock::time_point> steps;
    bool grew = false;
    for (std::size_t i = 1; i < seen.size(); ++i) {
        const bool grown = seen[i].sung > seen[i - 1].sung;
        const bool goesOn =
            !steps.empty() && grew == grown && seen[i].at - steps.back() <= milliseconds(60);
        if (seen[i].sung != seen[i - 1].sung && !goesOn) {
            steps.push_back(seen[i].at);
            grew = grown;
        }
    }
    return steps;
}

/// When the words sung must change: with each colour, and with each page after the first colour.
std::vector<Clock::time_point> DueSteps(const std::string& lyk, Clock::time_point start) {
    Timeline timeline;
    InformazioniBrano information;
    test::ScriptedMsgBox msgBox;
    (void)LeggiRighe(lyk, true, timeline, information, msgBox);
    std::vector<Clock::time_point> due;
    for (std::int16_t i = 1; i <= timeline.NumEventi(); ++i) {
        const Evento& event = timeline.Eventi(i);
        if (event.Tipo == TipoEvento::Colore ||
            (event.Tipo == TipoEvento::Pagina && !due.empty())) {
            due.push_back(start + milliseconds(100) * event.Tempo);
        }
    }
    return due;
}

/// When the first note of a song sounds, counted from its start.
Clock::duration FirstNote(const std::string& mid) {
    constexpr int Rate = 48000;
    const Result<SmfFile> file = ReadSmf(mid);
    for (const SequenceEvent& event : MakeSequence(*file, Rate).events) {
        if ((event.status & 0xF0) == 0x90 && event.data2 > 0) {
            return std::chrono::nanoseconds(event.frame * 1'000'000'000 / Rate);
        }
    }
    return {};
}

/// How late each step was seen, in milliseconds by the sound, in order of size; empty when the
/// steps are not those of the song. The song began so long before its first note as its MIDI file
/// says, and the sound file tells when that note was heard.
std::vector<double> Lateness(const test::Player& player, const std::vector<Sample>& seen) {
    const std::string song = "Twinkle Twinkle";
    const auto start =
        FirstSound(player.Sound(), seen) - FirstNote(test::Content(player.Library(song + ".mid")));
    const auto due = DueSteps(test::Content(player.Library(song + ".lyk")), start);
    const auto steps = SeenSteps(seen);
    std::vector<double> late;
    for (std::size_t i = 0; i < std::min(due.size(), steps.size()); ++i) {
        late.push_back(std::chrono::duration<double, std::milli>(steps[i] - due[i]).count());
    }
    std::sort(late.begin(), late.end());
    return late;
}

void WordsAsHeard(benchmark::State& state) {
    constexpr seconds Time(25);
    for ([[maybe_unused]] auto iteration : state) {
        test::Player player("Twinkle Twinkle");
        test::WaitUntil([&] { return !player.MainWindow().empty(); });
        player.Press("F2");
        const std::vector<Sample> seen = Watch(player, Time);
        const bool ended = player.Exits();
        const std::vector<double> late = Lateness(player, seen);
        if (!ended || late.size() < 20) {
            state.SkipWithError("the song was not sung");
            return;
        }
        state.SetIterationTime(static_cast<double>(Time.count()));
        state.counters["median_ms"] = late[late.size() / 2];
        state.counters["p95_ms"] = late[late.size() * 95 / 100];
    }
}
BENCHMARK(WordsAsHeard)->Iterations(1)->UseManualTime()->Unit(benchmark::kSecond);

}  // namespace
}  // namespace sonnel::bench
