#include "ui/frmInfo.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QVBoxLayout>
#include <initializer_list>

namespace sonnel {
namespace {

constexpr int LarghezzaValori = 280;  // pixels, so that short texts do not make a tiny window

QLabel* Valore(QWidget* parent) {
    auto* etichetta = new QLabel(parent);
    etichetta->setTextFormat(Qt::PlainText);
    etichetta->setWordWrap(true);
    etichetta->setMinimumWidth(LarghezzaValori);
    etichetta->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QFont font = etichetta->font();
    font.setFamily("Arial");
    font.setBold(true);
    etichetta->setFont(font);
    return etichetta;
}

struct Riga {
    const char* etichetta;
    QLabel* valore;
};

QGroupBox* Cornice(const char* titolo, std::initializer_list<Riga> righe, QWidget* parent) {
    auto* cornice = new QGroupBox(titolo, parent);
    auto* modulo = new QFormLayout;
    cornice->setLayout(modulo);
    for (const Riga& riga : righe) {
        modulo->addRow(riga.etichetta, riga.valore);
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
    colonna->addWidget(
        Cornice("Original song", {{"Title", lblTitolo}, {"Author/ performer", lblAutore}}, this));
    colonna->addWidget(Cornice("Karaoke",
                               {{"Karaoke made by", lblKaraokeBy},
                                {"Karaoke editor version", lblVersione},
                                {"Karaoke creation date", lblData}},
                               this));
    colonna->addWidget(cmdChiudi, 0, Qt::AlignRight);
}

void frmInfo::Mostra(const Testi& testi) {
    // These labels have no access keys, so a doubled "&" would show as two.
    const auto scrivi = [](QLabel* etichetta, const std::string& testo) {
        etichetta->setText(QString::fromStdString(testo).replace("&&", "&"));
    };
    scrivi(lblTitolo, testi.titolo);
    scrivi(lblAutore, testi.autore);
    scrivi(lblKaraokeBy, testi.karaokeBy);
    scrivi(lblVersione, testi.versione);
    scrivi(lblData, testi.data);
}

void frmInfo::cmdChiudi_Click() {
    hide();
}

}  // namespace sonnel
