#pragma once

#include "song/FileBrano.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace sonnel {

/// Finds the songs among files and folders: LYK files, with their MID files if any, and MIDI files
/// without a LYK file, whose words are not read yet. Each song is found once.
class RaccoltaBrani {
  public:
    /// `continua` is called for each file; the search ends when it returns false.
    explicit RaccoltaBrani(std::function<bool()> continua = [] { return true; })
        : continua_(std::move(continua)) {}

    /// Adds the songs of a file, or of all files in a folder and the folders in it; links to
    /// folders are not followed there.
    void Esamina(const std::filesystem::path& percorso);
    /// The songs found since the last call.
    [[nodiscard]] std::vector<FileBrano> Prendi() { return std::exchange(trovati_, {}); }

  private:
    void EsaminaCartella(const std::filesystem::path& cartella);
    void EsaminaFile(const std::filesystem::path& file);
    std::optional<std::filesystem::path> Accanto(const std::filesystem::path& file,
                                                 const char* estensione);

    std::function<bool()> continua_;
    bool finita_ = false;
    std::vector<FileBrano> trovati_;
    std::set<std::filesystem::path> visti_;
    std::filesystem::path elencata_;  ///< the folder whose files are in nomi_
    std::unordered_map<std::string, std::filesystem::path> nomi_;  ///< by name in folded case
};

}  // namespace sonnel
