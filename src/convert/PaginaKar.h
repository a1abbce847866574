#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace sonnel {

/// An entry of a page: its text (Tipo 1) or a word mark (Tipo 2), whose text is the number of
/// characters sung when the word is.
struct EventoPagina {
    std::int32_t Istante = 0;  ///< tenths of a second
    std::int16_t Tipo = 0;
    std::string Testo;
};

/// The page that is being put together from a song's words: up to 256 entries, of which the first
/// is the page's text.
class PaginaKar {
  public:
    /// The entries there are; 0 when no page was begun.
    [[nodiscard]] std::int16_t NumVoci() const { return static_cast<std::int16_t>(numVoci_); }
    /// The lines written so far, each an event of the song.
    [[nodiscard]] int NumEventi() const { return eventi_; }

    /// Begins a page with its first word, sung at `istante`. The page before, if any, is written to
    /// `uscita` first.
    void Inizia(std::int32_t istante, std::string_view parola, std::string& uscita);
    /// Appends a word to the page that was begun. False when there is no room for its mark: the
    /// text is there, but never counts as sung.
    bool Aggiungi(std::int32_t istante, std::string_view parola);
    /// Writes the page's lines to `uscita`, with a blank page before it after a long pause, and
    /// empties it. A page is shown 2.0 s before its first word or, where there is no room for that,
    /// right after the last word of the page before.
    void ElaboraPagina(std::string& uscita);

  private:
    void Segna(std::int32_t istante);
    void ScriviRiga(const EventoPagina& voce, std::string& uscita);

    std::array<EventoPagina, 256> pagina_;
    int eventi_ = 0;
    std::size_t numVoci_ = 0;
    std::size_t caratteri_ = 0;         ///< of the page's text
    std::int32_t ultimaParola_ = 0;     ///< when the last word with a mark is sung
    std::int32_t finePrecedente_ = -1;  ///< the same of the page before
};

}  // namespace sonnel
