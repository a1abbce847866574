#include "player/window/frmParole.h"

#include "platform/qt/FitScreen.h"
#include "settings/Impostazioni.h"
#include "settings/TestoNumero.h"

#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <algorithm>
#include <array>
#include <utility>

namespace sonnel {
namespace {

constexpr const char* Sezione = "LyricsWindow";
constexpr QSize MisuraUsuale(960, 540);

}  // namespace

/// A part of the scene that the user can switch off.
struct FinestraParole::Interruttore {
    const char* testo;
    const char* chiave;
    bool MostraScena::*parte;
};

FinestraParole::FinestraParole(Parti parti)
    : p_(std::move(parti)), disegno_(p_.brano), azione_(new QAction("&Lyrics window", this)) {
    setWindowTitle("Sonnel - Lyrics");
    setWindowIcon(QIcon(":/sonnel.svg"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setWindowFlag(Qt::WindowDoesNotAcceptFocus);
    setAccessibleName("Lyrics for the singers");
    azione_->setCheckable(true);
    azione_->setShortcut(Qt::Key_F12);
    connect(azione_, &QAction::toggled, this, &FinestraParole::Apri);
    battito_.setTimerType(Qt::PreciseTimer);
    connect(&battito_, &QTimer::timeout, this, &FinestraParole::Avanza);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, [this](const QScreen* perduto) {
        if (isVisible() && isFullScreen() && screen() == perduto) {
            showNormal();
            resize(MisuraUsuale.boundedTo(RoomOnScreen(*this)));
        }
    });
    CreaMenu();
}

void FinestraParole::CreaMenu() {
    static constexpr std::array<Interruttore, 4> interruttori{
        Interruttore{"&Flowing colour", "Flow", &MostraScena::flusso},
        Interruttore{"&Next line", "NextLine", &MostraScena::prossima},
        Interruttore{"&Count-in", "CountIn", &MostraScena::punti},
        Interruttore{"&Title before the song", "Title", &MostraScena::titolo}};
    for (const Interruttore& uno : interruttori) {
        mostra_.*uno.parte = LeggiImpostazione(p_.registro, Sezione, uno.chiave, "-1") != "0";
        QAction* voce = menu_.addAction(uno.testo);
        voce->setCheckable(true);
        voce->setChecked(mostra_.*uno.parte);
        connect(voce, &QAction::toggled, this, [this, &uno](bool acceso) {
            mostra_.*uno.parte = acceso;
            SalvaImpostazione(p_.registro, Sezione, uno.chiave, TestoLogico(acceso));
            Segui();
        });
    }
    menu_.addSeparator();
    menu_.addAction("Full &screen", this, &FinestraParole::CambiaSchermoIntero);
    menu_.addAction("C&lose", this, &QWidget::close);
}

void FinestraParole::Apri(bool apri) {
    if (!apri) {
        battito_.stop();
        hide();
        return;
    }
    const QList<QScreen*> schermi = QGuiApplication::screens();
    const auto altro = std::find_if(schermi.begin(), schermi.end(), [this](const QScreen* uno) {
        return uno != p_.principale->screen();
    });
    Rinnova();
    if (altro != schermi.end()) {
        setGeometry((*altro)->geometry());
        showFullScreen();
    } else {
        resize(MisuraUsuale.boundedTo(RoomOnScreen(*this)));
        show();
    }
    Segui();
}

void FinestraParole::closeEvent(QCloseEvent* event) {
    QWidget::closeEvent(event);
    azione_->setChecked(false);
}

void FinestraParole::CambiaSchermoIntero() {
    setWindowState(windowState() ^ Qt::WindowFullScreen);
}

void FinestraParole::Rinnova() {
    if (!azione_->isChecked()) {
        return;
    }
    disegno_.Misura();
    disegno_.Adatta(size());
    Avanza();
    update();
}

void FinestraParole::Segui() {
    if (!azione_->isChecked()) {
        return;
    }
    if (!p_.suona()) {
        battito_.stop();
        Avanza();
    } else if (!battito_.isActive()) {
        constexpr double millisecondi = 1000;
        Avanza();
        battito_.start(static_cast<int>(millisecondi / std::max(1.0, screen()->refreshRate())));
    }
}

/// Shows the moment of the song; paints what has changed.
void FinestraParole::Avanza() {
    update(disegno_.Mostra(ScenaA(p_.brano.timeline, p_.tempo(), mostra_)));
}

void FinestraParole::paintEvent(QPaintEvent* event) {
    QPainter pittore(this);
    disegno_.Dipingi(pittore, event->region());
}

void FinestraParole::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    disegno_.Adatta(size());
}

void FinestraParole::contextMenuEvent(QContextMenuEvent* event) {
    menu_.popup(event->globalPos());
}

void FinestraParole::mouseDoubleClickEvent(QMouseEvent* /*event*/) {
    CambiaSchermoIntero();
}

}  // namespace sonnel
