// The controls of the queue's window.

#include "platform/qt/FitScreen.h"
#include "player/window/frmCoda.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>
#include <utility>

namespace sonnel {
namespace {

constexpr int LarghezzaFinestra = 100;  // average characters of the window's font
constexpr int AltezzaFinestra = 34;     // lines of the window's font

QLabel* Etichetta(const char* testo, QWidget& compagno) {
    auto* etichetta = new QLabel(testo, compagno.parentWidget());
    etichetta->setBuddy(&compagno);
    return etichetta;
}

/// A button that shows an action and follows its state.
QPushButton* Bottone(QAction& azione, QWidget* padre) {
    auto* bottone = new QPushButton(azione.text(), padre);
    bottone->setAutoDefault(false);
    bottone->setToolTip(azione.shortcut().toString(QKeySequence::NativeText));
    bottone->setEnabled(azione.isEnabled());
    QObject::connect(bottone, &QPushButton::clicked, &azione, &QAction::trigger);
    QObject::connect(&azione, &QAction::changed, bottone,
                     [bottone, &azione] { bottone->setEnabled(azione.isEnabled()); });
    return bottone;
}

}  // namespace

FinestraCoda::FinestraCoda(Parti parti, QWidget* principale)
    : QDialog(principale),
      p_(std::move(parti)),
      brani_(new ModelloBrani(this)),
      elenco_(new VistaBrani(this)),
      turni_(new ModelloCoda(this,
                             [this](const Turno& turno) {
                                 (void)Riporta(
                                     p_.coda.Cambia(turno.numero, turno.cantante, turno.tonalita));
                             })),
      tabella_(new VistaCoda(this)),
      linea_(new LineaCerca(*this, *elenco_, [this](const QString& t) { Cerca(t); })),
      errore_(new QLabel(this)) {
    setWindowIcon(QIcon(":/sonnel.svg"));
    auto* colonna = new QVBoxLayout(this);
    CreaElenco(*colonna);
    CreaTabella(*colonna);
    CreaComandi(*colonna);
    errore_->setTextFormat(Qt::PlainText);
    errore_->setWordWrap(true);
    errore_->hide();
    colonna->addWidget(errore_);
    CreaAutomatico(*colonna);
    const QFontMetrics misure = fontMetrics();
    resize(
        QSize(LarghezzaFinestra * misure.averageCharWidth(), AltezzaFinestra * misure.lineSpacing())
            .boundedTo(RoomOnScreen(*this)));
    p_.coda.onCambiata = [this] { MostraCoda(); };
    MostraCoda();
}

QAction* FinestraCoda::Comando(const char* testo, const QKeySequence& tasti,
                               void (FinestraCoda::*gestore)()) {
    auto* azione = new QAction(testo, this);
    azione->setShortcut(tasti);
    connect(azione, &QAction::triggered, this, gestore);
    addAction(azione);
    return azione;
}

void FinestraCoda::CreaElenco(QBoxLayout& colonna) {
    elenco_->setAccessibleName("Songs of the library");
    elenco_->setModel(brani_);
    elenco_->setItemDelegate(new DisegnoRiga(elenco_));
    elenco_->setUniformItemSizes(true);
    elenco_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    elenco_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    aggiungi_ =
        Comando("&Add to the queue", Qt::CTRL | Qt::Key_Return, &FinestraCoda::AggiungiBrano);
    aggiungi_->setEnabled(false);
    connect(elenco_, &QListView::activated, aggiungi_, &QAction::trigger);
    connect(linea_, &QLineEdit::returnPressed, aggiungi_, &QAction::trigger);
    auto* fila = new QHBoxLayout;
    fila->addWidget(Etichetta("Son&gs", *elenco_), 1);
    fila->addWidget(Bottone(*aggiungi_, this));
    colonna.addWidget(linea_);
    colonna.addLayout(fila);
    colonna.addWidget(elenco_, 1);
}

void FinestraCoda::CreaTabella(QBoxLayout& colonna) {
    tabella_->setAccessibleName("Queue");
    tabella_->setModel(turni_);
    tabella_->setItemDelegateForColumn(ModelloCoda::Tonalita, new EditaTonalita(tabella_));
    tabella_->setSelectionBehavior(QAbstractItemView::SelectRows);
    tabella_->setSelectionMode(QAbstractItemView::SingleSelection);
    tabella_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    tabella_->setTabKeyNavigation(false);
    tabella_->setWordWrap(false);
    tabella_->setShowGrid(false);
    linea_->Anche(*tabella_);
    tabella_->setAlternatingRowColors(true);
    QHeaderView& testata = *tabella_->horizontalHeader();
    testata.setSectionResizeMode(ModelloCoda::Brano, QHeaderView::Stretch);
    testata.setHighlightSections(false);
    testata.resizeSection(ModelloCoda::Cantante, 24 * fontMetrics().averageCharWidth());
    testata.resizeSection(ModelloCoda::Tonalita, 10 * fontMetrics().averageCharWidth());
    connect(tabella_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { AbilitaComandi(); });
    colonna.addWidget(Etichetta("&Queue", *tabella_));
    colonna.addWidget(tabella_, 1);
}

void FinestraCoda::CreaComandi(QBoxLayout& colonna) {
    addAction(&p_.azioneComincia);
    connect(&p_.azioneComincia, &QAction::triggered, this, &FinestraCoda::CominciaTurno);
    conTurno_ = {Comando("Move &up", Qt::ALT | Qt::Key_Up, &FinestraCoda::Su),
                 Comando("Move &down", Qt::ALT | Qt::Key_Down, &FinestraCoda::Giu),
                 Comando("&Remove", QKeySequence::Delete, &FinestraCoda::TogliTurno)};
    auto* fila = new QHBoxLayout;
    fila->addWidget(Bottone(p_.azioneComincia, this));
    for (QAction* azione : conTurno_) {
        azione->setEnabled(false);
        fila->addWidget(Bottone(*azione, this));
    }
    fila->addStretch(1);
    auto* chiudi = new QPushButton("&Close", this);
    chiudi->setAutoDefault(false);
    connect(chiudi, &QPushButton::clicked, this, &QDialog::reject);
    fila->addWidget(chiudi);
    colonna.addLayout(fila);
}

void FinestraCoda::CreaAutomatico(QBoxLayout& colonna) {
    auto* automatico = new QCheckBox("Start the &next song by itself, after", this);
    automatico->setChecked(p_.prossimo.Automatico());
    auto* secondi = new QSpinBox(this);
    secondi->setAccessibleName("Seconds before the next song");
    secondi->setRange(1, ProssimoTurno::MassimoSecondi);
    secondi->setSuffix(" s");
    secondi->setValue(p_.prossimo.Secondi());
    secondi->setEnabled(automatico->isChecked());
    connect(automatico, &QCheckBox::toggled, this, [this, secondi](bool acceso) {
        p_.prossimo.CambiaAutomatico(acceso);
        secondi->setEnabled(acceso);
    });
    connect(secondi, &QSpinBox::valueChanged, this,
            [this](int valore) { p_.prossimo.CambiaSecondi(valore); });
    auto* fila = new QHBoxLayout;
    fila->addWidget(automatico);
    fila->addWidget(secondi);
    fila->addStretch(1);
    colonna.addLayout(fila);
}

}  // namespace sonnel
