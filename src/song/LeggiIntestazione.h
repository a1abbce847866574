#pragma once

#include "platform/Result.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace sonnel {

/// What a song's LYK file says about it, as the library lists it.
struct Intestazione {
    std::string Titolo;
    std::string Autore;
    std::string Album = "?";  ///< "?": no album
};

/// Reads the header of the LYK file directory + name + ".lyk" (any letter case), up to the first
/// line that begins with "0"; the first line may be any. A name that would leave the directory, a
/// missing or an unreadable file is an error: the system's number and a sentence with the file's
/// name and the reason.
[[nodiscard]] Result<Intestazione> LeggiIntestazione(const std::filesystem::path& directory,
                                                     std::string_view name);

/// The same of a LYK file's text (UTF-8).
[[nodiscard]] Intestazione IntestazioneDaTesto(std::string_view testo);

/// The same for a file whose path is known already.
[[nodiscard]] Result<Intestazione> LeggiIntestazione(const std::filesystem::path& file);

}  // namespace sonnel
