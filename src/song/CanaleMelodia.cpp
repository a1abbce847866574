#include "song/CanaleMelodia.h"

#include "platform/midi/TempoMap.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace sonnel {
namespace {

constexpr std::size_t Percussioni = 9;  // the channel of the drums
constexpr std::size_t MinimoParole = 8;
constexpr std::int32_t Tolleranza = 90;  // ms: times of words are only exact to a tenth of a second
constexpr double MinimoAccordo = 0.7;

/// The notes of a channel.
struct Canale {
    std::vector<std::int32_t> inizi;  ///< ms
    int piuBassa = 127;
    int piuAlta = 0;
};

std::array<Canale, 16> LeggiCanali(const SmfFile& file) {
    std::array<Canale, 16> canali;
    const TempoMap tempi(file);
    for (const SmfTrack& traccia : file.tracks) {
        for (const SmfEvent& evento : traccia) {
            if ((evento.status & 0xF0U) == 0x90 && evento.data2 > 0) {
                Canale& canale = canali.at(evento.status & 0x0FU);
                canale.inizi.push_back(tempi.Milliseconds(evento.tick));
                canale.piuBassa = std::min<int>(canale.piuBassa, evento.data1);
                canale.piuAlta = std::max<int>(canale.piuAlta, evento.data1);
            }
        }
    }
    for (Canale& canale : canali) {
        std::sort(canale.inizi.begin(), canale.inizi.end());
    }
    return canali;
}

/// The times at which words are sung, in ms, each once.
std::vector<std::int32_t> TempiParole(const Timeline& timeline) {
    std::vector<std::int32_t> tempi;
    for (std::int16_t i = 1; i <= timeline.NumEventi(); ++i) {
        const Evento& evento = timeline.Eventi(i);
        if (evento.Tipo == TipoEvento::Colore) {
            tempi.push_back(100 * std::clamp(evento.Tempo, 0, 100'000));
        }
    }
    std::sort(tempi.begin(), tempi.end());
    tempi.erase(std::unique(tempi.begin(), tempi.end()), tempi.end());
    return tempi;
}

/// The share of the times in `questi` that are close to one of the others.
double Vicini(const std::vector<std::int32_t>& questi, const std::vector<std::int32_t>& altri) {
    const auto vicini = std::count_if(questi.begin(), questi.end(), [&](std::int32_t tempo) {
        const auto primo = std::lower_bound(altri.begin(), altri.end(), tempo - Tolleranza);
        return primo != altri.end() && *primo <= tempo + Tolleranza;
    });
    return questi.empty() ? 0 : static_cast<double>(vicini) / static_cast<double>(questi.size());
}

/// How well a channel's notes and the words match, 0 to 1. Chords lower it: a tune has one note at
/// a time.
double Accordo(const Canale& canale, const std::vector<std::int32_t>& parole) {
    std::vector<std::int32_t> inizi = canale.inizi;
    inizi.erase(std::unique(inizi.begin(), inizi.end()), inizi.end());
    if (inizi.empty()) {
        return 0;
    }
    const double insieme =
        static_cast<double>(inizi.size()) / static_cast<double>(canale.inizi.size());
    return std::min(Vicini(parole, inizi), Vicini(inizi, parole)) * insieme;
}

}  // namespace

std::optional<CanaleMelodia> TrovaMelodia(const SmfFile& file, const Timeline& timeline) {
    const std::vector<std::int32_t> parole = TempiParole(timeline);
    if (parole.size() < MinimoParole) {
        return std::nullopt;
    }
    const std::array<Canale, 16> canali = LeggiCanali(file);
    std::optional<CanaleMelodia> trovato;
    double migliore = MinimoAccordo;
    for (std::size_t i = 0; i < canali.size(); ++i) {
        const double accordo = i == Percussioni ? 0 : Accordo(canali.at(i), parole);
        if (accordo > migliore) {
            migliore = accordo;
            trovato = {static_cast<int>(i), canali.at(i).piuBassa, canali.at(i).piuAlta};
        }
    }
    return trovato;
}

}  // namespace sonnel
