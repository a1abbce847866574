// What the main window shows: its layout, and what playback reports to it.

#include "platform/Numbers.h"
#include "platform/qt/QtColour.h"
#include "player/window/frmKaraoke.h"

#include <QEvent>
#include <QLayout>
#include <QPainter>
#include <QSignalBlocker>
#include <QWindow>
#include <utility>

namespace sonnel {

// Layout

bool frmKaraoke::eventFilter(QObject* object, QEvent* event) {
    if (object == area_ && event->type() == QEvent::Resize) {
        Form_Resize();
    }
    // Painted here, because a palette set on the area would colour the toolbar too.
    if (object == area_ && event->type() == QEvent::Paint) {
        QPainter(area_).fillRect(area_->rect(), ToQColor(sfondo_));
    }
    return QMainWindow::eventFilter(object, event);
}

void frmKaraoke::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange && isMinimized()) {
        riproduzione_.Sospendi();
    }
    if (event->type() == QEvent::PaletteChange && imgLogo != nullptr) {
        MostraLogo(std::exchange(immagineLogo_, 0));
    }
    // Not when a menu of this window opens: the window stays active then.
    if (event->type() == QEvent::ActivationChange && !isActiveWindow()) {
        Form_LostFocus();
    }
}

void frmKaraoke::Form_Resize() {
    if (isMinimized()) {
        return;
    }
    Rebar.Resize(*area_);
    striscia_->setGeometry(0, 0, area_->width(), striscia_->sizeHint().height());
    const bool altraLarghezza = Parole.width() != area_->width();
    Parole.setGeometry(0, Parole.y(), area_->width(), Parole.height());
    disegno_.Ridisponi();
    // Before it is shown, the window still gets its stored size; the font of a song loaded already
    // must follow.
    if (altraLarghezza && (windowHandle() == nullptr || !windowHandle()->isExposed())) {
        riproduzione_.Riadatta();
    }
}

/// Lays out the window's contents at once, even while it is hidden.
void frmKaraoke::DisponiFinestra() {
    ensurePolished();
    layout()->activate();
    Form_Resize();
}

int frmKaraoke::AltezzaBarra() const {
    // On a full screen the toolbar, while visible, covers the lyrics and takes no height from them.
    return ASchermoIntero() ? 0 : Twips(striscia_->height());
}

int frmKaraoke::AltezzaInterna() const {
    return Twips(area_->height());
}

int frmKaraoke::LarghezzaParole() const {
    return Twips(Parole.width());
}

void frmKaraoke::DisponiParole(int top, int altezza) {
    Parole.setGeometry(0, Pixel(top), Parole.width(), Pixel(altezza));
}

void frmKaraoke::ColoreSfondo(Colour colore) {
    sfondo_ = colore;
    area_->update();
    cantanti_->Rinnova();
}

// What playback shows

void frmKaraoke::Titolo(const std::string& titolo) {
    // In a window title Qt replaces "[*]" by a mark for unsaved changes; doubled, it is shown as
    // text.
    setWindowTitle(QString::fromStdString(titolo).replace("[*]", "[*][*]"));
}

void frmKaraoke::Durata(std::int32_t secondi, const std::string& testo) {
    cantanti_->Rinnova();
    const QSignalBlocker fermo(sldPosition);
    sldPosition->setRange(0, secondi);
    lblTrackLength->setText(QString::fromStdString(testo));
}

void frmKaraoke::Cursore(std::int32_t secondi) {
    const QSignalBlocker fermo(sldPosition);
    sldPosition->setValue(secondi);
}

void frmKaraoke::Posizione(const std::string& testo) {
    lblPosition->setText(QString::fromStdString(testo));
}

void frmKaraoke::Canto(const std::string& testo) {
    lblCanto->setText(QString::fromStdString(testo));
    lblCanto->setToolTip(lblCanto->text());
    lblCanto->setVisible(!testo.empty());
}

void frmKaraoke::AnimaLogo(bool attiva) {
    if (attiva == tmrLogo.isActive()) {
        return;
    }
    if (attiva) {
        tmrLogo.start();
    } else {
        tmrLogo.stop();
    }
}

void frmKaraoke::PrimaImmagineLogo() {
    MostraLogo(1);
}

void frmKaraoke::tmrLogo_Timer() {
    contatoreLogo_ = contatoreLogo_ >= static_cast<int>(ImageList2.size()) ? 1 : contatoreLogo_ + 1;
    MostraLogo(contatoreLogo_);
    constexpr int PrimaImmagine = 800;
    constexpr int AltreImmagini = 600;
    tmrLogo.setInterval(contatoreLogo_ == 1 ? PrimaImmagine : AltreImmagini);
}

void frmKaraoke::Comandi(const StatoComandi& stato) {
    cantanti_->Segui();
    // Called a hundred times a second while a song plays, nearly always with the same states.
    if (comandi_ == stato) {
        return;
    }
    comandi_ = stato;
    // Move the focus first: disabling the control that has it would pass it on to a button.
    if (stato.TimerCursore && !tmrSlider.isActive()) {
        Parole.setFocus();
    }
    for (const Legame& legame : legami_) {
        legame.azione->setEnabled(stato.*legame.stato);
    }
    sldPosition->setEnabled(stato.Cursore);
    sveglia_.Keep(stato.TimerCursore);
    if (stato.TimerCursore) {
        tmrSlider.start();
    } else if (tmrSlider.isActive()) {
        tmrSlider.stop();
        sldPosition->setFocus();
    }
}

void frmKaraoke::Disabilita(bool StatoComandi::*comando) {
    comandi_.reset();
    for (const Legame& legame : legami_) {
        if (legame.stato == comando) {
            legame.azione->setEnabled(false);
        }
    }
}

}  // namespace sonnel
