#include "ui/frmCerca.h"

#include <QKeyEvent>
#include <QShortcut>
#include <utility>

namespace sonnel {

LineaCerca::LineaCerca(QWidget& finestra, QListView& lista,
                       std::function<void(const QString&)> cambiata)
    : QLineEdit(&finestra), lista_(lista), cambiata_(std::move(cambiata)) {
    setPlaceholderText("Words to find");
    setAccessibleName("Words to find");
    setClearButtonEnabled(true);
    hide();
    connect(this, &QLineEdit::textChanged, this, cambiata_);
    connect(new QShortcut(QKeySequence::Find, &finestra), &QShortcut::activated, this,
            &LineaCerca::Apri);
    lista_.installEventFilter(this);
    finestra.installEventFilter(this);
}

void LineaCerca::Apri() {
    cambiata_(text());  // prepares the search now, so that the first key is not slow
    show();
    setFocus();
    selectAll();
}

void LineaCerca::Chiudi() {
    const bool conFuoco = hasFocus();
    hide();
    clear();
    if (conFuoco) {
        lista_.setFocus();
    }
}

bool LineaCerca::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto& tasto = *static_cast<QKeyEvent*>(event);
        if (object != window() && tasto.text() == "/") {
            Apri();
            return true;
        }
        // Must not reach the window, which would close.
        if (object == window() && tasto.key() == Qt::Key_Escape && !isHidden()) {
            Chiudi();
            return true;
        }
    }
    return QLineEdit::eventFilter(object, event);
}

void LineaCerca::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Down) {
        lista_.setFocus();
    } else {
        QLineEdit::keyPressEvent(event);
    }
}

}  // namespace sonnel
