#include "player/window/frmSchermoIntero.h"

#include "platform/qt/FullScreen.h"

#include <QCursor>
#include <QEvent>
#include <QMenuBar>
#include <utility>

namespace sonnel {
namespace {

constexpr int IntervalloMouse = 150;  // ms
constexpr int BordoSuperiore = 2;     // pixels
constexpr int Ritorno = 500;  // ms within which a window manager restores the size from before

}  // namespace

SchermoIntero::SchermoIntero(QMainWindow& finestra, QWidget& striscia, std::function<void()> adatta)
    : QObject(&finestra),
      finestra_(finestra),
      striscia_(striscia),
      adatta_(std::move(adatta)),
      azione_(new QAction("&Full screen", this)),
      esci_(new QAction(this)) {
    azione_->setCheckable(true);
    azione_->setShortcut(Qt::Key_F11);
    esci_->setShortcut(Qt::Key_Escape);
    esci_->setEnabled(false);
    finestra_.addActions({azione_, esci_});
    finestra_.installEventFilter(this);
    connect(azione_, &QAction::toggled, this, &SchermoIntero::Passa);
    connect(esci_, &QAction::triggered, this, [this] { azione_->setChecked(false); });
    guardia_.setInterval(IntervalloMouse);
    connect(&guardia_, &QTimer::timeout, this, &SchermoIntero::GuardaMouse);
}

void SchermoIntero::Passa(bool intero) {
    attivo_ = intero;
    esci_->setEnabled(intero);
    if (intero) {
        statoPrima_ = finestra_.windowState();
        postoPrima_ = finestra_.pos();
        misuraPrima_ = finestra_.size();
        ordinario_ = finestra_.geometry();
        SetWindowState(finestra_, statoPrima_ | Qt::WindowFullScreen, ordinario_);
        guardia_.start();
    } else {
        guardia_.stop();
        ritorno_.setRemainingTime(Ritorno);
        SetWindowState(finestra_, statoPrima_, ordinario_);
    }
    MostraBarre(!intero);
    if (!intero) {
        finestra_.menuBar()->setMinimumHeight(0);
        finestra_.menuBar()->setMaximumHeight(QWIDGETSIZE_MAX);
    }
    adatta_();
}

/// The menu bar gets no height instead of being hidden, which would disable its shortcuts.
void SchermoIntero::MostraBarre(bool mostra) {
    if (mostra == barre_) {
        return;
    }
    barre_ = mostra;
    finestra_.menuBar()->setFixedHeight(mostra ? finestra_.menuBar()->sizeHint().height() : 0);
    striscia_.setVisible(mostra);
}

void SchermoIntero::GuardaMouse() {
    const QPoint mouse = finestra_.mapFromGlobal(QCursor::pos());
    const bool dentro = finestra_.rect().contains(mouse);
    const int barre =
        striscia_.mapTo(&finestra_, QPoint(0, striscia_.height())).y() + BordoSuperiore;
    if (dentro && mouse.y() <= (barre_ ? barre : BordoSuperiore)) {
        MostraBarre(true);
    } else if (finestra_.menuBar()->activeAction() == nullptr) {
        MostraBarre(false);
    }
}

void SchermoIntero::Termina() {
    if (!attivo_) {
        return;
    }
    finestra_.hide();
    finestra_.setWindowState(statoPrima_);
    finestra_.move(postoPrima_);
    finestra_.resize(misuraPrima_);
}

bool SchermoIntero::eventFilter(QObject* object, QEvent* event) {
    const bool tornata = !ritorno_.hasExpired() && finestra_.size() == misuraPrima_;
    if (event->type() == QEvent::Resize && (attivo_ || tornata)) {
        QTimer::singleShot(0, this, [this] { adatta_(); });
    }
    // The desktop itself may have ended the full screen.
    if (event->type() == QEvent::WindowStateChange && attivo_ && finestra_.isVisible() &&
        !finestra_.isFullScreen()) {
        azione_->setChecked(false);
    }
    return QObject::eventFilter(object, event);
}

}  // namespace sonnel
