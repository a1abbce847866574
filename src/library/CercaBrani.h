#pragma once

#include "library/ElencoBrani.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace sonnel {

/// Finds lines of the selection list by words in them, letter case and accents aside. The lines are
/// folded once.
class CercaBrani {
  public:
    CercaBrani() = default;
    explicit CercaBrani(const std::vector<RigaElenco>& righe);

    /// The numbers of the lines that hold every word of the text, in their order; all lines when it
    /// holds no word.
    [[nodiscard]] std::vector<std::size_t> Trova(std::string_view testo) const;

  private:
    std::vector<std::string> righe_;  ///< folded
};

}  // namespace sonnel
