#pragma once

#include "platform/Result.h"
#include "song/FileBrano.h"

#include <filesystem>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace sonnel {

// Files as the command line names them. An error's text is a sentence with the name.

/// Why no file is looked for under this name; nothing when a file can have it.
[[nodiscard]] std::optional<Error> RifiutoNome(const std::string& file);

/// Whether a file's name ends in an extension, in any letter case.
[[nodiscard]] bool HaEstensione(std::string_view file, std::string_view estensione);

/// The file of this name in any letter case, or where it would be.
[[nodiscard]] std::filesystem::path CercaFile(const std::string& file);
/// The same; fails when the name is refused.
[[nodiscard]] Result<std::filesystem::path> FileNominato(const std::string& file);

/// The files of a song that is named by its base path, or by a file with one of these extensions.
/// Fails when the name is refused.
[[nodiscard]] Result<FileBrano> CercaBrano(const std::string& nome,
                                           std::initializer_list<std::string_view> estensioni);

}  // namespace sonnel
