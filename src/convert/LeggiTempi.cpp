#include "convert/LeggiTempi.h"

#include "platform/Numbers.h"

#include <limits>

namespace sonnel {
namespace {

constexpr auto MassimoTick = std::numeric_limits<std::int32_t>::max();

/// Adds the current set-tempo event to the map.
std::optional<Error> AggiungiTempo(const Midifile& midifile, MappaTempi& mappa) {
    const auto ultimo = static_cast<std::size_t>(mappa.NumTempi);
    const Result<std::int32_t> tempo = midifile.Tempo();
    if (!tempo) {
        return tempo.error();
    }
    if (ultimo > 0 && *tempo == mappa.TempiMidi.at(ultimo)) {
        return std::nullopt;
    }
    const std::int64_t tick = mappa.TickTempi.at(ultimo) + midifile.DeltaTime();
    if (tick > MassimoTick) {
        return midifile.Failure(ErroreKar::TempoTroppoGrande, "one of its tempos comes too late");
    }
    ++mappa.NumTempi;
    mappa.TempiMidi.at(ultimo + 1) = *tempo;
    mappa.TickTempi.at(ultimo + 1) = static_cast<std::int32_t>(tick);
    return std::nullopt;
}

}  // namespace

Result<MappaTempi> LeggiTempi(Midifile& midifile) {
    MappaTempi mappa;
    midifile.SetTrack(1);
    const int eventi = midifile.NumEvents();
    for (int i = 1; i <= eventi && mappa.NumTempi < MassimoTempi; ++i) {
        midifile.SetEvent(i);
        if (midifile.Status() == kMeta && midifile.MetaType() == kMetaTempo) {
            if (const auto errore = AggiungiTempo(midifile, mappa)) {
                return *errore;
            }
        }
    }
    return mappa;
}

Result<BaseTempi> BaseTempi::Leggi(Midifile& midifile) {
    const Result<MappaTempi> mappa = LeggiTempi(midifile);
    if (!mappa) {
        return mappa.error();
    }
    if (mappa->NumTempi == 0) {
        return midifile.Failure(ErroreKar::NessunTempo, "its first track sets no tempo");
    }
    BaseTempi base(*mappa);
    if (const auto errore = base.Calcola(midifile)) {
        return *errore;
    }
    return base;
}

Result<BaseTempi> BaseTempi::Apri(Midifile& midifile) {
    if (auto errore = midifile.SetAction(MidifileAction::Open)) {
        return *errore;
    }
    return Leggi(midifile);
}

std::optional<Error> BaseTempi::Calcola(const Midifile& midifile) {
    const std::int32_t tempo = mappa_.TempiMidi.at(posizione_);
    if (tempo == 0) {
        return midifile.Failure(ErroreKar::TempoNullo, "one of its tempos is 0");
    }
    const auto battiti = RoundHalfEven<std::int32_t>(60'000'000.0 / tempo);
    tickPerDecimo_ = battiti / 60.0 * midifile.TimeDivision() / 10;
    return std::nullopt;
}

Result<std::int32_t> BaseTempi::Avanza(const Midifile& midifile) {
    tick_ += midifile.DeltaTime();
    const std::size_t prossima = posizione_ + 1;
    if (posizione_ < static_cast<std::size_t>(mappa_.NumTempi) &&
        tick_ >= mappa_.TickTempi.at(prossima)) {
        posizione_ = prossima;
        if (const auto errore = Calcola(midifile)) {
            return *errore;
        }
    }
    if (tickPerDecimo_ == 0) {
        return midifile.Failure(ErroreKar::DivisioneNulla, "it has 0 ticks to a quarter note");
    }
    const double istante = static_cast<double>(tick_) / tickPerDecimo_;
    if (tick_ > MassimoTick || istante > std::numeric_limits<std::int32_t>::max()) {
        return midifile.Failure(ErroreKar::TempoTroppoGrande, "one of its texts comes too late");
    }
    return RoundHalfEven<std::int32_t>(istante);
}

}  // namespace sonnel
