#include "player/CarattereMassimo.h"

#include "player/ImpaginazioneParole.h"

namespace sonnel {
namespace {

constexpr int MinimoCarattere = 8;
constexpr int MassimoCarattere = 1000;

bool TutteEntrano(PictureBox& parole, const Timeline& timeline, int larghezza, int altezza) {
    for (std::int16_t i = 1; i <= timeline.NumEventi(); ++i) {
        const Evento& evento = timeline.Eventi(i);
        if (evento.Tipo != TipoEvento::Pagina) {
            continue;
        }
        const auto righe = static_cast<int>(RigheDiPagina(evento.Testo).size());
        if (parole.Measure(evento.Testo).width > larghezza ||
            AltezzaRighe(parole, righe) > altezza) {
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
