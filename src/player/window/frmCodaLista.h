#pragma once

#include "player/Coda.h"
#include "ui/CercaRighe.h"

#include <QAbstractTableModel>
#include <QStyledItemDelegate>
#include <QTableView>
#include <cstdint>
#include <functional>
#include <set>
#include <vector>

namespace sonnel {

/// The queue as the lines of a table: singer, song, key. Singer and key can be edited.
class ModelloCoda final : public QAbstractTableModel {
  public:
    enum Colonna { Cantante, Brano, Tonalita, Colonne };
    /// `cambia` is called with a turn whose singer or key was edited.
    ModelloCoda(QObject* padre, std::function<void(const Turno&)> cambia);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

    /// Shows these turns and which of their songs are missing. A line being edited is kept while
    /// its turn exists.
    void Sostituisci(const std::vector<Turno>& turni);
    [[nodiscard]] const std::vector<Turno>& Turni() const { return turni_; }
    /// The line of the turn with this number; -1 when there is none.
    [[nodiscard]] int Riga(std::int64_t numero) const;
    /// The texts of the lines for searching.
    [[nodiscard]] std::vector<RigaElenco> Righe() const;

  private:
    void TogliAssenti(const std::vector<Turno>& turni);
    void AggiungiNuovi(const std::vector<Turno>& turni);
    void Riordina(const std::vector<Turno>& turni);

    std::function<void(const Turno&)> cambia_;
    std::vector<Turno> turni_;
    std::set<std::int64_t> spariti_;  ///< turns whose songs were missing at the last Sostituisci
};

/// The table. The selection changes only to another line, and Home and End go to the first and the
/// last one.
class VistaCoda final : public QTableView {
  public:
    using QTableView::QTableView;

  protected:
    [[nodiscard]] QItemSelectionModel::SelectionFlags selectionCommand(
        const QModelIndex& index, const QEvent* event) const override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
};

/// Edits a key: the song's own, or 12 to -12 semitones.
class EditaTonalita final : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
};

}  // namespace sonnel
