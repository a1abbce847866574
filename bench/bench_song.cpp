#include "platform/MsgBox.h"
#include "song/LeggiIntestazione.h"
#include "song/LeggiKaraoke.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <benchmark/benchmark.h>
#include <unistd.h>

namespace sonnel {
namespace {

class SilentMsgBox : public MsgBox {
  public:
    Answer Show(const Message& /*message*/) override { return Answer::Ok; }
};

std::string Padded(int number, std::size_t width) {
    std::string digits = std::to_string(number);
    return std::string(width > digits.size() ? width - digits.size() : 0, '0') + digits;
}

/// A song as it is usually written: a page of four lines, then a colour event for each of its
/// words.
std::string SongText(int events) {
    constexpr int EventsPerPage = 20;
    std::string text = "Cantabelle1.0\r\n*TIPerch\xE9 no\r\n*AUSomebody & Co\r\n*ALHits\r\n";
    for (int i = 0; i < events; ++i) {
        text += Padded(3 * i, 5);
        if (i % EventsPerPage == 0) {
            text +=
                " 1These are the words of the page,$Ewith perch\xE9 and pi\xF9 in them,$E"
                "sung in a voice that is loud,$Eand clear for everybody";
        } else {
            text += "02" + std::to_string(6 * (i % EventsPerPage));
        }
        text += "\r\n";
    }
    return text;
}

/// A song that is there while the benchmark runs, in a directory of its own: a missing file would
/// be looked for among all others.
class SongFile {
  public:
    explicit SongFile(int events)
        : directory_(std::filesystem::temp_directory_path() /
                     ("sonnel-bench-" + std::to_string(getpid()))) {
        std::filesystem::create_directory(directory_);
        std::ofstream(Base().string() + ".lyk", std::ios::binary) << SongText(events);
        std::ofstream(Base().string() + ".mid", std::ios::binary) << "no music";
    }
    SongFile(const SongFile&) = delete;
    SongFile& operator=(const SongFile&) = delete;
    ~SongFile() {
        std::error_code error;
        std::filesystem::remove_all(directory_, error);
    }
    [[nodiscard]] std::filesystem::path Base() const { return directory_ / "song"; }

  private:
    std::filesystem::path directory_;
};

void ReadSong(benchmark::State& state) {
    const SongFile file(static_cast<int>(state.range(0)));
    Timeline timeline;
    InformazioniBrano info;
    SilentMsgBox msgBox;
    for ([[maybe_unused]] auto iteration : state) {
        const bool read =
            LeggiKaraoke(TrovaFileBrano(file.Base().string()), timeline, info, msgBox);
        if (!read || timeline.NumEventi() != state.range(0)) {
            state.SkipWithError("the song was not read");
        }
    }
}
BENCHMARK(ReadSong)->Arg(3000)->Arg(32750)->Unit(benchmark::kMicrosecond);

/// The least that reading a song can take: its bytes are read and its lines counted.
void ReadSongBytes(benchmark::State& state) {
    const SongFile file(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto iteration : state) {
        std::ifstream stream(file.Base().string() + ".lyk", std::ios::binary);
        const std::string bytes(std::istreambuf_iterator<char>(stream), {});
        benchmark::DoNotOptimize(std::count(bytes.begin(), bytes.end(), '\r'));
    }
}
BENCHMARK(ReadSongBytes)->Arg(3000)->Unit(benchmark::kMicrosecond);

void ReadHeader(benchmark::State& state) {
    const SongFile file(static_cast<int>(state.range(0)));
    const std::filesystem::path directory = file.Base().parent_path();
    const std::string name = file.Base().filename().string();
    for ([[maybe_unused]] auto iteration : state) {
        if (!LeggiIntestazione(directory, name)) {
            state.SkipWithError("the header was not read");
        }
    }
}
BENCHMARK(ReadHeader)->Arg(3000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace sonnel
