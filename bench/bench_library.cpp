#include "library/AggiornaIndice.h"
#include "library/CaricaIndice.h"
#include "library/Indice.h"
#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

namespace sonnel {
namespace {

namespace fs = std::filesystem;

class SilentMsgBox : public MsgBox {
  public:
    Answer Show(const Message& /*message*/) override { return Answer::Ok; }
};

class NoEvents : public SystemEvents {
  public:
    void RunPending() override {}
    void WaitPending(std::chrono::milliseconds /*limit*/) override {}
    Pointer SetPointer(Pointer /*pointer*/) override { return Pointer::Normal; }
    void Beep() override {}
};

/// A karaoke directory that is there while the benchmark runs.
class Directory {
  public:
    Directory();
    Directory(const Directory&) = delete;
    Directory& operator=(const Directory&) = delete;
    ~Directory() {
        std::error_code error;
        fs::remove_all(path_, error);
    }

    /// Makes so many song files, each longer than the block in which its header is read.
    void MakeSongs(int count) const;
    void MakeIndex(int count) const;
    void RemoveIndex() const { fs::remove(PercorsoIndice(config_.OpenDir)); }
    [[nodiscard]] std::vector<std::string> Files() const;
    [[nodiscard]] const Libreria& Library() const { return library_; }

  private:
    fs::path path_;
    Config config_;
    TabellaBrani table_;
    SilentMsgBox msgBox_;
    NoEvents events_;
    Libreria library_{config_, table_, msgBox_, events_};
};

Directory::Directory() {
    std::string path = (fs::temp_directory_path() / "sonnel-bench-XXXXXX").string();
    if (mkdtemp(path.data()) == nullptr) {
        throw std::runtime_error("no temporary directory");
    }
    path_ = path;
    config_.OpenDir = path + "/";
}

std::string Name(int song) {
    return "A song of the library " + std::to_string(song);
}
std::string Title(int song) {
    return "Perch\xC3\xA9 no, number " + std::to_string(song);
}
std::string Singer(int song) {
    return "Singer " + std::to_string(song % 500);
}
std::string Album(int song) {
    return "Album " + std::to_string(song % 1000);
}

void Directory::MakeSongs(int count) const {
    std::string words;
    for (int time = 100; time < 600; ++time) {
        words += "00" + std::to_string(time) + "021\r\n";
    }
    for (int song = 0; song < count; ++song) {
        std::ofstream(path_ / (Name(song) + ".lyk"), std::ios::binary)
            << EncodeFileText("Cantabelle1.0\r\n*TI" + Title(song) + "\r\n*AU" + Singer(song) +
                              "\r\n*AL" + Album(song) + "\r\n" + words);
    }
}

void Directory::MakeIndex(int count) const {
    ProfileFile index(PercorsoIndice(config_.OpenDir));
    ProfileFile::Batch batch(index);
    for (int song = 0; song < count; ++song) {
        ScriviBrano(index, Name(song), Title(song), Singer(song), Album(song));
    }
    (void)batch.Commit();
}

std::vector<std::string> Directory::Files() const {
    std::vector<std::string> files;
    for (const auto& entry : fs::directory_iterator(path_)) {
        files.push_back(entry.path().string());
    }
    return files;
}

void LoadIndex(benchmark::State& state) {
    const Directory songs;
    songs.MakeIndex(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto iteration : state) {
        CaricaIndice(songs.Library());
        if (songs.Library().brani.NumBrani() != state.range(0)) {
            state.SkipWithError("the index was not loaded");
        }
    }
}
BENCHMARK(LoadIndex)->Arg(1000)->Arg(10000)->Arg(32000)->Iterations(20)->Unit(
    benchmark::kMillisecond);

/// The least that loading can take: the bytes of the index are read and its lines counted.
void ReadIndexBytes(benchmark::State& state) {
    const Directory songs;
    songs.MakeIndex(static_cast<int>(state.range(0)));
    const std::vector<std::string> files = songs.Files();
    for ([[maybe_unused]] auto iteration : state) {
        std::ifstream stream(files.front(), std::ios::binary);
        const std::string bytes(std::istreambuf_iterator<char>(stream), {});
        benchmark::DoNotOptimize(std::count(bytes.begin(), bytes.end(), '\n'));
    }
}
BENCHMARK(ReadIndexBytes)->Arg(10000)->Arg(32000)->Iterations(20)->Unit(benchmark::kMillisecond);

void RebuildIndex(benchmark::State& state) {
    const Directory songs;
    songs.MakeSongs(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto iteration : state) {
        songs.RemoveIndex();  // or nothing would change and nothing be written
        const EsitoAggiornamento result = AggiornaIndice(songs.Library());
        if (result.errore || songs.Library().brani.NumBrani() != state.range(0)) {
            state.SkipWithError("the index was not rebuilt");
        }
    }
}
BENCHMARK(RebuildIndex)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(32000)
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond);

/// The least a rebuild can take: the first block of each song file is read and no more.
void ReadHeaderBytes(benchmark::State& state) {
    const Directory songs;
    songs.MakeSongs(static_cast<int>(state.range(0)));
    const std::vector<std::string> files = songs.Files();
    std::array<char, 4096> block{};
    for ([[maybe_unused]] auto iteration : state) {
        for (const std::string& file : files) {
            const int handle = open(file.c_str(), O_RDONLY | O_CLOEXEC);
            if (read(handle, block.data(), block.size()) <= 0) {
                state.SkipWithError("a header was not read");
            }
            close(handle);
        }
    }
}
BENCHMARK(ReadHeaderBytes)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(32000)
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace sonnel
