#include "convert/EstraiParole.h"
#include "convert/ScriviLyk.h"
#include "fakes/SmfBuilder.h"
#include "song/LetturaEsatta.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

#include <benchmark/benchmark.h>
#include <unistd.h>

namespace sonnel {
namespace {

constexpr std::size_t FileSize = 100'000;

test::SmfBuilder Header() {
    test::SmfBuilder file;
    file.Track().Tempo(0, 500000);
    file.Track().Text(0, 1, "@KMIDI KARAOKE FILE").Text(0, 1, "@TTitle").Text(0, 1, "@TAuthor");
    return file;
}

void AddSyllable(test::SmfBuilder& file, std::uint32_t number) {
    const std::string start = number % 24 == 0 ? "\\" : number % 8 == 0 ? "/" : " ";
    file.Text(240 * number, 1, start + (number % 5 == 0 ? "perch\xE9" : "la"));
}

/// A song as it is usually found: a band, and the words in a track of their own.
std::string BandFile() {
    constexpr std::uint32_t Syllables = 600;
    constexpr int Notes = 11'200;
    test::SmfBuilder file = Header();
    for (std::uint32_t i = 0; i < Syllables; ++i) {
        AddSyllable(file, i);
    }
    for (int channel = 0; channel < 8; ++channel) {
        file.Track();
        for (int i = 0; i < Notes / 8; ++i) {
            file.Note(static_cast<std::uint32_t>(120 * i), 100, 40 + i % 40, channel);
        }
    }
    return file.Bytes();
}

/// The same size of nothing but words.
std::string WordsFile() {
    constexpr std::uint32_t Syllables = 11'500;
    test::SmfBuilder file = Header();
    for (std::uint32_t i = 0; i < Syllables; ++i) {
        AddSyllable(file, i);
    }
    return file.Bytes();
}

/// A directory with a karaoke file that is there while the benchmark runs.
class KarDirectory {
  public:
    explicit KarDirectory(const std::string& bytes)
        : path_(std::filesystem::temp_directory_path() /
                ("sonnel-bench-" + std::to_string(getpid()))) {
        std::filesystem::create_directory(path_);
        std::ofstream(path_ / "song.kar", std::ios::binary) << bytes;
    }
    KarDirectory(const KarDirectory&) = delete;
    KarDirectory& operator=(const KarDirectory&) = delete;
    ~KarDirectory() {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }
    [[nodiscard]] std::filesystem::path operator/(const char* name) const { return path_ / name; }

  private:
    std::filesystem::path path_;
};

/// Reads and converts the file; "" when it is not taken.
std::string Convert(const std::filesystem::path& kar) {
    Midifile midifile;
    midifile.SetFileName(kar);
    if (midifile.SetAction(MidifileAction::Open)) {
        return "";
    }
    const auto base = BaseTempi::Leggi(midifile);
    if (!base) {
        return "";
    }
    Estrazione extraction = EstraiParole(midifile, *base, {});
    return extraction.Accettata() ? extraction.Testo : "";
}

/// From the karaoke file to the text of the LYK file, or, with `write`, to the file itself.
void ConvertKar(benchmark::State& state, const std::string& bytes, bool write) {
    const KarDirectory directory(bytes);
    for ([[maybe_unused]] auto iteration : state) {
        const std::string text = Convert(directory / "song.kar");
        if (text.empty() || (write && ScriviLyk(directory / "song.lyk", text, true))) {
            state.SkipWithError("the file was not converted");
        }
    }
    const double size = static_cast<double>(bytes.size()) / FileSize;
    if (size < 0.95 || size > 1.1) {
        state.SkipWithError("the file has another size");
    }
    state.counters["conversions_per_second"] =
        benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}
/// From the karaoke file to the text of the LYK file by the exact reading.
void ReadExactly(benchmark::State& state) {
    const KarDirectory directory(BandFile());
    for ([[maybe_unused]] auto iteration : state) {
        const auto midi = ReadSmfFile(directory / "song.kar");
        if (!midi || !LeggiEsatto(*midi, "song")) {
            state.SkipWithError("the file has no words");
        }
    }
}
BENCHMARK(ReadExactly)->Unit(benchmark::kMillisecond);

/// The same file copied, which is no less than reading it.
void CopyKar(benchmark::State& state) {
    const KarDirectory directory(BandFile());
    for ([[maybe_unused]] auto iteration : state) {
        std::filesystem::copy_file(directory / "song.kar", directory / "copy.kar",
                                   std::filesystem::copy_options::overwrite_existing);
    }
}
BENCHMARK(CopyKar)->Unit(benchmark::kMillisecond);

BENCHMARK_CAPTURE(ConvertKar, band, BandFile(), false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ConvertKar, words, WordsFile(), false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ConvertKar, band_written, BandFile(), true)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace sonnel
