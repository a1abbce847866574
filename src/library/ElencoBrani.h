#pragma once

#include "library/Brani.h"

#include <cstddef>
#include <random>
#include <string>
#include <string_view>

namespace sonnel {

/// The orders of the selection list, numbered as its sort commands are.
enum class Ordine { Titolo, Autore, Album };

/// An album as windows show it: "<None>" for the generic one.
[[nodiscard]] std::string_view AlbumMostrato(std::string_view album);

/// The line that shows a song. The order of its parts makes the order of whole lines the one asked
/// for.
[[nodiscard]] std::string RigaBrano(const Brano& brano, Ordine ordine);

/// One of so many lines (at least one), counted from 0, each as likely as the others.
[[nodiscard]] std::size_t RigaCasuale(std::size_t righe, std::mt19937& caso);

}  // namespace sonnel
