#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace sonnel {

/// A line of a list of songs and the position of its song, counted from 1.
struct RigaElenco {
    std::string testo;
    std::int16_t posizione = 0;
};

/// Finds lines of a list by words in them, ignoring letter case and accents. The lines are prepared
/// once for all searches.
class CercaRighe {
  public:
    CercaRighe() = default;
    explicit CercaRighe(const std::vector<RigaElenco>& righe);

    /// The numbers of the lines that hold every word of the text, in their order; all lines when it
    /// holds no word.
    [[nodiscard]] std::vector<std::size_t> Trova(std::string_view testo) const;

  private:
    std::vector<std::string> righe_;  ///< folded
};

}  // namespace sonnel
