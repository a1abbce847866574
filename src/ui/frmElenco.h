#pragma once

#include "ui/CercaRighe.h"

#include <QAbstractListModel>
#include <QListView>
#include <QStyledItemDelegate>
#include <optional>
#include <string>
#include <vector>

namespace sonnel {

/// The lines of a list of songs.
class ModelloBrani : public QAbstractListModel {
  public:
    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

    /// Sets the lines; only those with the words of Filtra are shown.
    void Sostituisci(std::vector<RigaElenco> righe);
    /// Lists only the lines that hold these words.
    void Filtra(const QString& parole);
    /// Position of the song that a line shows, counted from 0; 0 when there is no such line.
    [[nodiscard]] std::int16_t Posizione(int riga) const;
    /// The first line that shows the song at a position; -1 when none does.
    [[nodiscard]] int Riga(std::int16_t posizione) const;

  private:
    std::vector<RigaElenco> righe_;
    std::optional<CercaRighe> cerca_;  ///< made for the first words to find
    std::string parole_;
    std::vector<std::size_t> elencate_;  ///< numbers of the lines that are listed
};

/// The list. The selection changes only to another line. While no line is selected, the first Up or
/// Down selects the line with the focus frame; Qt would skip it.
class VistaBrani : public QListView {
  public:
    using QListView::QListView;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    [[nodiscard]] QItemSelectionModel::SelectionFlags selectionCommand(
        const QModelIndex& index, const QEvent* event) const override;
};

/// Draws the lines as wide as the list; a tooltip shows the full text of a line that is cut off.
class DisegnoRiga : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
};

}  // namespace sonnel
