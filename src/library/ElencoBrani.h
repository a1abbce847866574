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

/// The line that shows a song. Its parts are ordered so that sorting whole lines gives the wanted
/// order.
[[nodiscard]] std::string RigaBrano(const Brano& brano, Ordine ordine);

/// A random line, counted from 0, of so many (at least one).
[[nodiscard]] std::size_t RigaCasuale(std::size_t righe, std::mt19937& caso);

}  // namespace sonnel
