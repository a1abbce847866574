#pragma once

#include "library/CaricaIndice.h"
#include "library/ElencoBrani.h"
#include "library/ListaBrani.h"
#include "platform/CommonDialog.h"
#include "ui/CRebar.h"

#include <QAction>
#include <QDialog>
#include <QListView>
#include <QMenuBar>
#include <QPushButton>
#include <QToolBar>
#include <array>
#include <functional>
#include <random>
#include <string>

namespace sonnel {

class ModelloBrani;

/// The song selection window: the person picks the song to play, and looks after the library. It
/// is shown with exec() and only hidden afterwards, so that list, order, selection and size stay.
class frmSelectSong final : public QDialog, public ListaBrani {
  public:
    /// What the window stands on; all of it outlives the window.
    struct Parti {
        const Libreria& libreria;
        CommonDialog& dialoghi;
        std::mt19937& caso;
    };
    explicit frmSelectSong(const Parti& parti, QWidget* parent = nullptr);

    /// The answer, to be read when the window is hidden: "" for nothing, the position of a song in
    /// the table, or "F=" and the path of a song outside the library, without extension.
    std::string Tag;

    /// Commands that others carry out; one that is not bound does nothing.
    std::function<void()> AggiungiBrani;
    std::function<void()> ProprietaBrano;
    std::function<void()> ConvertiKar;
    std::function<void()> SincronizzaDB;

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
    /// Runs the command of the toolbar button at a 1-based index.
    void tlbBar_ButtonClick(int index);
    void lstBrani_Click();
    /// Escape and the frame end the window as Exit does, but not while it takes no input.
    void reject() override;

  protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    static constexpr int NumBottoni = 14;

    void CreaMenu();
    void CreaMenuFile();
    void CreaMenuDatabase();
    QWidget* CreaBarra();
    void CreaLista();
    void Disponi(QWidget* striscia);
    [[nodiscard]] Ordine OrdineCorrente() const;
    void Chiudi(const std::string& risposta);
    void SenzaInput(const std::function<void()>& comando);
    void Esegui(const std::function<void()>& comando);

    Parti p_;
    QMenuBar* menu_;
    QListView* lstBrani;
    ModelloBrani* righe_;
    QPushButton* cmdOk;
    QPushButton* cmdAnnulla;
    QToolBar* tlbBar = nullptr;
    CRebar Rebar;
    std::array<QAction*, NumBottoni> bottoni_{};

    QAction* mnuFileOpen = nullptr;
    QAction* mnuFileRandom = nullptr;
    QAction* mnuFileProperties = nullptr;
    QAction* mnuDataDelete = nullptr;
};

}  // namespace sonnel
