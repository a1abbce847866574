#pragma once

#include "song/FileBrano.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace sonnel {

/// The album of the songs that belong to none.
inline constexpr std::string_view AlbumGenerico = "?";

/// One song of the library.
struct Brano {
    /// Base name of its files, without directory and extension; its key in the index, where letter
    /// case does not count.
    std::string NomeFile;
    std::string Titolo;
    std::string Autore;
    std::string Album;
};

/// The song's files in the karaoke directory. For a name that leads out of the directory both are
/// missing.
[[nodiscard]] FileBrano FileDelBrano(std::string_view openDir, const Brano& brano);

/// The song table: the songs of the index in its order, at the positions 1 to NumBrani. A position
/// is a song's identity until the next load or rebuild; 0 or less means no song.
class TabellaBrani {
  public:
    static constexpr std::int16_t MassimoBrani = std::numeric_limits<std::int16_t>::max();

    [[nodiscard]] std::int16_t NumBrani() const { return static_cast<std::int16_t>(brani_.size()); }
    /// The song at a position, 1 to NumBrani.
    [[nodiscard]] const Brano& Brani(std::int16_t posizione) const;
    /// The same, to change its title, author or album in place.
    [[nodiscard]] Brano& Cambia(std::int16_t posizione);
    /// A number that changes whenever the table may have changed.
    [[nodiscard]] std::uint64_t Versione() const { return versione_; }

    /// Empties the table.
    void Azzera();
    /// Appends a song. When the table already holds MassimoBrani songs, it only counts the song as
    /// left out.
    void InserisciBrano(Brano brano);
    /// How many songs did not fit since the table was emptied.
    [[nodiscard]] std::size_t Esclusi() const { return esclusi_; }

  private:
    std::vector<Brano> brani_;
    std::size_t esclusi_ = 0;
    std::uint64_t versione_ = 0;
};

}  // namespace sonnel
