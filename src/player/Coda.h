#pragma once

#include "platform/Result.h"
#include "song/FileBrano.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sonnel {

/// A place in the queue: a song and who sings it.
struct Turno {
    std::int64_t numero = 0;        ///< identifies the turn in the queue
    std::optional<int> tonalita{};  ///< semitones, -12 to 12; nothing: as remembered for the song
    std::string cantante{};
    std::string titolo{};
    std::string autore{};
    std::filesystem::path file{};  ///< the LYK file, or the MIDI file that is a song by itself

    bool operator==(const Turno&) const = default;
};

/// A turn with this song, its title and author read from its lyrics. A song without lyrics is an
/// error, with a sentence for the user.
[[nodiscard]] Result<Turno> TurnoDi(const FileBrano& brano);
/// Whether the song's file still exists.
[[nodiscard]] bool Presente(const Turno& turno);

/// A turn as a line of the queue's file, without the line end, and back. Nothing when the line is
/// not a turn.
[[nodiscard]] std::string RigaTurno(const Turno& turno);
[[nodiscard]] std::optional<Turno> TurnoDaRiga(std::string_view riga);

/// The queue of songs to be sung. It is kept in a file that other players may change too: each
/// change reads the file again and replaces it under a lock. A change that fails returns a sentence
/// for the user and leaves the queue as it was.
class Coda {
  public:
    /// Reads the file; a missing one is an empty queue.
    explicit Coda(std::filesystem::path file);

    [[nodiscard]] const std::vector<Turno>& Turni() const { return turni_; }
    /// Reads the file again: another player may have changed it.
    void Rileggi();

    /// Appends a turn and gives it a number. When `turno` is an error, returns that error.
    std::optional<Error> Aggiungi(Result<Turno> turno);
    /// Changes singer and key of the turn with this number.
    std::optional<Error> Cambia(std::int64_t numero, const std::string& cantante,
                                std::optional<int> tonalita);
    std::optional<Error> Togli(std::int64_t numero);
    /// Moves a turn by so many places; up when it is negative.
    std::optional<Error> Sposta(std::int64_t numero, int posti);

    /// Called when the turns have changed. Its owner must clear it before being destroyed.
    std::function<void()> onCambiata;

  private:
    using Modifica = std::function<void(std::vector<Turno>&)>;
    std::optional<Error> Leggi(std::vector<Turno>& turni) const;
    std::optional<Error> Scrivi(const Modifica& modifica);
    void Sostituisci(std::vector<Turno> turni);

    std::filesystem::path file_;
    std::vector<Turno> turni_;
};

}  // namespace sonnel
