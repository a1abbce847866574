// The main window's menus, toolbar and position controls.

#include "platform/qt/ToolStrip.h"
#include "player/FormattaTempo.h"
#include "player/frmKaraoke.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QMenuBar>

namespace sonnel {
namespace {

constexpr QSize ImmagineLogo(32, 32);
constexpr int PaginaCursore = 10;  // seconds that a page key moves the slider

constexpr const char* StilePosizione =
    "#SSPanel1 { background: #fafafa; border: 1px solid #d0d0d0; border-radius: 6px; }"
    "#SSPanel1 QLabel { color: #2d3b40; }"
    "#SSPanel1 QLabel:disabled { color: #2d3b40; }";

struct Bottone {
    const char* suggerimento;
    const char* immagine;           ///< null for a separator
    void (frmKaraoke::*comando)();  ///< the handler of its menu item
};

constexpr Bottone Separatore{nullptr, nullptr, nullptr};
constexpr std::array<Bottone, 11> Bottoni{{
    {"Open", "open", &frmKaraoke::mnuFileLoad_Click},
    {"Song informations", "song-info", &frmKaraoke::mnuVisInfo_Click},
    Separatore,
    {"Video calibration", "calibration", &frmKaraoke::mnuVisCalibratura_Click},
    {"Options", "options", &frmKaraoke::mnuVisOpzioni_Click},
    {"Volume control", "volume", &frmKaraoke::mnuVisMixer_Click},
    {"Visit Sonnel Web site", "web", &frmKaraoke::mnuHelpWebHome_Click},
    Separatore,
    {"Play", "play", &frmKaraoke::mnuSoundPlay_Click},
    {"Pause", "pause", &frmKaraoke::mnuSoundPause_Click},
    {"Stop", "stop", &frmKaraoke::mnuSoundStop_Click},
}};

}  // namespace

template <typename Gestore>
QAction* frmKaraoke::Voce(QMenu* menu, const char* nome, const char* testo,
                          const QKeySequence& tasti, Gestore comando) {
    QAction* azione = menu->addAction(testo, this, comando);
    azione->setObjectName(nome);
    azione->setShortcut(tasti);
    return azione;
}

void frmKaraoke::CreaMenu() {
    CreaMenuFile();
    CreaMenuVista();
    CreaMenuKaraoke();
    CreaMenuAiuto();
    for (QAction* azione : {mnuVisInfo, mnuSoundPlay, mnuSoundPause, mnuSoundStop}) {
        azione->setEnabled(false);
    }
}

void frmKaraoke::CreaMenuFile() {
    QMenu* mnuFile = menuBar()->addMenu("&File");
    mnuFileLoad =
        Voce(mnuFile, "mnuFileLoad", "&Open", Qt::CTRL | Qt::Key_O, &frmKaraoke::mnuFileLoad_Click);
    mnuFile->addSeparator()->setObjectName("mnuFileSep1");
    Voce(mnuFile, "mnuFileRileggiDB", "&Reload index", Qt::Key_F5,
         &frmKaraoke::mnuFileRileggiDB_Click);
    Voce(mnuFile, "mnuFileAggiornaDB", "&Update index", Qt::CTRL | Qt::Key_F5,
         &frmKaraoke::mnufileAggiornaDB_Click);
    mnuFile->addSeparator()->setObjectName("mnufileSep2");
    Voce(mnuFile, "mnuFileExit", "&Exit", Qt::CTRL | Qt::Key_X, &frmKaraoke::mnuFileExit_Click);
}

void frmKaraoke::CreaMenuVista() {
    QMenu* mnuVis = menuBar()->addMenu("&View");
    Voce(mnuVis, "mnuVisMixer", "&Volume control", Qt::CTRL | Qt::Key_V,
         &frmKaraoke::mnuVisMixer_Click);
    mnuVisCalibratura = Voce(mnuVis, "mnuVisCalibratura", "Cali&brate...", Qt::CTRL | Qt::Key_C,
                             &frmKaraoke::mnuVisCalibratura_Click);
    mnuVis->addSeparator()->setObjectName("mnuVisSep1");
    mnuVisInfo = Voce(mnuVis, "mnuVisInfo", "Song &Properties", Qt::CTRL | Qt::Key_I,
                      &frmKaraoke::mnuVisInfo_Click);
    mnuVis->addSeparator()->setObjectName("mnuVisSep2");
    Voce(mnuVis, "mnuVisOpzioni", "&Options...", {}, &frmKaraoke::mnuVisOpzioni_Click);
}

void frmKaraoke::CreaMenuKaraoke() {
    QMenu* mnuSound = menuBar()->addMenu("&Karaoke");
    connect(mnuSound, &QMenu::aboutToShow, this, &frmKaraoke::mnuSound_Click);
    mnuSoundPlay =
        Voce(mnuSound, "mnuSoundPlay", "&Play", Qt::Key_F2, &frmKaraoke::mnuSoundPlay_Click);
    mnuSoundPause = Voce(mnuSound, "mnuSoundPause", "&Pause/continue", Qt::Key_F3,
                         &frmKaraoke::mnuSoundPause_Click);
    mnuSoundStop =
        Voce(mnuSound, "mnuSoundStop", "&Stop", Qt::Key_F4, &frmKaraoke::mnuSoundStop_Click);
}

void frmKaraoke::CreaMenuAiuto() {
    QMenu* mnuHelp = menuBar()->addMenu("&Help");
    Voce(mnuHelp, "mnuHelpWebHome", "&Sonnel home page", {}, &frmKaraoke::mnuHelpWebHome_Click);
    Voce(mnuHelp, "mnuHelpWebLinks", "Sonnel &links", {}, &frmKaraoke::mnuHelpWebLinks_Click);
    mnuHelp->addSeparator()->setObjectName("mnuHelpSep1");
    Voce(mnuHelp, "mnuHelpAbout", "&About Sonnel Player", Qt::Key_F1,
         &frmKaraoke::mnuHelpAbout_Click);
}

void frmKaraoke::CreaBarra() {
    DressToolStrip(*striscia_, StilePosizione);
    tlbBar = AddToolBar(*striscia_);
    tlbBar->setAccessibleName("Commands");
    tlbBar->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    for (std::size_t i = 0; i < Bottoni.size(); ++i) {
        const int indice = static_cast<int>(i) + 1;
        bottoni_[i] = AddToolButton(*tlbBar, Bottoni[i].suggerimento, Bottoni[i].immagine,
                                    [this, indice] { tlbBar_ButtonClick(indice); });
    }

    imgLogo = new QLabel(striscia_);
    imgLogo->setObjectName("imgLogo");
    imgLogo->setFixedSize(ImmagineLogo);
    for (std::size_t i = 0; i < ImageList2.size(); ++i) {
        ImageList2[i] = QIcon(QString(":/logo/logo%1.svg").arg(i + 1));
    }
    MostraLogo(1);

    auto* fila = new QHBoxLayout(striscia_);
    fila->setContentsMargins(4, 4, 8, 5);
    fila->setSpacing(6);
    fila->addWidget(tlbBar);
    fila->addWidget(CreaPosizione(), 1);
    fila->addWidget(imgLogo);
}

QWidget* frmKaraoke::CreaPosizione() {
    auto* SSPanel1 = new QFrame(striscia_);
    SSPanel1->setObjectName("SSPanel1");
    const QString zero = QString::fromStdString(FormattaTempo(0));
    lblPosition = new QLabel(zero, SSPanel1);
    lblPosition->setAccessibleDescription("Song position");
    lblTrackLength = new QLabel(zero, SSPanel1);
    lblTrackLength->setAccessibleDescription("Song length");
    for (QLabel* etichetta : {lblPosition, lblTrackLength}) {
        // The slider does not move while the digits change.
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
    if (index < 1 || index > NumBottoni) {
        return;
    }
    if (const auto comando = Bottoni.at(static_cast<std::size_t>(index) - 1).comando) {
        (this->*comando)();
    }
}

}  // namespace sonnel
