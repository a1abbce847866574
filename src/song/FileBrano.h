#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace sonnel {

/// The files of a song, found once where the song is named.
struct FileBrano {
    std::string base;                            ///< path without extension, as the song was named
    std::optional<std::filesystem::path> lyk{};  ///< as spelled on disk; nothing when it is missing
    std::optional<std::filesystem::path> mid{};
    /// The words read from a MIDI file without a LYK file, as the text of one.
    std::optional<std::string> parole{};
    std::string motivo{};  ///< why its MIDI file cannot be sung without a LYK file, or ""

    [[nodiscard]] bool HaParole() const { return lyk || parole; }
    [[nodiscard]] bool Completo() const { return HaParole() && mid; }
};

/// The file dialogs' filter for such MIDI files.
inline constexpr const char* GenereKaraoke = "Karaoke MIDI files (*.kar *.mid *.midi *.rmi)";

/// Whether a file begins as MIDI files do.
[[nodiscard]] bool SembraMidi(const std::filesystem::path& file);

/// Reads the words of a song that has only its MIDI file.
void LeggiParole(FileBrano& brano);

/// Looks for base + ".LYK" and base + ".MID", ignoring letter case.
[[nodiscard]] FileBrano TrovaFileBrano(std::string base);

/// The song that a file belongs to: a LYK or MID file with the other one beside it, or a MIDI file
/// of any name with words in it. Otherwise the song is incomplete.
[[nodiscard]] FileBrano BranoDaFile(const std::filesystem::path& file);

}  // namespace sonnel
