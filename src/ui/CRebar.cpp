#include "ui/CRebar.h"

#include "platform/Numbers.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QPalette>
#include <algorithm>

namespace sonnel {
namespace {

constexpr double TwipsPerInch = 1440;
constexpr int AltezzaAllaCreazione = 60;  // pixels
constexpr const char* ProprietaStile = "tbStyle";

double TwipsPerPixel(const QWidget& widget) {
    return TwipsPerInch / widget.logicalDpiX();
}

}  // namespace

void CRebar::TBMakeFlat(QToolBar& tb, bool tbList) {
    const std::uint32_t aggiunti =
        StileFlat | StileTrasparente | StileSenzaDivisore | (tbList ? StileList : 0U);
    tb.setProperty(ProprietaStile, tb.property(ProprietaStile).toUInt() | aggiunti);
    tb.setToolButtonStyle(tbList ? Qt::ToolButtonTextBesideIcon : Qt::ToolButtonIconOnly);
    tb.setMovable(false);
    tb.setAutoFillBackground(false);
    tb.update();
}

QVariant CRebar::Create() {
    if (parent_.isNull()) {
        return false;
    }
    strip_ = new QWidget(parent_);
    strip_->lower();
    handle_ = 1;
    Move(0, 0, parent_->width() - Margine, AltezzaAllaCreazione);
    strip_->show();
    return handle_ != 0;
}

void CRebar::AddBands(const QString& bandText, std::int16_t bandName, QWidget* childWin,
                      std::int32_t newRow, std::optional<double> mWidth) {
    if (strip_.isNull()) {
        return;
    }
    Banda banda;
    banda.testo = bandText;
    banda.id = bandName;
    banda.stile = newRow == 1 ? StileBanda : StileBandaACapo;
    banda.immagine = image_;
    banda.cornice = new QLabel(bandText, strip_);
    if (childWin != nullptr) {
        banda.figlio = childWin;
        banda.larghezzaMinima = childWin->width();
        banda.altezzaMinima = childWin->height();
        childWin->setParent(strip_);
        childWin->show();
    }
    if (mWidth.value_or(0) != 0) {
        banda.larghezzaMinima = RoundHalfEven<int>(*mWidth * TwipsPerPixel(*strip_));
    }
    Colora(banda);
    banda.cornice->show();
    bande_.push_back(banda);
    Disponi();
}

QVariant CRebar::GetBandId(const QVariant& id) const {
    bool numero = false;
    const int posizione = RoundHalfEven<int>(id.toDouble(&numero));
    if (!numero || posizione < 0 || posizione >= static_cast<int>(bande_.size())) {
        return {};
    }
    return static_cast<qint32>(bande_[static_cast<std::size_t>(posizione)].id);
}

void CRebar::SetBandColors() {
    for (Banda& banda : bande_) {
        Colora(banda);
    }
}

void CRebar::Colora(Banda& banda) const {
    const QPalette sistema = QApplication::palette();
    banda.primoPiano = sistema.color(QPalette::ButtonText);
    banda.sfondo = sistema.color(QPalette::Button);
    QPalette colori = banda.cornice->palette();
    colori.setColor(QPalette::WindowText, banda.primoPiano);
    colori.setBrush(QPalette::Window,
                    banda.immagine.isNull() ? QBrush(banda.sfondo) : QBrush(banda.immagine));
    banda.cornice->setPalette(colori);
    banda.cornice->setAutoFillBackground(true);
}

void CRebar::DestroyRebar() {
    if (strip_.isNull()) {
        return;
    }
    strip_->hide();
    for (const Banda& banda : bande_) {
        delete banda.cornice;
    }
    bande_.clear();
    // Includes the windows of removed bands, which are still in the strip, hidden.
    for (QWidget* figlio : strip_->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        figlio->setParent(parent_);
    }
    delete strip_;
}

void CRebar::RemoveBands(int bandPosition) {
    if (bandPosition < 0 || bandPosition >= static_cast<int>(bande_.size())) {
        return;
    }
    const auto posto = bande_.begin() + bandPosition;
    if (posto->figlio) {
        posto->figlio->hide();
    }
    delete posto->cornice;
    bande_.erase(posto);
    if (bande_.empty()) {
        strip_->resize(strip_->width(), 0);
    }
    Disponi();
}

void CRebar::Resize(const QWidget& frm) {
    Move(0, 0, frm.width() - Margine, 0);
    if (strip_) {
        strip_->repaint();
    }
}

void CRebar::Move(int left, int top, int width, int height) {
    if (handle_ == 0 || strip_.isNull()) {
        return;
    }
    strip_->setGeometry(left, top, width, height);
    Disponi();
}

/// Lays the bands out in rows; the strip is as high as they are.
void CRebar::Disponi() {
    int x = 0;
    int y = 0;
    int altezzaRiga = 0;
    for (const Banda& banda : bande_) {
        const int testo = banda.testo.isEmpty() ? 0 : banda.cornice->sizeHint().width();
        if (x > 0 && banda.stile == StileBandaACapo) {
            y += altezzaRiga;
            x = 0;
            altezzaRiga = 0;
        }
        const int altezza = std::max(banda.altezzaMinima, banda.cornice->sizeHint().height());
        banda.cornice->setGeometry(x, y, testo + banda.larghezzaMinima, altezza);
        if (banda.figlio) {
            banda.figlio->setGeometry(x + testo, y, banda.larghezzaMinima, altezza);
            banda.figlio->raise();
        }
        x += testo + banda.larghezzaMinima;
        altezzaRiga = std::max(altezzaRiga, altezza);
    }
    const int altezza = y + altezzaRiga;
    if (strip_ && !bande_.empty() && strip_->height() != altezza) {
        strip_->resize(strip_->width(), altezza);
        if (notified_) {
            QApplication::postEvent(notified_, new QEvent(QEvent::LayoutRequest));
        }
    }
}

}  // namespace sonnel
