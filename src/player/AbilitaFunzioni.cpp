#include "player/AbilitaFunzioni.h"

namespace sonnel {

StatoComandi AbilitaFunzioni(MciMode modo, std::string_view nomeFile, std::int32_t posizione) {
    const bool suona = IsPlaying(modo);
    const bool caricato = !nomeFile.empty();
    StatoComandi stato;
    stato.FileLoad = !suona;
    stato.VisCalibratura = !suona;
    stato.SoundPlay = caricato && !suona;
    stato.SoundPause = suona;
    stato.SoundStop = caricato && posizione != 0;
    stato.VisInfo = caricato && !suona;
    stato.BottoneOpzioni = !suona;
    stato.Cursore = caricato && !suona;
    stato.TimerCursore = suona;
    return stato;
}

}  // namespace sonnel
