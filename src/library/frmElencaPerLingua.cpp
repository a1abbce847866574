#include "library/frmElencaPerLingua.h"

#include <QCollator>

namespace sonnel {
namespace {

/// The language whose order the list has; a machine without one gets an order for people too.
QLocale LinguaElenco() {
    const QLocale utente = QLocale().collation();
    return utente.language() == QLocale::C ? QLocale(QLocale::English) : utente;
}

}  // namespace

std::vector<RigaElenco> ElencaPerLingua(const TabellaBrani& brani, Ordine ordine) {
    QCollator collatore(LinguaElenco());
    collatore.setCaseSensitivity(Qt::CaseInsensitive);
    return ElencaBrani(brani, ordine, [&collatore](const std::string& testo) {
        return collatore.sortKey(QString::fromStdString(testo));
    });
}

}  // namespace sonnel
