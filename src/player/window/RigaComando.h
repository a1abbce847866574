#pragma once

#include "song/FileBrano.h"

#include <string>

namespace sonnel {

/// The command line without the double quote it begins with and, after that one, its last
/// character.
[[nodiscard]] std::string SenzaVirgolette(std::string riga);

/// The base path of the song that a command line names: one apostrophe at either end dropped, then
/// the extension ".lyk" or ".mid" (any last characters that occur in ".mid.lyk", in fact).
[[nodiscard]] std::string BranoDaRiga(std::string riga);

/// The song that a command line names: by its base path or, where there is no such song, by a file
/// that belongs to it.
[[nodiscard]] FileBrano BranoNominato(const std::string& riga);

/// The same song as it is named from any directory: an absolute path; "" for no song.
[[nodiscard]] std::string PercorsoAssoluto(const std::string& riga);

}  // namespace sonnel
