#include "ui/frmInfo.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <initializer_list>

namespace sonnel {
namespace {

constexpr int Distanza = 12;          // pixels between captions and values
constexpr int LarghezzaValori = 280;  // pixels; a minimum for short texts

WrappedText* Valore(QWidget* parent) {
    auto* etichetta = new WrappedText(parent);
    etichetta->setMinimumWidth(LarghezzaValori);
    QFont font = etichetta->font();
    font.setFamily("Arial");
    font.setBold(true);
    etichetta->setFont(font);
    return etichetta;
}

struct Riga {
    const char* etichetta;
    WrappedText* valore;
};

QGroupBox* Cornice(const char* titolo, std::initializer_list<Riga> righe, QWidget* parent) {
    auto* cornice = new QGroupBox(titolo, parent);
    auto* griglia = new QGridLayout(cornice);
    griglia->setHorizontalSpacing(Distanza);
    griglia->setColumnStretch(1, 1);
    for (const Riga& riga : righe) {
        const int posto = griglia->rowCount();
        griglia->addWidget(new QLabel(riga.etichetta, cornice), posto, 0, Qt::AlignTop);
        griglia->addWidget(riga.valore, posto, 1);
    }
    return cornice;
}

}  // namespace

frmInfo::frmInfo(QWidget* parent)
    : QDialog(parent),
      lblTitolo(Valore(this)),
      lblAutore(Valore(this)),
      lblKaraokeBy(Valore(this)),
      lblVersione(Valore(this)),
      lblData(Valore(this)) {
    setWindowTitle("Song informations");
    auto* cmdChiudi = new QPushButton("Ok", this);
    cmdChiudi->setDefault(true);
    connect(cmdChiudi, &QPushButton::clicked, this, &frmInfo::cmdChiudi_Click);

    auto* colonna = new QVBoxLayout(this);
    colonna->addWidget(CreaCornici(), 1);
    colonna->addWidget(cmdChiudi, 0, Qt::AlignRight);
}

/// The two frames, with their captions and values aligned.
QWidget* frmInfo::CreaCornici() {
    auto* cornici = new QWidget;
    auto* colonna = new QVBoxLayout(cornici);
    colonna->setContentsMargins(0, 0, 0, 0);
    colonna->addWidget(Cornice("Original song",
                               {{"Title", lblTitolo}, {"Author/ performer", lblAutore}}, cornici));
    colonna->addWidget(Cornice("Karaoke",
                               {{"Karaoke made by", lblKaraokeBy},
                                {"Karaoke editor version", lblVersione},
                                {"Karaoke creation date", lblData}},
                               cornici));
    colonna->addStretch(1);
    int larghezza = 0;
    const QList<QLabel*> etichette = cornici->findChildren<QLabel*>();
    for (const QLabel* etichetta : etichette) {
        larghezza = std::max(larghezza, etichetta->sizeHint().width());
    }
    for (QLabel* etichetta : etichette) {
        etichetta->setMinimumWidth(larghezza);
    }
    return new ScrollPane(cornici, this);
}

void frmInfo::Mostra(const Testi& testi) {
    // These labels show "&" as it is, so a doubled one must be made single.
    const auto scrivi = [](WrappedText* etichetta, const std::string& testo) {
        etichetta->setPlainText(QString::fromStdString(testo).replace("&&", "&"));
    };
    scrivi(lblTitolo, testi.titolo);
    scrivi(lblAutore, testi.autore);
    scrivi(lblKaraokeBy, testi.karaokeBy);
    scrivi(lblVersione, testi.versione);
    scrivi(lblData, testi.data);
    FitToScreen(*this);
}

void frmInfo::cmdChiudi_Click() {
    hide();
}

}  // namespace sonnel
