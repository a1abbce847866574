#include "library/frmElencaPerLingua.h"

#include <QCollator>
#include <algorithm>
#include <cstddef>
#include <future>
#include <numeric>
#include <span>
#include <utility>

namespace sonnel {
namespace {

using Chiavi = std::vector<QCollatorSortKey>;

/// The language whose rules sort the list. Without a language set (the locale "C") it is English,
/// because "C" sorts by character codes.
QLocale LinguaElenco() {
    const QLocale utente = QLocale().collation();
    return utente.language() == QLocale::C ? QLocale(QLocale::English) : utente;
}

Chiavi FaiChiavi(std::span<const RigaElenco> righe, const QLocale& lingua) {
    QCollator collatore(lingua);
    collatore.setCaseSensitivity(Qt::CaseInsensitive);
    Chiavi chiavi;
    chiavi.reserve(righe.size());
    for (const RigaElenco& riga : righe) {
        chiavi.push_back(collatore.sortKey(QString::fromStdString(riga.testo)));
    }
    return chiavi;
}

/// Making the sort keys takes most of the time of filling a list, so two threads share it.
Chiavi FaiChiaviInDue(std::span<const RigaElenco> righe) {
    const QLocale lingua = LinguaElenco();
    const std::size_t meta = righe.size() / 2;
    std::future<Chiavi> altre = std::async(FaiChiavi, righe.subspan(meta), lingua);
    Chiavi chiavi = FaiChiavi(righe.first(meta), lingua);
    const Chiavi seconde = altre.get();
    chiavi.insert(chiavi.end(), seconde.begin(), seconde.end());
    return chiavi;
}

}  // namespace

std::vector<RigaElenco> ElencaPerLingua(const TabellaBrani& brani, Ordine ordine) {
    std::vector<RigaElenco> righe;
    righe.reserve(static_cast<std::size_t>(brani.NumBrani()));
    for (int i = 1; i <= brani.NumBrani(); ++i) {
        const auto posizione = static_cast<std::int16_t>(i);
        righe.push_back({RigaBrano(brani.Brani(posizione), ordine), posizione});
    }
    const Chiavi chiavi = FaiChiaviInDue(righe);
    std::vector<std::size_t> ordinate(righe.size());  // lighter to move than lines and keys
    std::iota(ordinate.begin(), ordinate.end(), std::size_t{0});
    std::stable_sort(ordinate.begin(), ordinate.end(),
                     [&chiavi](std::size_t a, std::size_t b) { return chiavi[a] < chiavi[b]; });
    std::vector<RigaElenco> elenco;
    elenco.reserve(righe.size());
    for (const std::size_t i : ordinate) {
        elenco.push_back(std::move(righe[i]));
    }
    return elenco;
}

}  // namespace sonnel
