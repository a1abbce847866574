#include "player/CarattereMassimo.h"

#include "player/ImpaginazioneParole.h"

#include <algorithm>
#include <string_view>

namespace sonnel {
namespace {

constexpr int MinimoCarattere = 8;
constexpr int MassimoCarattere = 1000;

int Righe(std::string_view pagina) {
    int righe = 1;
    for (std::size_t fine = pagina.find(FineRiga); fine != std::string_view::npos;
         fine = pagina.find(FineRiga, fine + FineRiga.size())) {
        ++righe;
    }
    return righe;
}

bool TutteEntrano(PictureBox& parole, const Timeline& timeline, int larghezza, int altezza) {
    for (std::int16_t i = 1; i <= timeline.NumEventi(); ++i) {
        const Evento& evento = timeline.Eventi(i);
        if (evento.Tipo == TipoEvento::Pagina &&
            (parole.Measure(evento.Testo).width > larghezza ||
             AltezzaRighe(parole, Righe(evento.Testo)) > altezza)) {
            return false;
        }
    }
    return true;
}

}  // namespace

void CarattereMassimo(PictureBox& parole, const Timeline& timeline, int larghezza, int altezza) {
    FontSpec font = parole.Font();
    int entra = MinimoCarattere;
    for (int troppo = MassimoCarattere; troppo - entra > 1;) {
        const int punti = (entra + troppo) / 2;
        font.size = punti;
        parole.SetFont(font);
        (TutteEntrano(parole, timeline, larghezza, altezza) ? entra : troppo) = punti;
    }
    font.size = entra;
    parole.SetFont(font);
}

}  // namespace sonnel
