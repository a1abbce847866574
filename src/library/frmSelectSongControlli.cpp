// The selection window's menus, toolbar, list and layout.

#include "library/frmMenuLista.h"
#include "library/frmSelectSong.h"
#include "platform/qt/FitScreen.h"
#include "platform/qt/ToolStrip.h"
#include "ui/frmCerca.h"
#include "ui/frmElenco.h"

#include <QActionGroup>
#include <QDialogButtonBox>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <string_view>

namespace sonnel {
namespace {

constexpr int LarghezzaIniziale = 105;  // average characters of the list's font
constexpr int AltezzaIniziale = 36;     // lines of the list's font

/// The toolbar's buttons in their order, by the names of their menu items; "" for a separator.
constexpr std::array<std::string_view, 14> BarraLibreria{"mnuDataAdd",
                                                         "mnuFileProperties",
                                                         "mnuDataDelete",
                                                         "mnuFileRandom",
                                                         "",
                                                         "mnuFileOpenLyk",
                                                         "mnuDataConvert",
                                                         "",
                                                         "mnuViewSort0",
                                                         "mnuViewSort1",
                                                         "mnuViewSort2",
                                                         "",
                                                         "mnuDataReload",
                                                         "mnuDataRebuild"};

}  // namespace

/// A command: its menu item, its handler or the order it sorts by, what it needs, and its button
/// in the toolbar if it has one.
struct frmSelectSong::Comando {
    const char* menu;  ///< title of the menu that starts with this item; null for its other items
    const char* nome;  ///< object name of the menu item
    const char* testo = nullptr;  ///< null for a separator
    QKeyCombination tasti{};
    void (frmSelectSong::*gestore)() = nullptr;
    Serve serve = Serve::Nulla;
    const char* suggerimento = nullptr;
    const char* immagine = nullptr;
    std::optional<Ordine> ordine{};
};

/// All commands in the order of the menus.
std::span<const frmSelectSong::Comando> frmSelectSong::TabellaComandi() {
    using F = frmSelectSong;
    static constexpr std::array Tabella{
        Comando{"&File", "mnuFileOpen", "&Open", Qt::Key_F2, &F::mnuFileOpen_Click,
                Serve::Selezione},
        Comando{nullptr, "mnuFileOpenLyk", "Open an external &LYK...", Qt::SHIFT | Qt::Key_F2,
                &F::mnuFileOpenLyk_Click, Serve::Nulla, "Open a LYK file", "open-file"},
        Comando{nullptr,
                "mnuFileRandom",
                "Open &random song",
                {},
                &F::mnuFileRandom_Click,
                Serve::Riga,
                "Open a random song",
                "random"},
        Comando{nullptr, "mnuFileSep1"},
        Comando{nullptr, "mnuFileProperties", "&Properties", Qt::Key_F4,
                &F::mnuFileProperties_Click, Serve::Selezione, "Edit song properties",
                "properties"},
        Comando{nullptr, "mnuFileSep2"},
        Comando{nullptr, "mnuFileExit", "&Exit", Qt::CTRL | Qt::Key_Q, &F::mnuFileExit_Click},

        Comando{"&View", "mnuViewSort0", "Sort by &Title", Qt::Key_F5, nullptr, Serve::Nulla,
                "Sort by Title", "sort-title", Ordine::Titolo},
        Comando{nullptr, "mnuViewSort1", "Sort by &Author", Qt::Key_F6, nullptr, Serve::Nulla,
                "Sort by Author", "sort-author", Ordine::Autore},
        Comando{nullptr, "mnuViewSort2", "Sort by Album", Qt::Key_F7, nullptr, Serve::Nulla,
                "Sort by Album", "sort-album", Ordine::Album},

        Comando{"&Database", "mnuDataAdd", "&Add", Qt::CTRL | Qt::Key_Insert, &F::mnuDataAdd_Click,
                Serve::Nulla, "Add a new song", "add"},
        Comando{nullptr, "mnuDataDelete", "&Delete", Qt::Key_Delete, &F::mnuDataDelete_Click,
                Serve::Selezione, "Delete song", "delete"},
        Comando{nullptr, "mnuDataSep1"},
        Comando{nullptr, "mnuDataConvert", "&Convert from KAR...", Qt::Key_F3,
                &F::mnuDataConvert_Click, Serve::Nulla, "Convert/import KAR files", "convert"},
        Comando{nullptr, "mnuDataSep2"},
        Comando{nullptr, "mnuDataReload", "Reload index", Qt::Key_F8, &F::mnuDataReload_Click,
                Serve::Nulla, "Reload index", "reload"},
        Comando{nullptr, "mnuDataRebuild", "Rebuild index", Qt::Key_F9, &F::mnuDataRebuild_Click,
                Serve::Nulla, "Update index", "rebuild"},
    };
    static_assert(std::ranges::all_of(BarraLibreria,
                                      [](std::string_view nome) {
                                          return nome.empty() ||
                                                 std::ranges::find(Tabella, nome, &Comando::nome) !=
                                                     Tabella.end();
                                      }),
                  "a button without a command");
    return Tabella;
}

const frmSelectSong::Comando* frmSelectSong::ComandoDelBottone(int indice) {
    const auto posto = static_cast<std::size_t>(indice) - 1;
    if (posto >= BarraLibreria.size() || BarraLibreria[posto].empty()) {
        return nullptr;
    }
    const auto tabella = TabellaComandi();
    return &*std::ranges::find(tabella, BarraLibreria[posto], &Comando::nome);
}

void frmSelectSong::Esegui(const Comando& comando) {
    if (comando.ordine) {
        mnuViewSort_Click(*comando.ordine);
    } else {
        (this->*comando.gestore)();
    }
}

void frmSelectSong::CreaMenu() {
    for (const Comando& comando : TabellaComandi()) {
        QMenu& menu = comando.menu != nullptr ? *menu_->addMenu(comando.menu)
                                              : *menu_->actions().back()->menu();
        if (comando.testo == nullptr) {
            menu.addSeparator()->setObjectName(comando.nome);
            continue;
        }
        QAction* voce = menu.addAction(comando.testo, this, [this, &comando] { Esegui(comando); });
        voce->setObjectName(comando.nome);
        if (comando.tasti.key() != Qt::Key_unknown) {
            voce->setShortcut(comando.tasti);
        }
        if (comando.serve != Serve::Nulla) {
            legami_.push_back({voce, comando.serve});
        }
    }
}

QWidget* frmSelectSong::CreaBarra() {
    auto* striscia = new QWidget(this);
    // Background for the toolbar's band, which is shorter than the strip.
    striscia->setBackgroundRole(QPalette::Button);
    striscia->setAutoFillBackground(true);
    tlbBar = AddToolBar(*striscia);
    auto* ordini = new QActionGroup(this);
    for (int indice = 1; indice <= static_cast<int>(BarraLibreria.size()); ++indice) {
        const Comando* comando = ComandoDelBottone(indice);
        if (comando == nullptr) {
            tlbBar->addSeparator();
            continue;
        }
        QAction* bottone = AddToolButton(*tlbBar, comando->suggerimento, comando->immagine,
                                         [this, indice] { tlbBar_ButtonClick(indice); });
        // Only an image, no text.
        bottone->setPriority(QAction::LowPriority);
        if (comando->serve != Serve::Nulla) {
            legami_.push_back({bottone, comando->serve});
        }
        if (comando->ordine) {
            bottone->setCheckable(true);
            ordini->addAction(bottone);
            ordini_.at(static_cast<std::size_t>(*comando->ordine)) = bottone;
        }
    }
    ordini_.front()->setChecked(true);

    CRebar::TBMakeFlat(*tlbBar, true);
    tlbBar->ensurePolished();
    tlbBar->adjustSize();
    Rebar.Parent(striscia);
    Rebar.Create();
    Rebar.AddBands("", 1, tlbBar, 1);
    striscia->setFixedHeight(tlbBar->height());
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
    CreaMenuLista(*lstBrani, [this] {
        const std::int16_t posizione = BranoSelezionato();
        return posizione > 0 ? p_.comandi.Accoda(posizione) : std::nullopt;
    });
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
    linea_ = new LineaCerca(*this, *lstBrani, [this](const QString& t) { Cerca(t); });
    interno->addWidget(linea_);
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
    for (QAction* bottone : tlbBar->actions()) {
        setTabOrder(prima, tlbBar->widgetForAction(bottone));
        prima = tlbBar->widgetForAction(bottone);
    }
    const QFontMetrics misure = lstBrani->fontMetrics();
    const QSize iniziale(LarghezzaIniziale * misure.averageCharWidth(),
                         AltezzaIniziale * misure.lineSpacing());
    resize(iniziale.boundedTo(RoomOnScreen(*this)));
}

void frmSelectSong::tlbBar_ButtonClick(int index) {
    if (const Comando* comando = ComandoDelBottone(index)) {
        Esegui(*comando);
    }
}

}  // namespace sonnel
