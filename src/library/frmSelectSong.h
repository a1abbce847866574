#pragma once

#include "library/CaricaIndice.h"
#include "library/ComandiSelezione.h"
#include "library/ElencoBrani.h"
#include "library/ListaBrani.h"
#include "platform/CommonDialog.h"
#include "song/FileBrano.h"
#include "ui/CRebar.h"

#include <QAction>
#include <QDialog>
#include <QListView>
#include <QMenuBar>
#include <QPushButton>
#include <QToolBar>
#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <random>
#include <span>
#include <string>
#include <vector>

namespace sonnel {

class LineaCerca;
class ModelloBrani;

/// The song selection window, in which the user picks a song to play and manages the library. It is
/// shown with exec() and afterwards only hidden, so that list, order, selection and size are kept.
class frmSelectSong final : public QDialog, public ListaBrani {
  public:
    /// All of it must outlive the window.
    struct Parti {
        const Libreria& libreria;
        CommonDialog& dialoghi;
        std::mt19937& caso;
        ComandiSelezione& comandi;
    };
    explicit frmSelectSong(const Parti& parti, QWidget* parent = nullptr);

    /// The answer, to be read when the window is hidden: "" for nothing, the position of a song in
    /// the table, or "F=" and the path of a song outside the library, without extension.
    std::string Tag;
    /// The files of the song in the answer.
    [[nodiscard]] const std::optional<FileBrano>& Scelta() const { return scelta_; }

    void AggiornaLista() override;
    void SelezionaBrano(std::int16_t posizione) override;
    [[nodiscard]] std::int16_t BranoSelezionato() const override;
    /// Enables the commands that need a selected line, or a line at all.
    void AbilitaBottoni();

    void mnuFileOpen_Click();
    void mnuFileOpenLyk_Click();
    void mnuFileRandom_Click();
    void mnuFileProperties_Click();
    void mnuFileExit_Click();
    void mnuViewSort_Click(Ordine ordine);
    void mnuDataAdd_Click();
    void mnuDataDelete_Click();
    void mnuDataConvert_Click();
    void mnuDataReload_Click();
    void mnuDataRebuild_Click();
    /// Runs the command of the toolbar button at a 1-based index; a separator has none.
    void tlbBar_ButtonClick(int index);
    void lstBrani_Click();
    /// Escape and the close button of the frame act as Exit, except while the window takes no
    /// input.
    void reject() override;

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    /// What a command needs before it can be used.
    enum class Serve { Nulla, Selezione, Riga };
    struct Comando;
    [[nodiscard]] static std::span<const Comando> TabellaComandi();
    [[nodiscard]] static const Comando* ComandoDelBottone(int indice);

    void CreaMenu();
    QWidget* CreaBarra();
    void Esegui(const Comando& comando);
    void CreaLista();
    void Disponi(QWidget* striscia);
    [[nodiscard]] Ordine OrdineCorrente() const;
    void Cerca(const QString& parole);
    void SelezionaTrovato(std::int16_t selezionato);
    void ContaRighe();
    void Chiudi(const std::string& risposta, std::optional<FileBrano> scelta);
    void ChiudiCon(std::int16_t posizione);
    void AggiungiFile(const std::vector<std::filesystem::path>& percorsi);
    template <class Operazione>
    void SenzaInput(const Operazione& operazione);

    Parti p_;
    QMenuBar* menu_;
    QListView* lstBrani;
    ModelloBrani* righe_;
    LineaCerca* linea_ = nullptr;
    QPushButton* cmdOk;
    QPushButton* cmdAnnulla;
    QToolBar* tlbBar = nullptr;
    CRebar Rebar;
    /// A menu item or a button and what it needs.
    struct Legame {
        QAction* azione;
        Serve serve;
    };
    std::vector<Legame> legami_;
    std::array<QAction*, 3> ordini_{};  ///< the buttons of the orders: one of them is pressed
    std::optional<FileBrano> scelta_;
};

}  // namespace sonnel
