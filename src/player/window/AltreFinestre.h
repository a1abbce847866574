#pragma once

#include "song/FileBrano.h"

#include <optional>

namespace sonnel {

/// What the main window asks of the library and of the options.
class AltreFinestre {
  public:
    virtual ~AltreFinestre() = default;
    /// Lets the user choose a song; nothing when the user cancels.
    [[nodiscard]] virtual std::optional<FileBrano> ScegliBrano() = 0;
    /// "Reload index".
    virtual void RileggiDB() = 0;
    /// "Update index".
    virtual void SincronizzaDB() = 0;
    /// Returns when the options are closed.
    virtual void MostraOpzioni() = 0;
    /// Loads the index, then the selection window, which stays hidden.
    virtual void CaricaLibreria() = 0;
};

}  // namespace sonnel
