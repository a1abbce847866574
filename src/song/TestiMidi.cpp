#include "song/TestiMidi.h"

#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <set>
#include <utility>

namespace sonnel {
namespace {

constexpr std::string_view Segni = "\\/";
constexpr std::string_view SenzaParola{"\\/\r\n -\0", 7};
constexpr std::ptrdiff_t MinimoSegni = 2;
constexpr std::size_t MinimoTempi = 20;

bool HaSegno(const TestoMidi& testo) {
    return !testo.byte.empty() && Segni.find(testo.byte.front()) != std::string_view::npos;
}

bool HaParola(const TestoMidi& testo) {
    return ContieneParola(testo.byte);
}

/// The texts of one type in one track, without the fields and remarks among them.
std::vector<TestoMidi> Testi(const SmfFile& file, const SmfTrack& traccia, std::uint8_t tipo) {
    std::vector<TestoMidi> testi;
    for (const SmfEvent& evento : traccia) {
        const std::string_view byte = evento.IsMeta(tipo) ? file.Data(evento) : "";
        if (!byte.empty() && byte.front() != '@' && byte.front() != '%') {
            testi.push_back({evento.tick, byte});
        }
    }
    return testi;
}

bool Segnata(const std::vector<TestoMidi>& testi) {
    return std::count_if(testi.begin(), testi.end(), HaSegno) >= MinimoSegni;
}

/// Drops titles and the like: several texts at the start of an unmarked track.
void TogliTitoli(std::vector<TestoMidi>& testi) {
    const auto fine = std::find_if(testi.begin(), testi.end(),
                                   [](const TestoMidi& testo) { return testo.tick > 0; });
    if (fine - testi.begin() > 1) {
        testi.erase(testi.begin(), fine);
    }
}

bool MoltiTempi(const std::vector<TestoMidi>& testi) {
    std::set<std::uint64_t> tempi;
    for (const TestoMidi& testo : testi) {
        if (HaParola(testo)) {
            tempi.insert(testo.tick);
        }
    }
    return tempi.size() >= MinimoTempi;
}

/// The best track of each of four kinds, the best kind first.
class Scelta {
  public:
    void Esamina(std::vector<TestoMidi> testi, GenereParole genere) {
        if (Segnata(testi)) {
            if (genere == GenereParole::Testi) {
                testi.erase(testi.begin(), std::find_if(testi.begin(), testi.end(), HaSegno));
            }
            Proponi(genere == GenereParole::Testi ? 0 : 1, std::move(testi), genere);
        } else if (genere == GenereParole::Versi) {
            Proponi(2, std::move(testi), genere);
        } else {
            TogliTitoli(testi);
            if (MoltiTempi(testi)) {
                Proponi(3, std::move(testi), genere);
            }
        }
    }

    [[nodiscard]] TracciaParole Migliore() && {
        const auto primo = std::find_if(proposte_.begin(), proposte_.end(),
                                        [](const Proposta& p) { return p.parole > 0; });
        return primo == proposte_.end() ? TracciaParole{} : std::move(primo->traccia);
    }

  private:
    struct Proposta {
        std::ptrdiff_t parole = 0;
        TracciaParole traccia;
    };

    void Proponi(std::size_t posto, std::vector<TestoMidi> testi, GenereParole genere) {
        const auto parole = std::count_if(testi.begin(), testi.end(), HaParola);
        if (parole > proposte_.at(posto).parole) {
            proposte_.at(posto) = {parole, {genere, std::move(testi)}};
        }
    }

    std::array<Proposta, 4> proposte_;
};

/// Calls `fai` with each text and lyric of a file.
template <class Fai>
void PerOgniTesto(const SmfFile& file, Fai fai) {
    for (const SmfTrack& traccia : file.tracks) {
        for (const SmfEvent& evento : traccia) {
            if (evento.IsMeta(kMetaText) || evento.IsMeta(kMetaLyric)) {
                fai(file.Data(evento));
            }
        }
    }
}

}  // namespace

bool ContieneParola(std::string_view byte) {
    return byte.find_first_not_of(SenzaParola) != std::string_view::npos;
}

TracciaParole TrovaParole(const SmfFile& file) {
    Scelta scelta;
    for (const SmfTrack& traccia : file.tracks) {
        scelta.Esamina(Testi(file, traccia, kMetaText), GenereParole::Testi);
        scelta.Esamina(Testi(file, traccia, kMetaLyric), GenereParole::Versi);
    }
    return std::move(scelta).Migliore();
}

std::vector<std::string_view> CampiMidi(const SmfFile& file, char lettera) {
    std::vector<std::string_view> campi;
    PerOgniTesto(file, [&](std::string_view byte) {
        if (byte.size() > 2 && byte[0] == '@' && byte[1] == lettera) {
            campi.push_back(byte.substr(2));
        }
    });
    return campi;
}

bool TestiUtf8(const SmfFile& file) {
    std::string tutti;
    PerOgniTesto(file, [&](std::string_view byte) { tutti += byte; });
    return IsValidUtf8(tutti);
}

}  // namespace sonnel
