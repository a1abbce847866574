#include "ui/frmElenco.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QToolTip>
#include <algorithm>
#include <array>
#include <numeric>

namespace sonnel {
namespace {

constexpr int AriaRiga = 4;  // pixels between two lines

}  // namespace

int ModelloBrani::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(elencate_.size());
}

QVariant ModelloBrani::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole) {
        return {};
    }
    return QString::fromStdString(
        righe_.at(elencate_.at(static_cast<std::size_t>(index.row()))).testo);
}

void ModelloBrani::Sostituisci(std::vector<RigaElenco> righe) {
    beginResetModel();
    righe_ = std::move(righe);
    cerca_.reset();
    elencate_.resize(righe_.size());
    std::iota(elencate_.begin(), elencate_.end(), std::size_t{0});
    if (!parole_.empty()) {
        cerca_.emplace(righe_);
        elencate_ = cerca_->Trova(parole_);
    }
    endResetModel();
}

void ModelloBrani::Filtra(const QString& parole) {
    beginResetModel();
    parole_ = parole.toStdString();
    if (!cerca_) {
        cerca_.emplace(righe_);
    }
    elencate_ = cerca_->Trova(parole_);
    endResetModel();
}

std::int16_t ModelloBrani::Posizione(int riga) const {
    const bool esiste = riga >= 0 && riga < rowCount();
    return esiste ? righe_[elencate_[static_cast<std::size_t>(riga)]].posizione : std::int16_t{0};
}

int ModelloBrani::Riga(std::int16_t posizione) const {
    const auto trovata = std::find_if(
        elencate_.begin(), elencate_.end(),
        [this, posizione](std::size_t riga) { return righe_[riga].posizione == posizione; });
    return trovata == elencate_.end() ? -1 : static_cast<int>(trovata - elencate_.begin());
}

void VistaBrani::keyPressEvent(QKeyEvent* event) {
    constexpr std::array Movimenti{Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_PageUp};
    const bool muove =
        std::find(Movimenti.begin(), Movimenti.end(), event->key()) != Movimenti.end();
    if (muove && !selectionModel()->hasSelection() && currentIndex().isValid()) {
        setCurrentIndex(currentIndex());
    } else {
        QListView::keyPressEvent(event);
    }
}

QItemSelectionModel::SelectionFlags VistaBrani::selectionCommand(const QModelIndex& index,
                                                                 const QEvent* /*event*/) const {
    return index.isValid() ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
}

QSize DisegnoRiga::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    // Width 0 makes all lines as wide as the list.
    return {0, QStyledItemDelegate::sizeHint(option, index).height() + AriaRiga};
}

bool DisegnoRiga::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                            const QStyleOptionViewItem& option, const QModelIndex& index) {
    const bool tagliata =
        QStyledItemDelegate::sizeHint(option, index).width() > option.rect.width();
    // Escaped rich text: Qt would take a title with "<" for rich text.
    const QString testo = QString("<span>%1</span>").arg(index.data().toString().toHtmlEscaped());
    QToolTip::showText(event->globalPos(), tagliata ? testo : QString(), view);
    return true;
}

}  // namespace sonnel
