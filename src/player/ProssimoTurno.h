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
    int secondi = 0;                    ///< until it begins; 0 when it waits for the user

    bool operator==(const Annuncio&) const = default;
};

/// The announcement of the first turns whose songs are there; nothing when there is none.
[[nodiscard]] std::optional<Annuncio> AnnunciaTurni(const std::vector<Turno>& turni, int secondi);

/// When a song has ended by itself: announces the next turn of the queue and, if the user wants so,
/// has it begin some seconds later. Any command to the sequencer ends the announcement.
class ProssimoTurno {
  public:
    static constexpr int MassimoSecondi = 120;

    /// What it uses; all of it outlives it.
    struct Parti {
        Coda& coda;
        Registry& registro;
        const MMControl& sequencer;
        Timer& timer;
        std::function<bool()> ferma;                 ///< the seconds stand still just now
        std::function<void()> cambiato;              ///< the announcement has changed
        std::function<void(const Turno&)> comincia;  ///< the time has come
    };
    explicit ProssimoTurno(Parti parti);
    ~ProssimoTurno() { p_.timer.Stop(); }
    ProssimoTurno(const ProssimoTurno&) = delete;
    ProssimoTurno& operator=(const ProssimoTurno&) = delete;

    void BranoFinito();
    /// Ends the announcement; nothing begins by itself.
    void Termina();
    /// The announcement that is to be seen now.
    [[nodiscard]] const std::optional<Annuncio>& Corrente() const { return annuncio_; }

    /// Whether songs begin by themselves, and how many seconds after the one before: 1 to
    /// MassimoSecondi. Remembered.
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
    int passi_ = 0;              ///< since a whole second
    int resta_ = 0;              ///< ms
    std::uint64_t comandi_ = 0;  ///< of the sequencer when the song ended
    std::optional<Annuncio> annuncio_;
};

}  // namespace sonnel
