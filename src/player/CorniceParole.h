#pragma once

#include "platform/PictureBox.h"

namespace sonnel {

/// The main window around the lyrics area, as the layout sees it. All lengths in twips.
class CorniceParole {
  public:
    virtual ~CorniceParole() = default;
    [[nodiscard]] virtual int AltezzaBarra() const = 0;     ///< toolbar at the top
    [[nodiscard]] virtual int AltezzaInterna() const = 0;   ///< of the window, toolbar included
    [[nodiscard]] virtual int LarghezzaParole() const = 0;  ///< of the lyrics area
    [[nodiscard]] virtual bool ASchermoIntero() const = 0;  ///< the window covers its screen
    virtual void DisponiParole(int top, int altezza) = 0;
    virtual void ColoreSfondo(Colour colore) = 0;  ///< of the window itself
};

}  // namespace sonnel
