// The options window's pages and buttons.

#include "platform/qt/FitScreen.h"
#include "settings/frmOpzioni.h"

#include <QDialogButtonBox>
#include <QGroupBox>
#include <QListView>
#include <QTabWidget>
#include <QVBoxLayout>

namespace sonnel {
namespace {

constexpr int CompensazioneMassima = 100;  // tenths of a second, early or late
constexpr int AltezzaFrecce = 36;          // pixels: little more than the scroll bar's two arrows
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

void frmOpzioni::Disponi() {
    auto* SSTab1 = new QTabWidget(this);
    SSTab1->addTab(new ScrollPane(CreaGenerale()), "&General");
    SSTab1->addTab(new ScrollPane(CreaSchermo()), "&Screen");
    SSTab1->addTab(new ScrollPane(CreaAvanzate()), "&Advanced");
    auto* colonna = new QVBoxLayout(this);
    colonna->addWidget(SSTab1);
    colonna->addWidget(CreaBottoni());
}

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
    lblCompensation = new QLabel(pagina);
    lblCompensation->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    lblCompensation->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    lblCompensation->setMargin(4);
    lblCompensation->setMinimumWidth(lblCompensation->fontMetrics().horizontalAdvance("-100") + 16);
    vscCompensation = new QScrollBar(pagina);
    vscCompensation->setRange(-CompensazioneMassima, CompensazioneMassima);
    vscCompensation->setFixedHeight(AltezzaFrecce);
    vscCompensation->setFocusPolicy(Qt::StrongFocus);
    vscCompensation->setAccessibleName(Label3->text() + ' ' + Label2->text());
    auto* fila = new QHBoxLayout;
    fila->addWidget(Label3);
    fila->addWidget(lblCompensation);
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

}  // namespace sonnel
