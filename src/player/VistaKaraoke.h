#pragma once

#include "player/AbilitaFunzioni.h"

#include <cstdint>
#include <string>

namespace sonnel {

/// What playback shows in the main window beside the lyrics.
class VistaKaraoke {
  public:
    virtual ~VistaKaraoke() = default;
    virtual void Titolo(const std::string& titolo) = 0;
    /// Range of the position slider, 0 to `secondi`, and the length text.
    virtual void Durata(std::int32_t secondi, const std::string& testo) = 0;
    /// Moves the slider; this is no move by the user.
    virtual void Cursore(std::int32_t secondi) = 0;
    virtual void Posizione(const std::string& testo) = 0;
    /// What of the song is not its own, beside the position; "" when all is.
    virtual void Canto(const std::string& testo) = 0;
    /// Runs or stops the logo's animation.
    virtual void AnimaLogo(bool attiva) = 0;
    virtual void PrimaImmagineLogo() = 0;
    virtual void Comandi(const StatoComandi& stato) = 0;
    /// The song has ended by itself.
    virtual void BranoFinito() = 0;
    /// Puts a single command out of use until the next Comandi.
    virtual void Disabilita(bool StatoComandi::*comando) = 0;
};

}  // namespace sonnel
