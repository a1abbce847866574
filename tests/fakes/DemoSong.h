#pragma once

#include "generator/Arranger.h"
#include "generator/ScoreReader.h"
#include "generator/Smf.h"
#include "platform/files/Files.h"

#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace sonnel::test {

/// A song of the demo library, made from its score as the build makes it.
struct DemoSong {
    explicit DemoSong(const std::filesystem::path& path)
        : score(songs::ReadScore(*ReadFile(path))) {}

    songs::Score score;
    songs::Arrangement song = songs::Arrange(score);
    std::string midi = songs::WriteMidi(score, song);
};

/// The scores of all demo songs.
inline std::vector<std::filesystem::path> DemoScores() {
    const std::filesystem::directory_iterator entries(SONNEL_SCORES_FOLDER);
    const std::set<std::filesystem::path> scores(begin(entries), end(entries));
    return {scores.begin(), scores.end()};
}

}  // namespace sonnel::test
