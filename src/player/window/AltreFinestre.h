#pragma once

#include "platform/Result.h"
#include "player/Coda.h"
#include "song/FileBrano.h"
#include "ui/CercaRighe.h"

#include <cstdint>
#include <optional>
#include <vector>

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
    /// Shows the options window; returns when it is closed.
    virtual void MostraOpzioni() = 0;
    /// Loads the index and creates the selection window, still hidden.
    virtual void CaricaLibreria() = 0;
    /// The library's songs by title. Their positions are valid until VersioneBrani changes.
    [[nodiscard]] virtual std::vector<RigaElenco> ElencoBrani() = 0;
    [[nodiscard]] virtual std::uint64_t VersioneBrani() const = 0;
    /// The song at a position, for the queue.
    [[nodiscard]] virtual Result<Turno> TurnoDelBrano(std::int16_t posizione) = 0;
};

}  // namespace sonnel
