#pragma once

#include "library/CaricaIndice.h"
#include "library/Indice.h"

#include <cstddef>
#include <optional>

namespace sonnel {

/// Writes songs that were changed in the table to the index and to their LYK files. The index is
/// written once, at the end; a write of it that fails is not reported.
class ScritturaBrani {
  public:
    /// All of the library outlives it.
    explicit ScritturaBrani(const Libreria& libreria);

    void Scrivi(const Brano& brano);
    [[nodiscard]] ProfileFile& Indice() { return indice_; }
    /// Puts the index on disk and reports in one message the LYK files that stayed as they were. To
    /// be called once, with the normal pointer shown.
    void Concludi();

  private:
    const Libreria& libreria_;
    ProfileFile indice_;
    ProfileFile::Batch lotto_;
    std::optional<Error> primoErrore_;
    std::size_t errori_ = 0;
};

}  // namespace sonnel
