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

/// The song that a command line names: by base path or, if no song has that, by one of the song's
/// files.
[[nodiscard]] FileBrano BranoNominato(const std::string& riga);

/// The absolute path of the song, so that a player started in another directory finds it; "" for no
/// song.
[[nodiscard]] std::string PercorsoAssoluto(const std::string& riga);

}  // namespace sonnel
