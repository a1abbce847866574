#pragma once

#include "convert/Midifile.h"
#include "platform/Result.h"

#include <array>
#include <cstdint>

namespace sonnel {

inline constexpr std::int16_t MassimoTempi = 50;

/// The first tempos of a file, counted from 1: each in microseconds per quarter note, and the tick
/// at which it begins.
struct MappaTempi {
    std::array<std::int32_t, MassimoTempi + 1> TempiMidi{};
    std::array<std::int32_t, MassimoTempi + 1> TickTempi{};
    std::int16_t NumTempi = 0;
};

/// Reads the tempo map from the first track of the open file; a tempo that repeats the one before
/// it adds nothing. Fails when one is cut short or comes after more ticks than 32 bits count.
[[nodiscard]] Result<MappaTempi> LeggiTempi(Midifile& midifile);

/// Turns the ticks of a file's texts into tenths of a second. One tempo counts at a time, and for
/// all ticks since the start of the song.
class BaseTempi {
  public:
    /// Reads the tempo map and begins with its first tempo. Fails as LeggiTempi does, and when
    /// there is no tempo or it is 0.
    [[nodiscard]] static Result<BaseTempi> Leggi(Midifile& midifile);

    /// Opens the file that `midifile` names, and reads. Fails as both do.
    [[nodiscard]] static Result<BaseTempi> Apri(Midifile& midifile);

    /// Goes on to the current text of the file and returns its time in tenths of a second. The next
    /// tempo begins with the first text that has reached it, one tempo a text. Fails when that
    /// tempo is 0, when the file has 0 ticks to a quarter note, and on a time past 32 bits.
    [[nodiscard]] Result<std::int32_t> Avanza(const Midifile& midifile);

  private:
    explicit BaseTempi(const MappaTempi& mappa) : mappa_(mappa) {}
    [[nodiscard]] std::optional<Error> Calcola(const Midifile& midifile);

    MappaTempi mappa_;
    std::size_t posizione_ = 1;
    std::int64_t tick_ = 0;
    double tickPerDecimo_ = 0;
};

}  // namespace sonnel
