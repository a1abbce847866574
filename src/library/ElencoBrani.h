#pragma once

#include "library/Brani.h"
#include "ui/CercaRighe.h"

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace sonnel {

/// The orders of the selection list, numbered as its sort commands are.
enum class Ordine { Titolo, Autore, Album };

/// An album as windows show it: "<None>" for the generic one.
[[nodiscard]] std::string_view AlbumMostrato(std::string_view album);

/// The line that shows a song. The order of its parts makes the order of whole lines the one asked
/// for.
[[nodiscard]] std::string RigaBrano(const Brano& brano, Ordine ordine);

/// The lines of all songs, ascending by the key that `faiChiave` makes of a line's text; lines with
/// equal keys keep the order of the table. Each key is made once.
template <typename FaiChiave>
[[nodiscard]] std::vector<RigaElenco> ElencaBrani(const TabellaBrani& brani, Ordine ordine,
                                                  const FaiChiave& faiChiave) {
    using Chiave = std::invoke_result_t<const FaiChiave&, const std::string&>;
    std::vector<std::pair<Chiave, RigaElenco>> voci;
    voci.reserve(static_cast<std::size_t>(brani.NumBrani()));
    for (int i = 1; i <= brani.NumBrani(); ++i) {
        const auto posizione = static_cast<std::int16_t>(i);
        RigaElenco riga{RigaBrano(brani.Brani(posizione), ordine), posizione};
        Chiave chiave = faiChiave(riga.testo);
        voci.emplace_back(std::move(chiave), std::move(riga));
    }
    std::stable_sort(voci.begin(), voci.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<RigaElenco> righe;
    righe.reserve(voci.size());
    for (auto& [chiave, riga] : voci) {
        righe.push_back(std::move(riga));
    }
    return righe;
}

/// One of so many lines (at least one), counted from 0, each as likely as the others.
[[nodiscard]] std::size_t RigaCasuale(std::size_t righe, std::mt19937& caso);

}  // namespace sonnel
