#pragma once

#include "platform/Registry.h"
#include "platform/Timer.h"
#include "platform/midi/MMControl.h"
#include "player/Coda.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace sonnel {

/// What is announced between two songs.
struct Annuncio {
    Turno turno;                        ///< the next one
    std::vector<std::string> seguenti;  ///< two lines at most: the turns after it
    int secondi = 0;                    ///< until it starts; 0: it waits for the user

    bool operator==(const Annuncio&) const = default;
};

/// Announces the first turns whose files exist; nothing when there are none.
[[nodiscard]] std::optional<Annuncio> AnnunciaTurni(const std::vector<Turno>& turni, int secondi);

/// When a song has ended by itself: announces the next turn of the queue and, if the user wants so,
/// starts it some seconds later. Any command to the sequencer ends the announcement.
class ProssimoTurno {
  public:
    static constexpr int MassimoSecondi = 120;

    /// All of it must outlive this object.
    struct Parti {
        Coda& coda;
        Registry& registro;
        const MMControl& sequencer;
        Timer& timer;
        std::function<bool()> ferma;                 ///< whether the countdown is on hold
        std::function<void()> cambiato;              ///< called when the announcement has changed
        std::function<void(const Turno&)> comincia;  ///< starts the turn when the countdown ends
    };
    explicit ProssimoTurno(Parti parti);
    ~ProssimoTurno() { p_.timer.Stop(); }
    ProssimoTurno(const ProssimoTurno&) = delete;
    ProssimoTurno& operator=(const ProssimoTurno&) = delete;

    void BranoFinito();
    /// Ends the announcement; the turn does not start.
    void Termina();
    /// The announcement to show now.
    [[nodiscard]] const std::optional<Annuncio>& Corrente() const { return annuncio_; }

    /// Whether turns start automatically, and after how many seconds (1 to MassimoSecondi). Both
    /// are stored.
    [[nodiscard]] bool Automatico() const { return automatico_; }
    void CambiaAutomatico(bool automatico);
    [[nodiscard]] int Secondi() const { return secondi_; }
    void CambiaSecondi(int secondi);

  private:
    void Passo();
    void Annuncia();

    Parti p_;
    bool automatico_;
    int secondi_;
    int passi_ = 0;              ///< timer steps since the last whole second
    int resta_ = 0;              ///< ms
    std::uint64_t comandi_ = 0;  ///< the sequencer's count of commands when the song ended
    std::optional<Annuncio> annuncio_;
};

}  // namespace sonnel
