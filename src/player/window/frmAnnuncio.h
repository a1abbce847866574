#pragma once

#include "player/ProssimoTurno.h"
#include "settings/Config.h"

#include <QPainter>
#include <QWidget>
#include <functional>

namespace sonnel {

/// Draws the announcement of the next turn into an area, in the colours and the font of the lyrics.
void DisegnaAnnuncio(QPainter& pittore, const QRectF& area, const Annuncio& annuncio,
                     const Config& config);

/// Shows the announcement over everything below the toolbar. Mouse clicks reach the lyrics under
/// it.
class CartaAnnuncio final : public QWidget {
  public:
    CartaAnnuncio(QWidget& area, QWidget& barra, const Config& config,
                  std::function<const std::optional<Annuncio>&()> annuncio);

    /// To be called when the announcement has changed. `mostra` false: another window shows it.
    void Aggiorna(bool mostra);

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    const QWidget& barra_;
    const Config& config_;
    std::function<const std::optional<Annuncio>&()> annuncio_;
};

}  // namespace sonnel
