// The selection window's menus, toolbar, list and layout.

#include "library/frmSelectSong.h"
#include "library/frmSelectSongLista.h"
#include "platform/qt/ToolStrip.h"

#include <QActionGroup>
#include <QDialogButtonBox>
#include <QVBoxLayout>
#include <optional>

namespace sonnel {
namespace {

constexpr int LarghezzaIniziale = 105;  // mean characters of the list's font
constexpr int AltezzaIniziale = 36;     // its lines

struct Bottone {
    const char* suggerimento;
    const char* immagine;              ///< null for a separator
    void (frmSelectSong::*comando)();  ///< the handler of its menu item
    std::optional<Ordine> ordine{};  ///< or the order it sorts by: of these buttons one is pressed
};

constexpr Bottone Separatore{nullptr, nullptr, nullptr};
constexpr std::array<Bottone, 14> Bottoni{{
    {"Add a new song", "add", &frmSelectSong::mnuDataAdd_Click},
    {"Edit song properties", "properties", &frmSelectSong::mnuFileProperties_Click},
    {"Delete song", "delete", &frmSelectSong::mnuDataDelete_Click},
    {"Open a random song", "random", &frmSelectSong::mnuFileRandom_Click},
    Separatore,
    {"Open a LYK file", "open-file", &frmSelectSong::mnuFileOpenLyk_Click},
    {"Convert/import KAR files", "convert", &frmSelectSong::mnuDataConvert_Click},
    Separatore,
    {"Sort by Title", "sort-title", nullptr, Ordine::Titolo},
    {"Sort by Author", "sort-author", nullptr, Ordine::Autore},
    {"Sort by Album", "sort-album", nullptr, Ordine::Album},
    Separatore,
    {"Reload index", "reload", &frmSelectSong::mnuDataReload_Click},
    {"Update index", "rebuild", &frmSelectSong::mnuDataRebuild_Click},
}};

}  // namespace

void frmSelectSong::CreaMenu() {
    CreaMenuFile();
    QMenu* mnuView = menu_->addMenu("&View");
    const auto ordina = [this, mnuView](const char* testo, Qt::Key tasto, Ordine ordine) {
        mnuView->addAction(testo, this, [this, ordine] { mnuViewSort_Click(ordine); })
            ->setShortcut(tasto);
    };
    ordina("Sort by &Title", Qt::Key_F5, Ordine::Titolo);
    ordina("Sort by &Author", Qt::Key_F6, Ordine::Autore);
    ordina("Sort by Album", Qt::Key_F7, Ordine::Album);
    CreaMenuDatabase();
}

void frmSelectSong::CreaMenuFile() {
    QMenu* mnuFile = menu_->addMenu("&File");
    mnuFileOpen = mnuFile->addAction("&Open", this, &frmSelectSong::mnuFileOpen_Click);
    mnuFileOpen->setShortcut(Qt::Key_F2);
    mnuFile->addAction("Open an external &LYK...", this, &frmSelectSong::mnuFileOpenLyk_Click)
        ->setShortcut(Qt::SHIFT | Qt::Key_F2);
    mnuFileRandom =
        mnuFile->addAction("Open &random song", this, &frmSelectSong::mnuFileRandom_Click);
    mnuFile->addSeparator();
    mnuFileProperties =
        mnuFile->addAction("&Properties", this, &frmSelectSong::mnuFileProperties_Click);
    mnuFileProperties->setShortcut(Qt::Key_F4);
    mnuFile->addSeparator();
    mnuFile->addAction("&Exit", this, &frmSelectSong::mnuFileExit_Click)
        ->setShortcut(Qt::CTRL | Qt::Key_Q);
}

void frmSelectSong::CreaMenuDatabase() {
    QMenu* mnuData = menu_->addMenu("&Database");
    mnuData->addAction("&Add", this, &frmSelectSong::mnuDataAdd_Click)
        ->setShortcut(Qt::CTRL | Qt::Key_Insert);
    mnuDataDelete = mnuData->addAction("&Delete", this, &frmSelectSong::mnuDataDelete_Click);
    mnuDataDelete->setShortcut(Qt::Key_Delete);
    mnuData->addSeparator();
    mnuData->addAction("&Convert from KAR...", this, &frmSelectSong::mnuDataConvert_Click)
        ->setShortcut(Qt::Key_F3);
    mnuData->addSeparator();
    mnuData->addAction("Reload index", this, &frmSelectSong::mnuDataReload_Click)
        ->setShortcut(Qt::Key_F8);
    mnuData->addAction("Rebuild index", this, &frmSelectSong::mnuDataRebuild_Click)
        ->setShortcut(Qt::Key_F9);
}

QWidget* frmSelectSong::CreaBarra() {
    auto* striscia = new QWidget(this);
    DressToolStrip(*striscia);
    tlbBar = AddToolBar(*striscia);
    auto* ordini = new QActionGroup(this);
    for (std::size_t i = 0; i < Bottoni.size(); ++i) {
        const int indice = static_cast<int>(i) + 1;
        bottoni_[i] = AddToolButton(*tlbBar, Bottoni[i].suggerimento, Bottoni[i].immagine,
                                    [this, indice] { tlbBar_ButtonClick(indice); });
        // Its image says it all: no text beside it.
        bottoni_[i]->setPriority(QAction::LowPriority);
        if (Bottoni[i].ordine) {
            bottoni_[i]->setCheckable(true);
            ordini->addAction(bottoni_[i]);
        }
    }
    ordini->actions().first()->setChecked(true);

    CRebar::TBMakeFlat(*tlbBar, true);
    tlbBar->ensurePolished();
    tlbBar->adjustSize();
    Rebar.Parent(striscia);
    Rebar.Create();
    Rebar.AddBands("", 1, tlbBar, 1);
    striscia->setFixedHeight(tlbBar->height() + 1);
    striscia->setMinimumWidth(tlbBar->width() + CRebar::Margine);
    return striscia;
}

void frmSelectSong::CreaLista() {
    lstBrani->setAccessibleName("Songs");
    lstBrani->setModel(righe_);
    lstBrani->setItemDelegate(new DisegnoRiga(lstBrani));
    lstBrani->setUniformItemSizes(true);
    lstBrani->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lstBrani->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(lstBrani->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &frmSelectSong::lstBrani_Click);
    connect(lstBrani, &QListView::doubleClicked, this, &frmSelectSong::mnuFileOpen_Click);
}

void frmSelectSong::Disponi(QWidget* striscia) {
    cmdOk->setDefault(true);
    connect(cmdOk, &QPushButton::clicked, this, &frmSelectSong::mnuFileOpen_Click);
    connect(cmdAnnulla, &QPushButton::clicked, this, &frmSelectSong::mnuFileExit_Click);
    auto* bottoni = new QDialogButtonBox(this);
    bottoni->addButton(cmdOk, QDialogButtonBox::AcceptRole);
    bottoni->addButton(cmdAnnulla, QDialogButtonBox::RejectRole);

    auto* interno = new QVBoxLayout;
    interno->setContentsMargins(8, 8, 8, 8);
    interno->setSpacing(8);
    interno->addWidget(lstBrani, 1);
    interno->addWidget(bottoni);
    auto* colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(0, 0, 0, 0);
    colonna->setSpacing(0);
    colonna->setMenuBar(menu_);
    colonna->addWidget(striscia);
    colonna->addLayout(interno, 1);

    setTabOrder(lstBrani, cmdOk);
    setTabOrder(cmdOk, cmdAnnulla);
    QWidget* prima = cmdAnnulla;
    for (QAction* bottone : bottoni_) {
        setTabOrder(prima, tlbBar->widgetForAction(bottone));
        prima = tlbBar->widgetForAction(bottone);
    }
    const QFontMetrics misure = lstBrani->fontMetrics();
    resize(LarghezzaIniziale * misure.averageCharWidth(), AltezzaIniziale * misure.lineSpacing());
}

void frmSelectSong::tlbBar_ButtonClick(int index) {
    if (index < 1 || index > NumBottoni) {
        return;
    }
    const Bottone& bottone = Bottoni.at(static_cast<std::size_t>(index) - 1);
    if (bottone.ordine) {
        mnuViewSort_Click(*bottone.ordine);
    } else if (bottone.comando != nullptr) {
        (this->*bottone.comando)();
    }
}

}  // namespace sonnel
