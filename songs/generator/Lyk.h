#pragma once

#include "generator/Arranger.h"
#include "generator/Score.h"

#include <string>
#include <vector>

namespace sonnel::songs {

/// The lyrics file of a song, as text (UTF-8, lines end with CR LF). Throws std::out_of_range when
/// the song is longer than the format allows.
[[nodiscard]] std::string WriteLyk(const Score& score, const Arrangement& song);

/// One song's entry in the index.
struct IndexEntry {
    std::string baseName;
    std::string title;
    std::string author;
    std::string album;
};

/// The index of a library that holds these songs, as text (UTF-8, lines end with CR LF).
[[nodiscard]] std::string WriteIndex(std::vector<IndexEntry> songs);

}  // namespace sonnel::songs
