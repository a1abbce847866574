#pragma once

#include "library/CaricaIndice.h"
#include "library/ListaBrani.h"

#include <string>
#include <string_view>
#include <vector>

namespace sonnel {

/// A typed text as it is stored: line ends become blanks, leading and trailing spaces go.
[[nodiscard]] std::string TestoCampo(std::string_view testo);

/// The album that a text in the album box means, as it is stored: "<None>" is the generic one.
[[nodiscard]] std::string AlbumDaTesto(std::string_view testo);

/// Why an album cannot have this name, a sentence; "" when it can.
[[nodiscard]] std::string ImpedimentoAlbum(std::string_view album);

/// The albums of the index in the order of the file.
[[nodiscard]] std::vector<std::string> ElencaAlbum(const Libreria& libreria);

/// The three operations on albums take effect at once, in the table, the index and the songs' LYK
/// files. False when nothing was done; a message has reported why, unless the user has cancelled.
bool InserisciAlbum(const Libreria& libreria, const std::string& nome);
/// Asks, and asks again when the album has songs, which then belong to no album.
bool EliminaAlbum(const Libreria& libreria, ListaBrani& lista, const std::string& album);
/// Moves the songs of the old album to the new one, which must not exist yet. The generic album is
/// not renamed.
bool RinominaAlbum(const Libreria& libreria, ListaBrani& lista, const std::string& vecchio,
                   const std::string& nuovo);

}  // namespace sonnel
