#pragma once

#include "platform/Registry.h"
#include "platform/Screen.h"
#include "player/ProssimoTurno.h"
#include "player/Scena.h"
#include "player/window/frmParoleDisegno.h"

#include <QAction>
#include <QMenu>
#include <QTimer>
#include <QWidget>
#include <cstddef>
#include <cstdint>
#include <functional>

namespace sonnel {

/// The lyrics window: the words of the song that is open, for the singers' screen. Where the
/// desktop allows it, it never takes the focus. It draws only what has changed.
class FinestraParole final : public QWidget {
  public:
    /// All of it must outlive the window.
    struct Parti {
        DisegnoScena::Parti brano;
        Registry& registro;
        const Screen& schermo;
        std::function<double()> tempo;  ///< tenths of a second: the time whose words are due
        std::function<bool()> suona;    ///< the song is playing
        std::function<const std::optional<Annuncio>&()> annuncio;  ///< shown instead of the song
        std::function<void()> lasciata;  ///< called when this is no longer the active window
        const QWidget* principale;       ///< the main window, on a screen that is not the singers'
    };
    explicit FinestraParole(Parti parti);

    /// Opens and closes the window; for menus.
    [[nodiscard]] QAction* Azione() { return azione_; }
    /// The menu that chooses what the window shows; for users without a mouse.
    [[nodiscard]] QAction* AzioneMenu() const { return menu_.menuAction(); }
    /// Whether this window shows the announcement of the next turn.
    [[nodiscard]] bool MostraAnnuncio() const { return isVisible() && mostra_.annuncio; }
    /// To be called when another song is open or the settings have changed.
    void Rinnova();
    /// To be called when the song starts or stops playing or its position jumps; more calls do no
    /// harm.
    void Segui();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    struct Interruttore;
    void CreaMenu();
    void Apri(bool apri);
    void Avanza();
    void CambiaSchermoIntero();
    void SchermoPerduto();
    void Colloca(const Rectangle& posto);
    [[nodiscard]] Rectangle Posto() const;

    Parti p_;
    DisegnoScena disegno_;
    MostraScena mostra_;
    QAction* azione_;
    QMenu menu_;
    QTimer battito_;           ///< redraws while the song plays
    QRect ordinario_;          ///< its place when it does not fill the screen
    std::int16_t ultimo_ = 0;  ///< last event that it shows
    std::size_t schermi_ = 0;  ///< number of screens when the window got its place
};

}  // namespace sonnel
