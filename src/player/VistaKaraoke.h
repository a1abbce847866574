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
    /// Moves the slider without treating it as a move by the user.
    virtual void Cursore(std::int32_t secondi) = 0;
    virtual void Posizione(const std::string& testo) = 0;
    /// Shows the singer's changes beside the position; "" for none.
    virtual void Canto(const std::string& testo) = 0;
    /// Runs or stops the logo's animation.
    virtual void AnimaLogo(bool attiva) = 0;
    virtual void PrimaImmagineLogo() = 0;
    virtual void Comandi(const StatoComandi& stato) = 0;
    /// Called when the song has reached its end.
    virtual void BranoFinito() = 0;
    /// Disables a single command until the next call of Comandi.
    virtual void Disabilita(bool StatoComandi::*comando) = 0;
};

}  // namespace sonnel
