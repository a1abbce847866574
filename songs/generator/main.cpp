// Makes the demo songs: sonnel_songs LIBRARY_FOLDER KAR_FOLDER SCORE...
// The library folder gets each song's .mid and .lyk and the index, the other folder the .kar files.
// A song's files bear the name of its score.

#include "generator/Arranger.h"
#include "generator/Lyk.h"
#include "generator/ScoreReader.h"
#include "generator/Smf.h"
#include "platform/Text.h"
#include "platform/files/Files.h"

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <span>
#include <stdexcept>

namespace {

using sonnel::songs::IndexEntry;
namespace fs = std::filesystem;

void Write(const fs::path& path, const std::string& content) {
    if (const auto error = sonnel::WriteFileAtomically(path, content)) {
        throw std::runtime_error(sonnel::Utf8FromPath(path) + ": " + error->text);
    }
}

IndexEntry MakeSong(const fs::path& scorePath, const fs::path& library, const fs::path& karFolder) {
    const auto text = sonnel::ReadFile(scorePath);
    if (!text) {
        throw std::runtime_error(text.error().text);
    }
    const sonnel::songs::Score score = sonnel::songs::ReadScore(*text);
    const sonnel::songs::Arrangement song = sonnel::songs::Arrange(score);
    const std::string base = sonnel::Utf8FromPath(scorePath.stem());
    Write(library / sonnel::PathFromUtf8(base + ".mid"), WriteMidi(score, song));
    Write(library / sonnel::PathFromUtf8(base + ".lyk"),
          sonnel::EncodeFileText(WriteLyk(score, song)));
    Write(karFolder / sonnel::PathFromUtf8(base + ".kar"), WriteKar(score, song));
    std::cout << base << ": " << song.Milliseconds(song.endTick) / 1000 << " s, "
              << song.pages.size() << " pages\n";
    return {base, score.title, score.author, score.album};
}

int Run(std::span<char* const> arguments) {
    const fs::path library = arguments[0];
    const fs::path karFolder = arguments[1];
    fs::create_directories(library);
    fs::create_directories(karFolder);
    std::vector<IndexEntry> index;
    for (const fs::path scorePath : arguments.subspan(2)) {
        try {
            index.push_back(MakeSong(scorePath, library, karFolder));
        } catch (const std::exception& error) {
            std::cerr << sonnel::Utf8FromPath(scorePath) << ": " << error.what() << '\n';
            return EXIT_FAILURE;
        }
    }
    Write(library / "sonnel.snl", sonnel::EncodeFileText(sonnel::songs::WriteIndex(index)));
    return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
    const std::span<char* const> arguments(argv, static_cast<std::size_t>(argc));
    if (arguments.size() < 4) {
        std::cerr << "usage: sonnel_songs LIBRARY_FOLDER KAR_FOLDER SCORE...\n";
        return EXIT_FAILURE;
    }
    try {
        return Run(arguments.subspan(1));
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
