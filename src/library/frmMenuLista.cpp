#include "library/frmMenuLista.h"

#include <QAction>
#include <QToolTip>
#include <utility>

namespace sonnel {

void CreaMenuLista(QListView& lista, std::function<std::optional<std::string>()> accoda) {
    auto* azione = new QAction("Add to the &queue", &lista);
    azione->setShortcuts({Qt::CTRL | Qt::Key_Return, Qt::CTRL | Qt::Key_Enter});
    lista.addAction(azione);
    lista.setContextMenuPolicy(Qt::ActionsContextMenu);
    QObject::connect(azione, &QAction::triggered, &lista, [&lista, accoda = std::move(accoda)] {
        if (const auto detto = accoda()) {
            const QRect riga = lista.visualRect(lista.currentIndex());
            QToolTip::showText(lista.viewport()->mapToGlobal(riga.bottomLeft()),
                               QString::fromStdString(*detto), &lista);
        }
    });
}

}  // namespace sonnel
