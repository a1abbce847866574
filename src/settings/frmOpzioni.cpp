#include "settings/frmOpzioni.h"

#include "platform/Numbers.h"
#include "platform/Paths.h"
#include "platform/ScopeExit.h"
#include "settings/TestoNumero.h"
#include "ui/basCommon.h"
#include "ui/frmCentraForm.h"

#include <QDialogButtonBox>
#include <QEvent>
#include <QFontDatabase>
#include <QGroupBox>
#include <QListView>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <utility>

namespace sonnel {
namespace {

constexpr QSize MisuraCampione(380, 136);  // pixels: bold letters of 64 points, and their shadow

/// A drop-down list that is shown at once and scrolls, however many lines it has.
QComboBox* Lista(const char* nome, int caratteri, QWidget* pagina) {
    auto* lista = new QComboBox(pagina);
    lista->setAccessibleName(nome);
    lista->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    lista->setMinimumContentsLength(caratteri);
    lista->setStyleSheet("combobox-popup: 0");
    lista->view()->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    if (auto* righe = qobject_cast<QListView*>(lista->view())) {
        righe->setUniformItemSizes(true);
    }
    return lista;
}

}  // namespace

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
    auto* SSTab1 = new QTabWidget(this);
    SSTab1->addTab(CreaGenerale(), "&General");
    SSTab1->addTab(CreaSchermo(), "&Screen");
    SSTab1->addTab(CreaAvanzate(), "&Advanced");
    auto* colonna = new QVBoxLayout(this);
    colonna->addWidget(SSTab1);
    colonna->addWidget(CreaBottoni());
    Form_Load();
    Collega();
}

// The pages

QWidget* frmOpzioni::CreaGenerale() {
    auto* pagina = new QWidget;
    auto* lblOpzDatabase = new QLabel("Karaoke database directory:", pagina);
    lblOpenDir = new QLabel(pagina);
    lblOpenDir->setTextFormat(Qt::PlainText);
    lblOpenDir->setWordWrap(true);
    lblOpenDir->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    lblOpenDir->setMargin(4);
    lblOpenDir->setTextInteractionFlags(Qt::TextSelectableByMouse);
    cmdSfogliaDatabase = new QPushButton("C&hange...", pagina);
    cmdSfogliaDatabase->setAccessibleDescription(lblOpzDatabase->text());
    chkAutoplay = new QCheckBox("Start playing on song open", pagina);

    auto* griglia = new QGridLayout(pagina);
    griglia->addWidget(lblOpzDatabase, 0, 0, 1, 2);
    griglia->addWidget(lblOpenDir, 1, 0);
    griglia->addWidget(cmdSfogliaDatabase, 1, 1, Qt::AlignTop);
    griglia->addWidget(chkAutoplay, 2, 0, 1, 2);
    griglia->setColumnStretch(0, 1);
    griglia->setRowStretch(3, 1);
    return pagina;
}

QWidget* frmOpzioni::CreaSchermo() {
    auto* pagina = new QWidget;
    auto* griglia = new QGridLayout(pagina);
    griglia->addWidget(CreaFont(), 0, 0, 1, 2);
    auto* cornice = new QFrame(pagina);
    cornice->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    auto* interno = new QVBoxLayout(cornice);
    interno->setContentsMargins(0, 0, 0, 0);
    interno->addWidget(&Parole);
    Parole.setAccessibleName("Sample");
    Parole.setMinimumSize(MisuraCampione);
    griglia->addWidget(cornice, 1, 0, 1, 2);
    griglia->addWidget(CreaColori(), 2, 0);
    griglia->addWidget(CreaInterruttori(), 2, 1);
    griglia->setRowStretch(1, 1);
    griglia->setColumnStretch(0, 1);
    return pagina;
}

QWidget* frmOpzioni::CreaFont() {
    auto* riga = new QWidget;
    auto* Label1 = new QLabel("&Font:", riga);
    lstFontName = Lista("Font", 16, riga);
    lstFontSize = Lista("Font size", 4, riga);
    chkFontBold = new QCheckBox("&Bold", riga);
    Label1->setBuddy(lstFontName);
    auto* fila = new QHBoxLayout(riga);
    fila->setContentsMargins(0, 0, 0, 0);
    fila->addWidget(Label1);
    fila->addWidget(lstFontName, 1);
    fila->addWidget(lstFontSize);
    fila->addWidget(chkFontBold);
    return riga;
}

QWidget* frmOpzioni::CreaColori() {
    auto* fraColori = new QGroupBox("Colors");
    cmdColoreTesto = new QPushButton("Text", fraColori);
    cmdColoreSfondo = new QPushButton("Back", fraColori);
    cmdColoreSelezione = new QPushButton("Selection", fraColori);
    cmdColoreOmbra = new QPushButton("Shadow", fraColori);
    auto* griglia = new QGridLayout(fraColori);
    griglia->addWidget(cmdColoreTesto, 0, 0);
    griglia->addWidget(cmdColoreSfondo, 0, 1);
    griglia->addWidget(cmdColoreSelezione, 1, 0);
    griglia->addWidget(cmdColoreOmbra, 1, 1);
    return fraColori;
}

QWidget* frmOpzioni::CreaInterruttori() {
    auto* fraOpzioni = new QGroupBox("Switches");
    chkOmbra = new QCheckBox("Shadow", fraOpzioni);
    chkAutoFont = new QCheckBox("Automatic font size", fraOpzioni);
    auto* colonna = new QVBoxLayout(fraOpzioni);
    colonna->addWidget(chkOmbra);
    colonna->addWidget(chkAutoFont);
    return fraOpzioni;
}

QWidget* frmOpzioni::CreaAvanzate() {
    auto* pagina = new QWidget;
    auto* Label3 = new QLabel("Compensation value:", pagina);
    auto* Label2 = new QLabel("(1/10ths sec.)", pagina);
    vscCompensation = new QSpinBox(pagina);
    vscCompensation->setLocale(QLocale::c());
    vscCompensation->setRange(-100, 100);
    vscCompensation->setAccessibleName(Label3->text() + ' ' + Label2->text());
    auto* fila = new QHBoxLayout;
    fila->addWidget(Label3);
    fila->addWidget(vscCompensation);
    fila->addWidget(Label2);
    fila->addStretch(1);
    auto* colonna = new QVBoxLayout(pagina);
    colonna->addLayout(fila);
    colonna->addStretch(1);
    return pagina;
}

QWidget* frmOpzioni::CreaBottoni() {
    auto* bottoni = new QDialogButtonBox(this);
    cmdOk = bottoni->addButton("&Ok", QDialogButtonBox::AcceptRole);
    cmdAnnulla = bottoni->addButton("&Cancel", QDialogButtonBox::RejectRole);
    cmdOk->setDefault(true);
    return bottoni;
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
    lblOpenDir->setText(QString::fromStdString(copia_.OpenDir));
    vscCompensation->setValue(copia_.Compensazione);
    chkAutoplay->setChecked(copia_.Autoplay);
    Parole.installEventFilter(this);

    adjustSize();
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
    connect(vscCompensation, &QSpinBox::valueChanged, this, &frmOpzioni::vscCompensation_Change);
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
        DisegnaCampione();
    }
}

void frmOpzioni::vscCompensation_Change() {
    copia_.Compensazione = vscCompensation->value();
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
