#pragma once

#include "platform/Clock.h"
#include "platform/MsgBox.h"
#include "platform/PictureBox.h"
#include "platform/Registry.h"
#include "platform/SystemEvents.h"
#include "player/DisegnoParole.h"
#include "player/ImpaginazioneParole.h"
#include "settings/Config.h"

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace sonnel {

/// The compensation, in tenths of a second, for a machine that took so many seconds to draw the ten
/// pages of the test.
[[nodiscard]] std::int32_t CompensazioneDa(float secondi);

/// Seconds with at most one decimal, as in 12.3, .5 and 3. (a whole number keeps its point).
[[nodiscard]] std::string TestoSecondi(float secondi);

/// The message about a test that took so many seconds.
struct GiudizioCalibratura {
    bool beep = false;
    std::vector<Message> messaggi;
};
[[nodiscard]] GiudizioCalibratura Giudica(float secondi);

/// The test that measures how long this machine takes to draw pages, and sets the compensation.
class Calibratura {
  public:
    /// All of it must outlive the test.
    struct Parti {
        Config& config;
        PictureBox& parole;
        DisegnoParole& disegno;
        ImpaginazioneParole& impaginazione;
        Registry& registro;
        MsgBox& msgBox;
        SystemEvents& eventi;
        const Clock& orologio;
        std::function<void()> risincronizza;  ///< shows what belongs to the song's position
    };

    explicit Calibratura(Parti parti) : p_(std::move(parti)) {}

    /// Asks, measures, stores the compensation and reports the result. Leaves the lyrics area clear
    /// and in the configured font; false when the user declines, and nothing but the area's height
    /// has changed.
    bool EseguiCalibratura();

  private:
    [[nodiscard]] bool Chiedi();
    [[nodiscard]] float Misura();
    void Riferisci(float secondi);
    void Disponi();

    Parti p_;
};

}  // namespace sonnel
