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
    // Its palette would be that of the toolbar too.
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
    // A menu of the window leaves it active.
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
    // Until it is on the screen the window takes its place, and the song's font with it.
    if (altraLarghezza && (windowHandle() == nullptr || !windowHandle()->isExposed())) {
        riproduzione_.Riadatta();
    }
}

/// Gives the window's contents their sizes at once, also while it is hidden.
void frmKaraoke::DisponiFinestra() {
    ensurePolished();
    layout()->activate();
    Form_Resize();
}

int frmKaraoke::AltezzaBarra() const {
    // On a full screen it lies over the words, when it is there at all.
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
    // "[*]" is the window system's mark for unsaved changes; doubled it is shown as text.
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
    // Told a hundred times a second while a song plays, and nearly always the same.
    if (comandi_ == stato) {
        return;
    }
    comandi_ = stato;
    // The focus leaves before its control is put out of use, which would pass it on to a button.
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
