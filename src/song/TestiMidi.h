#pragma once

#include "platform/midi/SmfReader.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace sonnel {

/// A text of a MIDI file, not decoded.
struct TestoMidi {
    std::uint64_t tick = 0;
    std::string_view byte;  ///< into the file
};

/// Which events of a MIDI file are a song's words.
enum class GenereParole { Nessuno, Testi, Versi };

/// The events that hold a song's words, blanks and marks among them.
struct TracciaParole {
    GenereParole genere = GenereParole::Nessuno;
    std::vector<TestoMidi> testi;
};

/// Whether a text holds a word, not only marks, blanks and hyphens.
[[nodiscard]] bool ContieneParola(std::string_view byte);

/// Chooses the track with the words of a song. Marked texts come first, then marked lyrics, other
/// lyrics, many unmarked texts; among equals the track with the most words.
[[nodiscard]] TracciaParole TrovaParole(const SmfFile& file);

/// The texts and lyrics that begin with '@' and a letter, without both, in file order.
[[nodiscard]] std::vector<std::string_view> CampiMidi(const SmfFile& file, char lettera);

/// Whether the texts and lyrics of a file are UTF-8; otherwise they are Windows-1252.
[[nodiscard]] bool TestiUtf8(const SmfFile& file);

}  // namespace sonnel
