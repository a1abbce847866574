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
    /// The library must outlive this object.
    explicit ScritturaBrani(const Libreria& libreria);

    void Scrivi(const Brano& brano);
    [[nodiscard]] ProfileFile& Indice() { return indice_; }
    /// Writes the index and reports in one message the LYK files that could not be changed. To be
    /// called once, while the normal pointer is shown.
    void Concludi();

  private:
    const Libreria& libreria_;
    ProfileFile indice_;
    ProfileFile::Batch lotto_;
    std::optional<Error> primoErrore_;
    std::size_t errori_ = 0;
};

}  // namespace sonnel
