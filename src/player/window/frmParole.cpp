#include "player/window/frmParole.h"

#include "platform/Numbers.h"
#include "platform/qt/FitScreen.h"
#include "platform/qt/FullScreen.h"
#include "player/window/PostoParole.h"
#include "player/window/frmAnnuncio.h"
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
    addAction(azione_);
    connect(azione_, &QAction::toggled, this, &FinestraParole::Apri);
    battito_.setTimerType(Qt::PreciseTimer);
    connect(&battito_, &QTimer::timeout, this, &FinestraParole::Avanza);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, [this](const QScreen* perduto) {
        if (azione_->isChecked() && screen() == perduto) {
            // Wait until Qt has moved the windows of that screen.
            QTimer::singleShot(0, this, &FinestraParole::SchermoPerduto);
        }
    });
    CreaMenu();
}

void FinestraParole::CreaMenu() {
    menu_.setTitle("Lyrics &window shows");
    static constexpr std::array<Interruttore, 5> interruttori{
        Interruttore{"&Flowing colour", "Flow", &MostraScena::flusso},
        Interruttore{"&Next line", "NextLine", &MostraScena::prossima},
        Interruttore{"&Count-in", "CountIn", &MostraScena::punti},
        Interruttore{"&Title before the song", "Title", &MostraScena::titolo},
        Interruttore{"Next s&ong after it", "NextSong", &MostraScena::annuncio}};
    for (const Interruttore& uno : interruttori) {
        mostra_.*uno.parte = LeggiInterruttore(p_.registro, SezioneParole, uno.chiave, true);
        QAction* voce = menu_.addAction(uno.testo);
        voce->setCheckable(true);
        voce->setChecked(mostra_.*uno.parte);
        connect(voce, &QAction::toggled, this, [this, &uno](bool acceso) {
            mostra_.*uno.parte = acceso;
            SalvaImpostazione(p_.registro, SezioneParole, uno.chiave, TestoLogico(acceso));
            Segui();
            update();
        });
    }
    menu_.addSeparator();
    menu_.addAction("Full &screen", this, &FinestraParole::CambiaSchermoIntero);
    menu_.addAction("C&lose", this, &QWidget::close);
}

void FinestraParole::Apri(bool apri) {
    if (!apri) {
        battito_.stop();
        RicordaPosto(p_.registro, Posto(), FillsScreen(*this), schermi_);
        hide();
        return;
    }
    const auto schermi = p_.schermo.Screens();
    const auto qui = QGuiApplication::screens().indexOf(p_.principale->screen());
    const auto [posto, intero] =
        PostoDaAprire(p_.registro, schermi, static_cast<std::size_t>(std::max(qsizetype{0}, qui)));
    schermi_ = schermi.size();
    setWindowState(Qt::WindowNoState);
    if (posto) {
        Colloca(*posto);
    } else {
        constexpr QSize usuale(960, 540);
        resize(usuale.boundedTo(RoomOnScreen(*this)));
    }
    if (intero) {
        CambiaSchermoIntero();
    }
    Rinnova();
    show();
    Segui();
}

void FinestraParole::closeEvent(QCloseEvent* event) {
    QWidget::closeEvent(event);
    azione_->setChecked(false);
}

void FinestraParole::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && !isActiveWindow()) {
        p_.lasciata();
    }
}

void FinestraParole::CambiaSchermoIntero() {
    const bool riempi = !FillsScreen(*this);
    if (riempi) {
        ordinario_ = geometry();
    }
    SetWindowState(*this, riempi ? Qt::WindowFullScreen : Qt::WindowNoState, ordinario_);
}

void FinestraParole::SchermoPerduto() {
    const auto schermi = p_.schermo.Screens();
    schermi_ = schermi.size();
    if (FillsScreen(*this)) {
        setWindowState(Qt::WindowNoState);
        resize(ordinario_.size());
    }
    Colloca(PostoOrdinario(Posto(), schermi));
    show();
}

void FinestraParole::Colloca(const Rectangle& posto) {
    const auto pixel = [this](int twips) {
        return RoundHalfEven<int>(twips / p_.schermo.TwipsPerPixel());
    };
    const QPoint dove(pixel(posto.left), pixel(posto.top));
    const QSize misura(pixel(posto.width), pixel(posto.height));
    if (QScreen* schermo = QGuiApplication::screenAt(QRect(dove, misura).center())) {
        setScreen(schermo);
    }
    resize(misura);
    move(dove);
}

Rectangle FinestraParole::Posto() const {
    const auto twips = [this](int pixel) {
        return RoundHalfEven<int>(pixel * p_.schermo.TwipsPerPixel());
    };
    return {twips(x()), twips(y()), twips(width()), twips(height())};
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
    const bool suona = p_.suona();
    if (suona && !battito_.isActive()) {
        constexpr double millisecondi = 1000;
        battito_.start(static_cast<int>(millisecondi / std::max(1.0, screen()->refreshRate())));
    } else if (!suona) {
        battito_.stop();
    } else if (ultimo_ == p_.brano.timeline.UltimoEvento) {
        return;  // the next timer tick draws it
    }
    Avanza();
}

/// Shows the current moment of the song, repainting only what has changed.
void FinestraParole::Avanza() {
    ultimo_ = p_.brano.timeline.UltimoEvento;
    update(disegno_.Mostra(ScenaA(p_.brano.timeline, p_.tempo(), mostra_)));
}

void FinestraParole::paintEvent(QPaintEvent* event) {
    QPainter pittore(this);
    if (const auto& annuncio = p_.annuncio(); annuncio && mostra_.annuncio) {
        DisegnaAnnuncio(pittore, rect(), *annuncio, p_.brano.config);
        return;
    }
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
