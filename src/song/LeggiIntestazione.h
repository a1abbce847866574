#pragma once

#include "platform/Result.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace sonnel {

/// The fields of a song's LYK file that the library lists.
struct Intestazione {
    std::string Titolo;
    std::string Autore;
    std::string Album = "?";  ///< "?": no album
};

/// Reads the header of the LYK file directory + name + ".lyk" (any letter case), up to the first
/// line that begins with "0"; the first line is not checked. A name that would leave the directory
/// and a file that cannot be read are errors, with the system's number and a sentence for the user.
[[nodiscard]] Result<Intestazione> LeggiIntestazione(const std::filesystem::path& directory,
                                                     std::string_view name);

/// The same for the text of a LYK file (UTF-8).
[[nodiscard]] Intestazione IntestazioneDaTesto(std::string_view testo);

/// The same for a file whose path is known already.
[[nodiscard]] Result<Intestazione> LeggiIntestazione(const std::filesystem::path& file);

}  // namespace sonnel
