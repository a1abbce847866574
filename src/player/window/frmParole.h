#pragma once

#include "platform/Registry.h"
#include "player/Scena.h"
#include "settings/Config.h"
#include "song/InformazioniBrano.h"
#include "song/Timeline.h"

#include <QAction>
#include <QMenu>
#include <QPixmap>
#include <QTimer>
#include <QWidget>
#include <functional>

namespace sonnel {

/// The lyrics window: the words of the song that is open, for the singers' screen. It never takes
/// the focus, and draws only what has changed.
class FinestraParole final : public QWidget {
  public:
    /// What it shows; all of it outlives the window.
    struct Parti {
        const Timeline& timeline;
        const InformazioniBrano& informazioni;
        const Config& config;
        Registry& registro;
        std::function<double()> tempo;  ///< of the words that are due, in tenths of a second
        std::function<bool()> suona;    ///< the song is playing
        const QWidget* principale;      ///< whose screen is not the singers'
    };
    explicit FinestraParole(Parti parti);

    /// Opens and closes it; to be added to menus.
    [[nodiscard]] QAction* Azione() { return azione_; }
    /// Another song is open, or the settings have changed.
    void Rinnova();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    struct Interruttore;
    void Apri(bool apri);
    void CreaMenu();
    void Avanza();
    void AggiornaRighe(double da, double a);
    void ScegliCarattere();
    void DisegnaPagina();
    [[nodiscard]] QPixmap Pagina(Colour colore, bool ombra) const;
    [[nodiscard]] double Larghezza(const QString& testo, double caratteri) const;
    void DisegnaCantati(QPainter& pittore) const;
    void DisegnaTitolo(QPainter& pittore) const;

    Parti p_;
    MostraScena mostra_;
    QAction* azione_;
    QMenu menu_;
    QTimer battito_;
    Scena scena_;
    QFont carattere_;
    double passo_ = 0;   ///< height of a line, in pixels
    double prima_ = 0;   ///< top of the first line
    QPixmap daCantare_;  ///< the page in the colour of the text
    QPixmap cantata_;    ///< and in that of what is sung
};

}  // namespace sonnel
