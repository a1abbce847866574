#pragma once

#include "player/Coda.h"
#include "player/ProssimoTurno.h"
#include "player/window/AltreFinestre.h"
#include "player/window/frmCodaLista.h"
#include "ui/frmCerca.h"
#include "ui/frmElenco.h"

#include <QAction>
#include <QDialog>
#include <QLabel>
#include <QTableView>
#include <functional>
#include <optional>
#include <string>

class QBoxLayout;

namespace sonnel {

/// The queue's window: the upper part finds songs of the library and adds them, the lower part
/// shows the queue. It stays open while songs play.
class FinestraCoda final : public QDialog {
  public:
    /// All of it must outlive the window.
    struct Parti {
        Coda& coda;
        ProssimoTurno& prossimo;
        AltreFinestre& finestre;
        /// The action Start, enabled while a turn can start. The window shows it as a button and
        /// reacts to it.
        QAction& azioneComincia;
        std::function<void(const Turno&)> comincia;
        std::function<void()> lasciata;  ///< called when this is no longer the active window
    };
    FinestraCoda(Parti parti, QWidget* principale);
    FinestraCoda(const FinestraCoda&) = delete;
    FinestraCoda& operator=(const FinestraCoda&) = delete;
    ~FinestraCoda() override { p_.coda.onCambiata = nullptr; }

    /// Opens it, or brings it to the front.
    void Apri();
    /// Shows why a command failed, in the window itself: a message box would pause the song.
    /// Returns false when `errore` holds an error.
    bool Riporta(const std::optional<Error>& errore);

  protected:
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    void CreaElenco(QBoxLayout& colonna);
    void CreaTabella(QBoxLayout& colonna);
    void CreaComandi(QBoxLayout& colonna);
    void CreaAutomatico(QBoxLayout& colonna);
    QAction* Comando(const char* testo, const QKeySequence& tasti, void (FinestraCoda::*gestore)());

    void Rinnova();
    void MostraCoda();
    void Cerca(const QString& parole);
    void Filtra();
    void AbilitaComandi();
    [[nodiscard]] const Turno* Selezionato() const;
    void AggiungiBrano();
    void CominciaTurno();
    void TogliTurno();
    void Su() { SpostaTurno(-1); }
    void Giu() { SpostaTurno(1); }
    void SpostaTurno(int posti);

    Parti p_;
    ModelloBrani* brani_;
    VistaBrani* elenco_;
    ModelloCoda* turni_;
    VistaCoda* tabella_;
    LineaCerca* linea_;
    QLabel* errore_;
    QAction* aggiungi_ = nullptr;
    QList<QAction*> conTurno_;               ///< commands that need a selected turn
    std::optional<std::uint64_t> versione_;  ///< of the songs that are listed
    QString parole_;                         ///< the words to find
};

}  // namespace sonnel
