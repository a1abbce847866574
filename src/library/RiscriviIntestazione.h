#pragma once

#include "platform/Result.h"
#include "song/LeggiIntestazione.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace sonnel {

/// A LYK file's text with these fields in its header, without comments and empty lines; all other
/// lines are unchanged.
[[nodiscard]] std::string ConIntestazione(std::string_view testo, const Intestazione& campi);

/// Rewrites the header lines of the LYK file directory + name + ".lyk" (any letter case): title,
/// author and album as given, comments and empty lines dropped, all other lines as they are. The
/// file keeps its permissions and its encoding, but becomes UTF-8 with mark when its code page
/// lacks a letter. It is replaced by way of "sonnel.tmp" and name + ".bak" so that after any
/// failure or crash either the old or the new file is complete. An error holds the system's number
/// and a sentence for the user.
std::optional<Error> RiscriviIntestazione(const std::filesystem::path& directory,
                                          std::string_view name, const Intestazione& campi);

/// The same for a file whose path is known already.
std::optional<Error> RiscriviIntestazione(const std::filesystem::path& file,
                                          const Intestazione& campi);

}  // namespace sonnel
