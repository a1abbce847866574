#pragma once

#include "platform/Result.h"
#include "platform/files/ProfileFile.h"
#include "song/FileBrano.h"

#include <filesystem>
#include <string>
#include <unordered_set>
#include <vector>

namespace sonnel {

/// Copies songs into the library's directory and its index: their LYK and MID files, or both made
/// from a karaoke MIDI file. The originals stay, and nothing in the library is replaced.
class Aggiunta {
  public:
    /// Lists the songs that the directory holds.
    explicit Aggiunta(std::filesystem::path directory);

    /// Whether a song is already in the library's directory.
    [[nodiscard]] bool DellaLibreria(const FileBrano& brano) const;
    /// Adds one song and returns its base name. On failure nothing of it is in the library and the
    /// error's text is the reason.
    [[nodiscard]] Result<std::string> Aggiungi(ProfileFile& indice, FileBrano brano);

    /// Removes what was added, because the index could not be written.
    void Ritira();

  private:
    [[nodiscard]] std::string Impedimento(const std::string& nome, const FileBrano& brano) const;

    std::filesystem::path directory_;
    std::unordered_set<std::string> presi_;  ///< base names in folded case
    std::vector<std::string> aggiunti_;      ///< base names
};

}  // namespace sonnel
