// The main window's menus, toolbar and position controls.

#include "platform/qt/PaletteIcon.h"
#include "platform/qt/ToolStrip.h"
#include "player/FormattaTempo.h"
#include "player/window/frmKaraoke.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QMenuBar>
#include <algorithm>
#include <array>
#include <string_view>

namespace sonnel {
namespace {

constexpr QSize ImmagineLogo(32, 32);
constexpr int PaginaCursore = 10;  // seconds that a page key moves the slider

/// A command: its menu item, handler, toolbar button if any, and the state that enables it. Without
/// a state it is always enabled.
struct Comando {
    const char* menu;  ///< title of the menu that starts with this item; null for its other items
    const char* nome;  ///< object name of the menu item
    const char* testo = nullptr;  ///< null for a separator
    QKeyCombination tasti{};
    void (frmKaraoke::*gestore)() = nullptr;
    bool StatoComandi::*voce = nullptr;
    const char* suggerimento = nullptr;
    const char* immagine = nullptr;
    bool StatoComandi::*bottone = voce;
};

using F = frmKaraoke;

/// All commands in the order of the menus.
constexpr std::array TabellaComandi{
    Comando{"&File", "mnuFileLoad", "&Open", Qt::CTRL | Qt::Key_O, &F::mnuFileLoad_Click,
            &StatoComandi::FileLoad, "Open", "open"},
    Comando{nullptr, "mnuFileSep1"},
    Comando{nullptr, "mnuFileRileggiDB", "&Reload index", Qt::Key_F5, &F::mnuFileRileggiDB_Click},
    Comando{nullptr, "mnuFileAggiornaDB", "&Update index", Qt::CTRL | Qt::Key_F5,
            &F::mnufileAggiornaDB_Click},
    Comando{nullptr, "mnufileSep2"},
    Comando{nullptr, "mnuFileExit", "&Exit", Qt::CTRL | Qt::Key_X, &F::mnuFileExit_Click},

    Comando{"&View", "mnuVisMixer", "&Volume control", Qt::CTRL | Qt::Key_V, &F::mnuVisMixer_Click,
            nullptr, "Volume control", "volume"},
    Comando{nullptr, "mnuVisCalibratura", "Cali&brate...", Qt::CTRL | Qt::Key_C,
            &F::mnuVisCalibratura_Click, &StatoComandi::VisCalibratura, "Video calibration",
            "calibration"},
    Comando{nullptr, "mnuVisSep1"},
    Comando{nullptr, "mnuVisInfo", "Song &Properties", Qt::CTRL | Qt::Key_I, &F::mnuVisInfo_Click,
            &StatoComandi::VisInfo, "Song informations", "song-info"},
    Comando{nullptr, "mnuVisSep2"},
    Comando{nullptr,
            "mnuVisOpzioni",
            "&Options...",
            {},
            &F::mnuVisOpzioni_Click,
            nullptr,
            "Options",
            "options",
            &StatoComandi::BottoneOpzioni},

    Comando{"&Karaoke", "mnuSoundPlay", "&Play", Qt::Key_F2, &F::mnuSoundPlay_Click,
            &StatoComandi::SoundPlay, "Play", "play"},
    Comando{nullptr, "mnuSoundPause", "&Pause/continue", Qt::Key_F3, &F::mnuSoundPause_Click,
            &StatoComandi::SoundPause, "Pause", "pause"},
    Comando{nullptr, "mnuSoundStop", "&Stop", Qt::Key_F4, &F::mnuSoundStop_Click,
            &StatoComandi::SoundStop, "Stop", "stop"},

    Comando{"&Help",
            "mnuHelpWebHome",
            "&Sonnel home page",
            {},
            &F::mnuHelpWebHome_Click,
            nullptr,
            "Visit Sonnel Web site",
            "web"},
    Comando{nullptr, "mnuHelpWebLinks", "Sonnel &links", {}, &F::mnuHelpWebLinks_Click},
    Comando{nullptr, "mnuHelpSep1"},
    Comando{nullptr, "mnuHelpAbout", "&About Sonnel Player", Qt::Key_F1, &F::mnuHelpAbout_Click},
};

/// The toolbar's buttons in their order, by the names of their menu items; "" for a separator.
constexpr std::array<std::string_view, 11> BarraPlayer{
    "mnuFileLoad", "mnuVisInfo",     "", "mnuVisCalibratura", "mnuVisOpzioni",
    "mnuVisMixer", "mnuHelpWebHome", "", "mnuSoundPlay",      "mnuSoundPause",
    "mnuSoundStop"};

static_assert(std::ranges::all_of(BarraPlayer,
                                  [](std::string_view nome) {
                                      return nome.empty() || std::ranges::find(TabellaComandi, nome,
                                                                               &Comando::nome) !=
                                                                 TabellaComandi.end();
                                  }),
              "a button without a command");

/// The command at a position in the toolbar, counted from 1; null for a separator.
const Comando* ComandoDelBottone(int indice) {
    const auto posto = static_cast<std::size_t>(indice) - 1;
    if (posto >= BarraPlayer.size() || BarraPlayer[posto].empty()) {
        return nullptr;
    }
    return &*std::ranges::find(TabellaComandi, BarraPlayer[posto], &Comando::nome);
}

}  // namespace

void frmKaraoke::CreaMenu() {
    for (const Comando& comando : TabellaComandi) {
        QMenu& menu = comando.menu != nullptr ? *menuBar()->addMenu(comando.menu)
                                              : *menuBar()->actions().back()->menu();
        if (comando.testo == nullptr) {
            menu.addSeparator()->setObjectName(comando.nome);
            continue;
        }
        QAction* voce = menu.addAction(comando.testo, this, comando.gestore);
        voce->setObjectName(comando.nome);
        if (comando.tasti.key() != Qt::Key_unknown) {
            voce->setShortcut(comando.tasti);
        }
        if (comando.voce != nullptr) {
            legami_.push_back({voce, comando.voce});
        }
        if (comando.gestore == &frmKaraoke::mnuSoundPlay_Click) {
            connect(&menu, &QMenu::aboutToShow, this, &frmKaraoke::mnuSound_Click);
        }
    }
}

void frmKaraoke::CreaBarra() {
    striscia_->setAutoFillBackground(true);
    tlbBar = AddToolBar(*striscia_);
    tlbBar->setAccessibleName("Commands");
    tlbBar->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    for (int indice = 1; indice <= static_cast<int>(BarraPlayer.size()); ++indice) {
        const Comando* comando = ComandoDelBottone(indice);
        if (comando == nullptr) {
            tlbBar->addSeparator();
            continue;
        }
        QAction* bottone = AddToolButton(*tlbBar, comando->suggerimento, comando->immagine,
                                         [this, indice] { tlbBar_ButtonClick(indice); });
        if (comando->bottone != nullptr) {
            legami_.push_back({bottone, comando->bottone});
        }
    }

    imgLogo = new QLabel(striscia_);
    imgLogo->setObjectName("imgLogo");
    imgLogo->setFixedSize(ImmagineLogo);
    for (std::size_t i = 0; i < ImageList2.size(); ++i) {
        ImageList2[i] = PaletteIcon(QString(":/logo/logo%1.svg").arg(i + 1));
    }
    MostraLogo(1);

    auto* fila = new QHBoxLayout(striscia_);
    fila->setContentsMargins(4, 4, 8, 4);
    fila->setSpacing(6);
    fila->addWidget(tlbBar);
    fila->addWidget(CreaPosizione(), 1);
    fila->addWidget(imgLogo);
}

QWidget* frmKaraoke::CreaPosizione() {
    auto* SSPanel1 = new QFrame(striscia_);
    SSPanel1->setObjectName("SSPanel1");
    SSPanel1->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    const QString zero = QString::fromStdString(FormattaTempo(0));
    lblPosition = new QLabel(zero, SSPanel1);
    lblPosition->setAccessibleDescription("Song position");
    lblTrackLength = new QLabel(zero, SSPanel1);
    lblTrackLength->setAccessibleDescription("Song length");
    lblCanto = new QLabel(SSPanel1);
    lblCanto->setAccessibleDescription("Key, tempo and melody");
    lblCanto->setMinimumWidth(1);  // shrinks when the window is narrow
    lblCanto->hide();
    for (QLabel* etichetta : {lblPosition, lblTrackLength}) {
        // Fixed width, so that the slider does not move when the digits change.
        etichetta->setMinimumWidth(etichetta->fontMetrics().horizontalAdvance("00' 00\"") + 2);
        etichetta->setAlignment(Qt::AlignCenter);
    }
    sldPosition = new QSlider(Qt::Horizontal, SSPanel1);
    sldPosition->setRange(0, 0);
    sldPosition->setPageStep(PaginaCursore);
    sldPosition->setEnabled(false);
    sldPosition->setMinimumWidth(48);
    sldPosition->setAccessibleName("Song position in seconds");
    connect(sldPosition, &QSlider::valueChanged, this, &frmKaraoke::sldPosition_Change);

    auto* fila = new QHBoxLayout(SSPanel1);
    fila->setContentsMargins(6, 0, 6, 0);
    fila->setSpacing(6);
    fila->addWidget(lblPosition);
    fila->addWidget(lblCanto);
    fila->addWidget(sldPosition, 1);
    fila->addWidget(lblTrackLength);
    return SSPanel1;
}

void frmKaraoke::MostraLogo(int immagine) {
    if (immagine == immagineLogo_) {
        return;
    }
    immagineLogo_ = immagine;
    const QIcon& icona = ImageList2.at(static_cast<std::size_t>(immagine) - 1);
    imgLogo->setPixmap(icona.pixmap(ImmagineLogo, devicePixelRatioF()));
}

void frmKaraoke::tlbBar_ButtonClick(int index) {
    if (const Comando* comando = ComandoDelBottone(index)) {
        (this->*comando->gestore)();
    }
}

}  // namespace sonnel
