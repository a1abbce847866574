#pragma once

#include "platform/Result.h"
#include "platform/midi/SmfReader.h"

#include <filesystem>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sonnel {

/// Why a file is not even looked for by this name: a sentence, or nothing when the name can be one.
[[nodiscard]] std::optional<std::string> RifiutoNome(const std::string& file);

/// Whether a file's name ends in an extension, in any letter case.
[[nodiscard]] bool HaEstensione(std::string_view file, std::string_view estensione);
/// The name without the extension if it has one of these.
[[nodiscard]] std::string SenzaEstensione(std::string_view file,
                                          std::initializer_list<std::string_view> estensioni);

/// The file of this name in any letter case, or where it would be.
[[nodiscard]] std::filesystem::path FileNominato(const std::string& file);

/// Reads a MIDI file. The error's text is a sentence with the file's name.
[[nodiscard]] Result<SmfFile> LeggiMidi(const std::filesystem::path& file);

/// Adds a sentence with the file's name to `messaggi` if a part of it could not be read.
void AvvisaSeDanneggiato(const std::string& file, const SmfFile& letto,
                         std::vector<std::string>& messaggi);

/// Why the file cannot be opened for reading: a sentence with its name, or nothing.
[[nodiscard]] std::optional<std::string> Illeggibile(const std::filesystem::path& file);

/// Does a piece of the work on a file. An exception ends that piece only: a sentence that tells it,
/// or nothing when all went well.
[[nodiscard]] std::optional<std::string> Tenta(std::string_view file,
                                               const std::function<void()>& lavoro);

}  // namespace sonnel
