#pragma once

#include "platform/PictureBox.h"
#include "player/ImpaginazioneParole.h"
#include "settings/Config.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace sonnel {

/// The page that the lyrics area shows.
struct PaginaMostrata {
    std::string PaginaCorrente;        ///< lines joined by CR LF, no line break at its end
    std::array<std::string, 4> Righe;  ///< the first NumRighe count
    std::array<int, 4> RigaX{};        ///< left edge of each line, twips
    std::int16_t NumRighe = 4;         ///< before the first page: how many lines the area can hold
};

/// Draws pages of lyrics and colours their words. All coordinates are twips within the lyrics area.
class DisegnoParole {
  public:
    DisegnoParole(const Config& config, PictureBox& parole, const CorniceParole& cornice,
                  ImpaginazioneParole& impaginazione);

    /// Clears the area and draws a page (lines separated by CR LF, at most four), all unsung.
    void MostraPagina(std::string_view testo);
    /// Draws the first `n` characters of the page in a colour; each line break counts as two.
    void ColoraPagina(std::int32_t n, Colour colore);
    void Pulisci() { parole_.Clear(); }
    /// Fits the area to the current page; to be called after the window's size has changed.
    void Ridisponi() { impaginazione_.ResizeParole(pagina_.NumRighe); }

    [[nodiscard]] const PaginaMostrata& Pagina() const { return pagina_; }

  private:
    void DividiRighe(std::string_view testo);
    void ScriviTesto(int x, int y, Colour colore, std::string_view testo);
    void StampaTesto(int x, int y, Colour colore, std::string_view testo);

    const Config& config_;
    PictureBox& parole_;
    const CorniceParole& cornice_;
    ImpaginazioneParole& impaginazione_;
    PaginaMostrata pagina_;
};

}  // namespace sonnel
