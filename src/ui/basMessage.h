#pragma once

#include <string>

namespace sonnel {

/// The window that asks the user to wait during a long operation. It does not block: it is
/// repainted, and Cancel takes effect, whenever the operation lets pending events run.
class FinestraMessaggio {
  public:
    virtual ~FinestraMessaggio() = default;
    /// Opens the window with this text, centred on the screen, or changes the text of the open one.
    /// Without `mostraAnnulla` it has no Cancel button and is 1500 twips high.
    virtual void MostraMessaggio(const std::string& testo, bool mostraAnnulla) = 0;
    /// Closes the window; nothing happens when it is not open.
    virtual void ChiudiMessaggio() = 0;
    /// Whether Cancel was pressed since the window was opened; false while it is closed.
    [[nodiscard]] virtual bool Annullato() const = 0;
};

}  // namespace sonnel
