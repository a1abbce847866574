#pragma once

#include "platform/files/ProfileFile.h"
#include "song/LeggiIntestazione.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace sonnel {

/// Sections of the index.
inline constexpr std::string_view SezioneBrani = "Songs";
inline constexpr std::string_view SezioneAlbum = "Album";
/// The value of an album's entry; only its key has a meaning.
inline constexpr std::string_view ValoreAlbum = "|";
/// As many characters of an entry's value are read.
inline constexpr std::size_t MassimoValore = 8191;

/// The library's index in the karaoke directory (UTF-8), "sonnel.snl" in any letter case. An
/// operation makes one ProfileFile of it and hands that to the functions below; one that writes
/// more than one key opens a ProfileFile::Batch first, so that the index is written once:
///
///     ProfileFile indice(PercorsoIndice(config.OpenDir));
///     ProfileFile::Batch lotto(indice);
///     ...                   // ScriviBrano for each song that moves
///     (void)lotto.Commit(); // a failing write of the index is not reported
[[nodiscard]] std::filesystem::path PercorsoIndice(std::string_view openDir);
/// Whether there is an index in the directory.
[[nodiscard]] bool EsisteIndice(std::string_view openDir);

/// With a key: its value, at most MassimoValore characters of it, or `predefinito` when the key is
/// absent. Without one: the names of the section's keys in file order, each followed by NUL.
[[nodiscard]] std::string LeggiIndice(const ProfileFile& indice, std::string_view sezione,
                                      std::string_view chiave, std::string_view predefinito);

/// Sets the key, or removes it when the value is empty. A key with "=" in it, which could not be
/// read back, is not written. A write that fails changes nothing and is not reported.
void ScriviIndice(ProfileFile& indice, std::string_view sezione, std::string_view chiave,
                  std::string_view valore);

/// Takes the first name off a list of names returned by LeggiIndice; false and "" when it is empty.
/// Only the view changes; the caller owns the list.
bool ProssimaChiave(std::string_view& elenco, std::string& chiave);

/// Title, author and album of a song's entry; what is missing there is "".
[[nodiscard]] Intestazione LeggiBrano(const ProfileFile& indice, std::string_view nome);

/// Writes a song's entry, and its album's unless that is the generic one. A "|" in title or author
/// is stored as it is and shifts the fields when they are read.
void ScriviBrano(ProfileFile& indice, std::string_view nome, std::string_view titolo,
                 std::string_view autore, std::string_view album);

/// Why the index cannot hold a song whose files have this name; "" when it can.
[[nodiscard]] std::string_view ImpedimentoNome(std::string_view nome);

/// Removes a song's entry.
void RimuoviVoce(ProfileFile& indice, std::string_view nome);

/// Writes what a new index holds: no song and the generic album.
void CreaIndice(ProfileFile& indice);

/// Makes a new index where there is none yet.
void AssicuraIndice(ProfileFile& indice);

/// Enters a song in the index, which is made when there is none. An entry that was left from a song
/// whose name differs in letter case takes the new spelling.
void RegistraBrano(ProfileFile& indice, std::string_view nome, const Intestazione& campi);

}  // namespace sonnel
