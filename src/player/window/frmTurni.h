#pragma once

#include "platform/qt/QtSystem.h"
#include "player/ProssimoTurno.h"
#include "player/Riproduzione.h"
#include "player/window/AltreFinestre.h"
#include "player/window/frmAnnuncio.h"
#include "player/window/frmCoda.h"
#include "player/window/frmParole.h"

#include <QAction>
#include <QObject>
#include <optional>
#include <vector>

namespace sonnel {

/// Connects the queue with the main window: opens the queue's window, shows the announcement
/// between two songs and starts turns.
class Turni final : public QObject {
  public:
    /// All of it must outlive this object.
    struct Parti {
        Coda& coda;
        Registry& registro;
        const MMControl& sequencer;
        Riproduzione& riproduzione;
        AltreFinestre& finestre;
        MsgBox& msgBox;
        const Config& config;
        QWidget& area;                   ///< everything below the menu bar
        QWidget& barra;                  ///< the toolbar's strip at the top of it
        FinestraParole& cantanti;        ///< may show the announcement
        std::function<void()> lasciata;  ///< the queue's window is no longer the active one
    };
    /// `finestra` owns the new object.
    Turni(QWidget& finestra, Parti parti);

    /// Opens the queue's window; for menus.
    [[nodiscard]] QAction* Azione() { return azione_; }
    /// Starts a turn; the main window enables it while no song plays.
    [[nodiscard]] QAction* AzioneComincia() { return comincia_; }
    /// Whether `finestra` is the queue's window.
    [[nodiscard]] bool Sua(const QWidget* finestra) const {
        return coda_ != nullptr && finestra == coda_;
    }
    void BranoFinito() { prossimo_.BranoFinito(); }
    [[nodiscard]] const std::optional<Annuncio>& Corrente() const { return prossimo_.Corrente(); }
    /// Ends the announcement. It has the shortcuts of pause and stop, which are disabled at that
    /// time.
    [[nodiscard]] QAction* AzioneFerma() { return ferma_; }
    /// Appends songs to the queue and reports the result to the user.
    void Accoda(const std::vector<FileBrano>& brani);
    bool eventFilter(QObject* oggetto, QEvent* evento) override;

  private:
    void Apri();
    void CreaFinestra();
    void MostraAnnuncio();
    void Avvisa(const QString& testo);
    bool Togli(const Turno& turno);
    bool Suona(const Turno& turno);

    Parti p_;
    QWidget& finestra_;
    QtTimer timer_;
    ProssimoTurno prossimo_;
    CartaAnnuncio* carta_;
    FinestraCoda* coda_ = nullptr;  ///< from its first use on
    QAction* azione_;
    QAction* comincia_;
    QAction* ferma_;
};

}  // namespace sonnel
