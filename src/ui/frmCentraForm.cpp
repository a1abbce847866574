#include "ui/frmCentraForm.h"

#include "platform/Numbers.h"
#include "ui/basCommon.h"

namespace sonnel {

void CentraForm(QWidget& finestra, const Screen& schermo) {
    const double twips = schermo.TwipsPerPixel();
    const Posizione posto =
        CentraForm(static_cast<float>(schermo.Width()), static_cast<float>(schermo.Height()),
                   static_cast<float>(finestra.width() * twips),
                   static_cast<float>(finestra.height() * twips));
    finestra.move(RoundHalfEven<int>(posto.left / twips), RoundHalfEven<int>(posto.top / twips));
}

}  // namespace sonnel
