#include "library/frmInfoBrano.h"

#include "library/AlbumBrani.h"
#include "library/ElencoBrani.h"
#include "library/ProprietaBrano.h"
#include "platform/Text.h"
#include "ui/Titoli.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <algorithm>
#include <initializer_list>

namespace sonnel {
namespace {

constexpr int Distanza = 12;        // pixels between captions and fields
constexpr int CaratteriCampo = 40;  // how many characters a field shows

/// The buttons in a row at the right, all as wide as the widest.
QHBoxLayout* FilaBottoni(std::initializer_list<QPushButton*> bottoni) {
    int larghezza = 0;
    for (const QPushButton* bottone : bottoni) {
        larghezza = std::max(larghezza, bottone->sizeHint().width());
    }
    auto* fila = new QHBoxLayout;
    fila->setSpacing(Distanza / 2);
    fila->addStretch(1);
    for (QPushButton* bottone : bottoni) {
        bottone->setMinimumWidth(larghezza);
        fila->addWidget(bottone);
    }
    return fila;
}

/// A read-only value that can be scrolled and copied.
void FaiEtichetta(QLineEdit* campo) {
    campo->setReadOnly(true);
    campo->setFrame(false);
    // Aligns its text with that of fields with a frame.
    campo->setTextMargins(campo->style()->pixelMetric(QStyle::PM_DefaultFrameWidth), 0, 0, 0);
    campo->setFocusPolicy(Qt::ClickFocus);
    QPalette colori = campo->palette();
    colori.setColor(QPalette::Base, Qt::transparent);
    campo->setPalette(colori);
}

}  // namespace

frmInfoBrano::frmInfoBrano(const Libreria& libreria, ListaBrani& lista, std::int16_t indiceBrano,
                           QWidget* parent)
    : QDialog(parent),
      libreria_(libreria),
      lista_(lista),
      lblNomefile(new QLineEdit(this)),
      txtTitolo(new QLineEdit(this)),
      txtAutore(new QLineEdit(this)),
      cmbAlbum(new QComboBox),
      cmdInserisciAlbum(new QPushButton("&New")),
      cmdRinominaAlbum(new QPushButton("&Rename")),
      cmdEliminaAlbum(new QPushButton("&Delete")),
      cmdOk(new QPushButton("&Ok")),
      cmdAnnulla(new QPushButton("&Cancel")),
      IndiceBrano(indiceBrano) {
    setWindowTitle("Edit song properties");
    Disponi();
    Form_Load();
    Collega();
}

// The look

/// The frame with the song's fields. Returns the width of its captions.
int frmInfoBrano::CreaTesti(QVBoxLayout& colonna) {
    auto* cornice = new QGroupBox(this);
    FaiEtichetta(lblNomefile);
    lblNomefile->setAccessibleName("File name");
    auto* lblTitolo = new QLabel("&Title:", cornice);
    auto* lblAutore = new QLabel("A&uthor/performer", cornice);
    lblTitolo->setBuddy(txtTitolo);
    lblAutore->setBuddy(txtAutore);

    auto* griglia = new QGridLayout(cornice);
    griglia->setHorizontalSpacing(Distanza);
    griglia->addWidget(new QLabel("File name:", cornice), 0, 0);
    griglia->addWidget(lblNomefile, 0, 1);
    griglia->addWidget(lblTitolo, 1, 0);
    griglia->addWidget(txtTitolo, 1, 1);
    griglia->addWidget(lblAutore, 2, 0);
    griglia->addWidget(txtAutore, 2, 1);
    colonna.addWidget(cornice);
    return lblAutore->sizeHint().width();
}

/// The frame with the albums; its box is aligned with the fields above.
QWidget* frmInfoBrano::CreaAlbum(int larghezzaEtichette) {
    auto* cornice = new QGroupBox("Al&bum", this);
    auto* griglia = new QGridLayout(cornice);
    griglia->setColumnMinimumWidth(0, larghezzaEtichette + Distanza);
    griglia->setColumnStretch(1, 1);
    cmbAlbum->setEditable(true);
    cmbAlbum->setInsertPolicy(QComboBox::NoInsert);
    // No completion: a typed text stays as it is, even when it begins or equals an entry.
    cmbAlbum->setCompleter(nullptr);
    disconnect(cmbAlbum->lineEdit(), &QLineEdit::editingFinished, cmbAlbum, nullptr);
    cmbAlbum->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cmbAlbum->setMinimumContentsLength(CaratteriCampo);
    cmbAlbum->setAccessibleName("Album");
    griglia->addWidget(cmbAlbum, 0, 1);
    griglia->addLayout(FilaBottoni({cmdInserisciAlbum, cmdRinominaAlbum, cmdEliminaAlbum}), 1, 1);
    return cornice;
}

void frmInfoBrano::Disponi() {
    cmdOk->setDefault(true);
    auto* colonna = new QVBoxLayout(this);
    const int larghezzaEtichette = CreaTesti(*colonna);
    colonna->addWidget(CreaAlbum(larghezzaEtichette));
    colonna->addStretch(1);
    colonna->addLayout(FilaBottoni({cmdOk, cmdAnnulla}));
    txtTitolo->setFocus();
}

void frmInfoBrano::setVisible(bool visible) {
    QDialog::setVisible(visible);
    // Getting the focus selects the title and so scrolls a long one to its end.
    const auto lunghezza = static_cast<int>(txtTitolo->text().size());
    txtTitolo->setSelection(lunghezza, -lunghezza);
}

// The state

void frmInfoBrano::Form_Load() {
    const Brano& brano = libreria_.brani.Brani(IndiceBrano);
    const auto mostra = [](QLineEdit* campo, const std::string& testo) {
        campo->setText(QString::fromStdString(testo));
        campo->setCursorPosition(0);
    };
    mostra(lblNomefile, brano.NomeFile);
    mostra(txtTitolo, brano.Titolo);
    mostra(txtAutore, brano.Autore);

    int voceDelBrano = -1;
    for (const std::string& album : ElencaAlbum(libreria_)) {
        const int voce = InserisciVoce(album);
        if (album == brano.Album) {
            voceDelBrano = voce;
        } else if (voceDelBrano >= voce) {
            ++voceDelBrano;
        }
    }
    SelezionaVoce(voceDelBrano);
    if (voceDelBrano >= 0) {
        cmbAlbum_Click();
    }
    Modificato = false;
    AbilitaBottoni();
}

void frmInfoBrano::Collega() {
    for (QLineEdit* campo : {txtTitolo, txtAutore}) {
        connect(campo, &QLineEdit::textEdited, this, &frmInfoBrano::txt_Change);
    }
    connect(cmbAlbum->lineEdit(), &QLineEdit::textEdited, this, &frmInfoBrano::cmbAlbum_Change);
    connect(cmbAlbum, &QComboBox::activated, this, &frmInfoBrano::cmbAlbum_Click);
    connect(cmdInserisciAlbum, &QPushButton::clicked, this, &frmInfoBrano::cmdInserisciAlbum_Click);
    connect(cmdRinominaAlbum, &QPushButton::clicked, this, &frmInfoBrano::cmdRinominaAlbum_Click);
    connect(cmdEliminaAlbum, &QPushButton::clicked, this, &frmInfoBrano::cmdEliminaAlbum_Click);
    connect(cmdOk, &QPushButton::clicked, this, &frmInfoBrano::cmdOk_Click);
    connect(cmdAnnulla, &QPushButton::clicked, this, &frmInfoBrano::cmdAnnulla_Click);
}

void frmInfoBrano::AbilitaBottoni() {
    const BottoniProprieta bottoni =
        sonnel::AbilitaBottoni(voceSelezionata_, TestoAlbum(), Modificato);
    cmdEliminaAlbum->setEnabled(bottoni.elimina);
    cmdRinominaAlbum->setEnabled(bottoni.rinomina);
    cmdInserisciAlbum->setEnabled(bottoni.inserisci);
    cmdOk->setEnabled(bottoni.ok);
}

std::string frmInfoBrano::TestoAlbum() const {
    return cmbAlbum->currentText().toStdString();
}

Intestazione frmInfoBrano::Campi() const {
    return CampiDaTesti(txtTitolo->text().toStdString(), txtAutore->text().toStdString(),
                        TestoAlbum());
}

void frmInfoBrano::txt_Change() {
    Modificato = true;
    AbilitaBottoni();
}

void frmInfoBrano::cmbAlbum_Change() {
    voceSelezionata_ = false;
    txt_Change();
}

void frmInfoBrano::cmbAlbum_Click() {
    voceSelezionata_ = true;
    UltimoAlbum = TestoAlbum();
    txt_Change();
}

// The album list

/// Adds an album at its place in the sorted list without changing the box's text. Returns the index
/// of the new entry.
int frmInfoBrano::InserisciVoce(const std::string& album) {
    const QString testo = cmbAlbum->currentText();
    const std::string voce(AlbumMostrato(album));
    const std::string chiave = FoldCase(voce);
    int indice = 0;
    for (int fine = cmbAlbum->count(); indice < fine;) {
        const int mezzo = indice + (fine - indice) / 2;
        if (FoldCase(cmbAlbum->itemText(mezzo).toStdString()) <= chiave) {
            indice = mezzo + 1;
        } else {
            fine = mezzo;
        }
    }
    cmbAlbum->insertItem(indice, QString::fromStdString(voce));
    cmbAlbum->setEditText(testo);
    return indice;
}

/// Shows an entry, or no text for index -1.
void frmInfoBrano::SelezionaVoce(int voce) {
    cmbAlbum->setCurrentIndex(voce);
    cmbAlbum->setEditText(cmbAlbum->itemText(voce));
    cmbAlbum->lineEdit()->setCursorPosition(0);
}

void frmInfoBrano::cmdInserisciAlbum_Click() {
    const std::string album = AlbumDaTesto(TestoAlbum());
    if (!InserisciAlbum(libreria_, album)) {
        return;
    }
    const QString generico = QString::fromStdString(std::string(AlbumMostrato(AlbumGenerico)));
    const int presente = album == AlbumGenerico ? cmbAlbum->findText(generico) : -1;
    SelezionaVoce(presente >= 0 ? presente : InserisciVoce(album));
    cmbAlbum_Click();
}

void frmInfoBrano::cmdRinominaAlbum_Click() {
    const QString testo = cmbAlbum->currentText();
    const std::string nuovo = AlbumDaTesto(TestoAlbum());
    const bool generico = UltimoAlbum == AlbumMostrato(AlbumGenerico);
    if (!RinominaAlbum(libreria_, lista_, generico ? std::string(AlbumGenerico) : UltimoAlbum,
                       nuovo)) {
        return;
    }
    if (const int voce = cmbAlbum->findText(QString::fromStdString(UltimoAlbum)); voce >= 0) {
        cmbAlbum->removeItem(voce);
    }
    cmbAlbum->setEditText(testo);
    InserisciVoce(nuovo);
    AbilitaBottoni();
}

void frmInfoBrano::cmdEliminaAlbum_Click() {
    if (!EliminaAlbum(libreria_, lista_, TestoAlbum())) {
        return;
    }
    cmbAlbum->removeItem(cmbAlbum->currentIndex());
    SelezionaVoce(-1);
    voceSelezionata_ = false;
    AbilitaBottoni();
    cmbAlbum->setFocus();
}

// The end

void frmInfoBrano::cmdOk_Click() {
    const std::string motivo = ImpedimentoProprieta(Campi());
    if (!motivo.empty()) {
        (void)libreria_.msgBox.Show({motivo, Icon::Exclamation});
        return;
    }
    Tag = "OK";
    accept();
}

void frmInfoBrano::cmdAnnulla_Click() {
    reject();
}

void frmInfoBrano::reject() {
    Tag.clear();
    QDialog::reject();
}

void ProprietaBrano(const Libreria& libreria, ListaBrani& lista, std::int16_t posizione,
                    QWidget* parent) {
    frmInfoBrano finestra(libreria, lista, posizione, parent);
    finestra.exec();
    if (finestra.Tag == "OK") {
        ModificaProprieta(libreria, lista, posizione, finestra.Campi());
    }
}

}  // namespace sonnel
