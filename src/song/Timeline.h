#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace sonnel {

/// What separates the lines of a page.
inline constexpr std::string_view FineRiga = "\r\n";

enum class TipoEvento : std::int16_t { Marcatore = 0, Pagina = 1, Colore = 2 };

/// One timed event of a song's lyrics.
struct Evento {
    std::int32_t Tempo = 0;  ///< tenths of a second since the song's start
    TipoEvento Tipo = TipoEvento::Marcatore;
    std::string Testo;  ///< page: lines joined by CR LF; colour: count of characters; marker: free
};

/// The lyrics of the loaded song: its events in file order, counted from 1, and how far the display
/// shows them.
class Timeline {
  public:
    static constexpr std::int16_t Capienza = 32750;  ///< as many events as a song may hold

    Timeline();

    /// Appends an event; false when the song already holds as many as fit.
    [[nodiscard]] bool InserisciEvento(std::int32_t tempo, TipoEvento tipo, std::string testo);
    /// Removes all events but keeps the memory.
    void Azzera();

    [[nodiscard]] std::int16_t NumEventi() const { return numEventi_; }
    [[nodiscard]] std::int16_t MaxEventi() const;
    /// Event `indice`, 1 to NumEventi.
    [[nodiscard]] const Evento& Eventi(std::int16_t indice) const;
    [[nodiscard]] Evento& Eventi(std::int16_t indice);

    /// The last event that the display shows; 0 for none.
    std::int16_t UltimoEvento = 0;

  private:
    std::vector<Evento> eventi_;
    std::int16_t numEventi_ = 0;
};

/// A page without the empty lines at its end.
[[nodiscard]] std::string_view SenzaFineRighe(std::string_view testo);
/// The lines of a page, without empty ones at its end.
[[nodiscard]] std::vector<std::string> RigheDiPagina(std::string_view testo);

}  // namespace sonnel
