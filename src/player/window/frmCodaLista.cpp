#include "player/window/frmCodaLista.h"

#include "player/Canto.h"

#include <QComboBox>
#include <QFont>
#include <algorithm>
#include <array>
#include <utility>

namespace sonnel {
namespace {

constexpr const char* Propria = "own";

QString DescriviTonalita(std::optional<int> tonalita) {
    return tonalita ? QString(*tonalita > 0 ? "+%1" : "%1").arg(*tonalita) : QString(Propria);
}

QString DescriviBrano(const Turno& turno, bool sparito) {
    const QString autore = QString::fromStdString(turno.autore);
    return QString::fromStdString(turno.titolo) +
           (autore.isEmpty() ? QString() : " (" + autore + ")") +
           (sparito ? " - no longer there" : "");
}

}  // namespace

ModelloCoda::ModelloCoda(QObject* padre, std::function<void(const Turno&)> cambia)
    : QAbstractTableModel(padre), cambia_(std::move(cambia)) {}

int ModelloCoda::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(turni_.size());
}

int ModelloCoda::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Colonne;
}

QVariant ModelloCoda::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) {
        return {};
    }
    constexpr std::array nomi{"Singer", "Song", "Key"};
    return orientation == Qt::Horizontal ? QVariant(nomi.at(static_cast<std::size_t>(section)))
                                         : QVariant(section + 1);
}

QVariant ModelloCoda::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const Turno& turno = turni_.at(static_cast<std::size_t>(index.row()));
    const bool sparito = spariti_.contains(turno.numero);
    if (role == Qt::FontRole) {
        QFont carattere;
        carattere.setItalic(sparito);
        return carattere;
    }
    if (role != Qt::DisplayRole && role != Qt::EditRole && role != Qt::ToolTipRole) {
        return {};
    }
    if (index.column() == Tonalita) {
        return DescriviTonalita(turno.tonalita);
    }
    return index.column() == Cantante ? QString::fromStdString(turno.cantante)
                                      : DescriviBrano(turno, sparito);
}

Qt::ItemFlags ModelloCoda::flags(const QModelIndex& index) const {
    const auto modi = QAbstractTableModel::flags(index);
    return index.column() == Brano ? modi : modi | Qt::ItemIsEditable;
}

bool ModelloCoda::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole) {
        return false;
    }
    Turno turno = turni_.at(static_cast<std::size_t>(index.row()));
    if (index.column() == Cantante) {
        turno.cantante = value.toString().trimmed().toStdString();
    } else {
        bool numero = false;
        const int tonalita = value.toString().toInt(&numero);
        turno.tonalita = numero ? std::optional(tonalita) : std::nullopt;
    }
    cambia_(turno);
    return true;
}

int ModelloCoda::Riga(std::int64_t numero) const {
    const auto trovato = std::ranges::find(turni_, numero, &Turno::numero);
    return trovato == turni_.end() ? -1 : static_cast<int>(trovato - turni_.begin());
}

std::vector<RigaElenco> ModelloCoda::Righe() const {
    std::vector<RigaElenco> righe;
    for (const Turno& turno : turni_) {
        righe.push_back({turno.cantante + " " + turno.titolo + " " + turno.autore});
    }
    return righe;
}

void ModelloCoda::TogliAssenti(const std::vector<Turno>& turni) {
    for (int riga = rowCount() - 1; riga >= 0; --riga) {
        const auto posto = turni_.begin() + riga;
        if (std::ranges::find(turni, posto->numero, &Turno::numero) == turni.end()) {
            beginRemoveRows({}, riga, riga);
            turni_.erase(posto);
            endRemoveRows();
        }
    }
}

void ModelloCoda::AggiungiNuovi(const std::vector<Turno>& turni) {
    for (const Turno& turno : turni) {
        if (Riga(turno.numero) < 0) {
            beginInsertRows({}, rowCount(), rowCount());
            turni_.push_back(turno);
            endInsertRows();
        }
    }
}

/// Puts the lines in the order of `turni`, which has the same turns.
void ModelloCoda::Riordina(const std::vector<Turno>& turni) {
    for (int riga = 0; riga < rowCount(); ++riga) {
        const int da = Riga(turni.at(static_cast<std::size_t>(riga)).numero);
        if (da != riga) {
            beginMoveRows({}, da, da, {}, riga);
            std::rotate(turni_.begin() + riga, turni_.begin() + da, turni_.begin() + da + 1);
            endMoveRows();
        }
    }
}

void ModelloCoda::Sostituisci(const std::vector<Turno>& turni) {
    const auto prima = std::exchange(spariti_, {});
    for (const Turno& turno : turni) {
        if (!Presente(turno)) {
            spariti_.insert(turno.numero);
        }
    }
    TogliAssenti(turni);
    AggiungiNuovi(turni);
    Riordina(turni);
    for (std::size_t i = 0; i < turni.size(); ++i) {
        const std::int64_t numero = turni[i].numero;
        if (turni_[i] != turni[i] || prima.contains(numero) != spariti_.contains(numero)) {
            turni_[i] = turni[i];
            const int riga = static_cast<int>(i);
            emit dataChanged(index(riga, 0), index(riga, Colonne - 1));
        }
    }
}

QItemSelectionModel::SelectionFlags VistaCoda::selectionCommand(const QModelIndex& index,
                                                                const QEvent* event) const {
    return index.isValid() ? QTableView::selectionCommand(index, event)
                           : QItemSelectionModel::NoUpdate;
}

QModelIndex VistaCoda::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    // In Qt only Ctrl+Home and Ctrl+End move to another line.
    const bool estremo = action == MoveHome || action == MoveEnd;
    const int colonna = currentIndex().column();
    const QModelIndex cella =
        QTableView::moveCursor(action, estremo ? modifiers | Qt::ControlModifier : modifiers);
    return estremo ? cella.siblingAtColumn(std::max(colonna, 0)) : cella;
}

QWidget* EditaTonalita::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                     const QModelIndex& /*index*/) const {
    auto* editore = new QComboBox(parent);
    for (int tonalita = Performance::HighestKey; tonalita >= Performance::LowestKey; --tonalita) {
        if (tonalita == 0) {
            editore->addItem(Propria);  // placed between -1 and +1, so that Up and Down change the
                                        // key by a semitone
        }
        editore->addItem(DescriviTonalita(tonalita));
    }
    return editore;
}

}  // namespace sonnel
