#include "settings/frmOpzioni.h"

#include "platform/Numbers.h"
#include "platform/Paths.h"
#include "platform/ScopeExit.h"
#include "platform/qt/FitScreen.h"
#include "platform/qt/QtColour.h"
#include "settings/TestoNumero.h"
#include "ui/basCommon.h"
#include "ui/frmCentraForm.h"

#include <QEvent>
#include <QFontDatabase>
#include <QPainter>
#include <QSignalBlocker>
#include <algorithm>
#include <array>
#include <utility>

namespace sonnel {
frmOpzioni::frmOpzioni(const Parti& parti, QWidget* parent)
    : QDialog(parent),
      parti_(parti),
      copia_(parti.opzioni.config),
      Parole(parti.schermo.TwipsPerPixel()) {
    setWindowTitle("Options");
    // The window stays alive while the index is made, but takes no second OK.
    parti_.opzioni.creaIndice = [this, crea = parti.opzioni.creaIndice] {
        setEnabled(false);
        const ScopeExit riabilita([this] { setEnabled(true); });
        crea();
    };
    Disponi();
    Form_Load();
    Collega();
}

// Loading

void frmOpzioni::Form_Load() {
    lstFontName->addItems(QFontDatabase::families());
    lstFontName->setCurrentIndex(
        lstFontName->findText(QString::fromStdString(copia_.FontName), Qt::MatchExactly));
    if (lstFontName->currentIndex() >= 0) {
        RiempiDimensioni();
    }
    chkFontBold->setChecked(copia_.FontBold);
    chkAutoFont->setChecked(copia_.AutoFont);
    chkAutoFont_Click();
    chkOmbra->setChecked(copia_.Ombra);
    chkOmbra_Click();
    MostraColori();
    lblOpenDir->setText(QString::fromStdString(copia_.OpenDir));
    vscCompensation->setValue(
        -std::clamp(copia_.Compensazione, vscCompensation->minimum(), vscCompensation->maximum()));
    MostraCompensazione();
    chkAutoplay->setChecked(copia_.Autoplay);
    Parole.installEventFilter(this);

    FitToScreen(*this);
    CentraForm(*this, parti_.schermo);
}

/// From here on each control writes its setting into the copy. Not before: a compensation outside
/// the bounds and a size that the font lacks stay as they are until the user chooses another.
void frmOpzioni::Collega() {
    const std::array<std::pair<QPushButton*, void (frmOpzioni::*)()>, 7> bottoni{{
        {cmdSfogliaDatabase, &frmOpzioni::cmdSfogliaDatabase_Click},
        {cmdColoreTesto, &frmOpzioni::cmdColoreTesto_Click},
        {cmdColoreSfondo, &frmOpzioni::cmdColoreSfondo_Click},
        {cmdColoreSelezione, &frmOpzioni::cmdColoreSelezione_Click},
        {cmdColoreOmbra, &frmOpzioni::cmdColoreOmbra_Click},
        {cmdOk, &frmOpzioni::cmdOk_Click},
        {cmdAnnulla, &frmOpzioni::cmdAnnulla_Click},
    }};
    for (const auto& [bottone, comando] : bottoni) {
        connect(bottone, &QPushButton::clicked, this, comando);
    }
    connect(chkAutoplay, &QCheckBox::toggled, this, &frmOpzioni::chkAutoplay_Click);
    connect(chkFontBold, &QCheckBox::toggled, this, &frmOpzioni::chkFontBold_Click);
    connect(chkOmbra, &QCheckBox::toggled, this, &frmOpzioni::chkOmbra_Click);
    connect(chkAutoFont, &QCheckBox::toggled, this, &frmOpzioni::chkAutoFont_Click);
    connect(lstFontName, &QComboBox::currentIndexChanged, this, &frmOpzioni::lstFontName_Click);
    connect(lstFontSize, &QComboBox::currentIndexChanged, this, &frmOpzioni::lstFontSize_Click);
    connect(vscCompensation, &QScrollBar::valueChanged, this, &frmOpzioni::vscCompensation_Change);
}

/// Lists the sizes of the chosen font; selected is the copy's, when the font has it.
void frmOpzioni::RiempiDimensioni() {
    const QSignalBlocker blocco(lstFontSize);
    lstFontSize->clear();
    const std::vector<float> dimensioni = DimensioniFont(Parole, copia_.FontName);
    for (const float dimensione : dimensioni) {
        lstFontSize->addItem(QString::fromStdString(TestoNumero(dimensione)));
    }
    const auto trovata = std::find(dimensioni.begin(), dimensioni.end(), copia_.FontSize);
    lstFontSize->setCurrentIndex(
        trovata != dimensioni.end() ? static_cast<int>(trovata - dimensioni.begin()) : -1);
}

// Controls

void frmOpzioni::cmdSfogliaDatabase_Click() {
    const auto scelti = parti_.opzioni.dialoghi.ChooseFiles(
        {"Karaoke directory selection", "snl", "sonnel.snl", PathFromUtf8(copia_.OpenDir), false});
    if (!scelti.empty()) {
        copia_.OpenDir = AggiungiBarra(Utf8FromPath(scelti.front().parent_path()));
        lblOpenDir->setText(QString::fromStdString(copia_.OpenDir));
    }
}

void frmOpzioni::chkAutoplay_Click() {
    copia_.Autoplay = chkAutoplay->isChecked();
}

void frmOpzioni::lstFontName_Click() {
    copia_.FontName = lstFontName->currentText().toStdString();
    RiempiDimensioni();
    DisegnaCampione();
}

void frmOpzioni::lstFontSize_Click() {
    const std::string testo = lstFontSize->currentText().toStdString();
    copia_.FontSize = Decimale(testo).value_or(copia_.FontSize);
    DisegnaCampione();
}

void frmOpzioni::chkFontBold_Click() {
    copia_.FontBold = chkFontBold->isChecked();
    DisegnaCampione();
}

void frmOpzioni::chkAutoFont_Click() {
    copia_.AutoFont = chkAutoFont->isChecked();
    lstFontSize->setEnabled(!chkAutoFont->isChecked());
}

void frmOpzioni::chkOmbra_Click() {
    copia_.Ombra = chkOmbra->isChecked();
    cmdColoreOmbra->setEnabled(chkOmbra->isChecked());
    DisegnaCampione();
}

void frmOpzioni::cmdColoreTesto_Click() {
    ScegliColore("Text color", &Config::ColoreTesto);
}

void frmOpzioni::cmdColoreSfondo_Click() {
    ScegliColore("Background color", &Config::ColoreSfondo);
}

void frmOpzioni::cmdColoreSelezione_Click() {
    ScegliColore("Selection color", &Config::ColoreSelezione);
}

void frmOpzioni::cmdColoreOmbra_Click() {
    ScegliColore("Shadow color", &Config::ColoreOmbra);
}

void frmOpzioni::ScegliColore(const char* titolo, Colour Config::*colore) {
    if (const auto scelto = parti_.opzioni.dialoghi.ChooseColour(titolo, copia_.*colore)) {
        copia_.*colore = *scelto;
        MostraColori();
        DisegnaCampione();
    }
}

/// Gives each colour button a square of its colour.
void frmOpzioni::MostraColori() {
    const std::array<std::pair<QPushButton*, Colour>, 4> bottoni{{
        {cmdColoreTesto, copia_.ColoreTesto},
        {cmdColoreSfondo, copia_.ColoreSfondo},
        {cmdColoreSelezione, copia_.ColoreSelezione},
        {cmdColoreOmbra, copia_.ColoreOmbra},
    }};
    for (const auto& [bottone, colore] : bottoni) {
        QPixmap quadrato(bottone->iconSize() * devicePixelRatioF());
        quadrato.setDevicePixelRatio(devicePixelRatioF());
        quadrato.fill(Qt::gray);
        QPainter(&quadrato).fillRect(QRect({}, bottone->iconSize()).adjusted(1, 1, -1, -1),
                                     ToQColor(colore));
        bottone->setIcon(quadrato);
    }
}

void frmOpzioni::vscCompensation_Change() {
    copia_.Compensazione = -vscCompensation->value();
    MostraCompensazione();
}

/// A scroll bar grows downwards, the compensation upwards: the one is the other's negative.
void frmOpzioni::MostraCompensazione() {
    lblCompensation->setText(QString::number(-vscCompensation->value()));
    vscCompensation->setAccessibleDescription(lblCompensation->text());
}

void frmOpzioni::DisegnaCampione() {
    const double larghezza = Parole.width() * parti_.schermo.TwipsPerPixel();
    sonnel::DisegnaCampione(Parole, RoundHalfEven<int>(larghezza), copia_);
}

bool frmOpzioni::eventFilter(QObject* object, QEvent* event) {
    if (object == &Parole && event->type() == QEvent::Resize) {
        DisegnaCampione();
    }
    return QDialog::eventFilter(object, event);
}

void frmOpzioni::cmdOk_Click() {
    if (ConfermaOpzioni(parti_.opzioni, copia_)) {
        done(Accepted);
    }
}

void frmOpzioni::cmdAnnulla_Click() {
    done(Rejected);
}

void frmOpzioni::reject() {
    if (isEnabled()) {
        QDialog::reject();
    }
}

}  // namespace sonnel
