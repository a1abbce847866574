#pragma once

#include "platform/Screen.h"
#include "platform/qt/QtPictureBox.h"
#include "settings/Opzioni.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>

namespace sonnel {

/// The options window: edits a copy of the settings, which OK makes the program's own.
class frmOpzioni : public QDialog {
  public:
    struct Parti {
        PartiOpzioni opzioni;
        const Screen& schermo;
    };
    explicit frmOpzioni(const Parti& parti, QWidget* parent = nullptr);

    void cmdSfogliaDatabase_Click();
    void chkAutoplay_Click();
    void lstFontName_Click();
    void lstFontSize_Click();
    void chkFontBold_Click();
    void cmdColoreTesto_Click();
    void cmdColoreSfondo_Click();
    void cmdColoreSelezione_Click();
    void cmdColoreOmbra_Click();
    void chkOmbra_Click();
    void chkAutoFont_Click();
    void vscCompensation_Change();
    void cmdOk_Click();
    void cmdAnnulla_Click();

    /// Escape and the frame are Cancel, but not while the index is made.
    void reject() override;

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void Disponi();
    QWidget* CreaGenerale();
    QWidget* CreaSchermo();
    QWidget* CreaFont();
    QWidget* CreaColori();
    QWidget* CreaInterruttori();
    QWidget* CreaAvanzate();
    QWidget* CreaBottoni();
    void Form_Load();
    void Collega();
    void RiempiDimensioni();
    void ScegliColore(const char* titolo, Colour Config::*colore);
    void MostraColori();
    void MostraCompensazione();
    void DisegnaCampione();

    Parti parti_;
    Config copia_;

    QLabel* lblOpenDir = nullptr;
    QPushButton* cmdSfogliaDatabase = nullptr;
    QCheckBox* chkAutoplay = nullptr;
    QComboBox* lstFontName = nullptr;
    QComboBox* lstFontSize = nullptr;
    QCheckBox* chkFontBold = nullptr;
    QtPictureBox Parole;
    QPushButton* cmdColoreTesto = nullptr;
    QPushButton* cmdColoreSfondo = nullptr;
    QPushButton* cmdColoreSelezione = nullptr;
    QPushButton* cmdColoreOmbra = nullptr;
    QCheckBox* chkOmbra = nullptr;
    QCheckBox* chkAutoFont = nullptr;
    QLabel* lblCompensation = nullptr;
    QScrollBar* vscCompensation = nullptr;
    QPushButton* cmdOk = nullptr;
    QPushButton* cmdAnnulla = nullptr;
};

}  // namespace sonnel
