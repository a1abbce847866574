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

/// The queue in the main window: its window, the announcement between two songs, and the beginning
/// of a turn.
class Turni final : public QObject {
  public:
    /// What it uses; all of it outlives it.
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
        FinestraParole& cantanti;        ///< asks for the announcement
        std::function<void()> lasciata;  ///< the queue's window is no longer the active one
    };
    /// It belongs to the window.
    Turni(QWidget& finestra, Parti parti);

    /// Opens the queue; to be added to menus.
    [[nodiscard]] QAction* Azione() { return azione_; }
    /// Begins a turn; to be enabled while none plays.
    [[nodiscard]] QAction* AzioneComincia() { return comincia_; }
    /// Whether this is the queue's window.
    [[nodiscard]] bool Sua(const QWidget* finestra) const {
        return coda_ != nullptr && finestra == coda_;
    }
    void BranoFinito() { prossimo_.BranoFinito(); }
    [[nodiscard]] const std::optional<Annuncio>& Corrente() const { return prossimo_.Corrente(); }
    /// Ends the announcement, where the keys for pause and stop have nothing else to do.
    [[nodiscard]] QAction* AzioneFerma() { return ferma_; }
    /// Appends songs to the queue, and says so or why one cannot be.
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
