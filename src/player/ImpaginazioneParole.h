#pragma once

#include "platform/MsgBox.h"
#include "platform/PictureBox.h"
#include "player/CorniceParole.h"
#include "settings/Config.h"
#include "song/Timeline.h"

#include <cstdint>

namespace sonnel {

/// The height of so many lines of lyrics in the font that is set, in twips.
[[nodiscard]] double AltezzaRighe(PictureBox& parole, int righe);

/// Font, colours, size and place of the lyrics area.
class ImpaginazioneParole {
  public:
    ImpaginazioneParole(const Config& config, const Timeline& timeline, PictureBox& parole,
                        CorniceParole& cornice, MsgBox& msgBox);

    /// Gives the lyrics area and the window the colours and the font of the settings. With
    /// automatic sizing the font keeps its size.
    void ApplicaConfig();
    /// With automatic sizing: the largest font size, at most 8 points above the configured one, at
    /// which the widest line of every page fits the area; not below 8 points. Warns once when a
    /// page takes 10 points or less. On a full screen: the largest size at which every page fits
    /// the width and the height, without that limit and without a warning.
    void FontAutomatico();
    /// The same again for a song that was fitted already: after a warning it gives none.
    void RiadattaFont();
    /// The same without the warning: true when it would be due.
    [[nodiscard]] bool AdattaFont();
    /// Makes the area high enough for `righe` lines (at least 1, which is written back) and centres
    /// it below the toolbar.
    void ResizeParole(std::int16_t& righe);

  private:
    void RiduciFont(const Evento& pagina);

    const Config& config_;
    const Timeline& timeline_;
    PictureBox& parole_;
    CorniceParole& cornice_;
    MsgBox& msgBox_;
    bool avvisato_ = false;  ///< about the song that was fitted last
};

}  // namespace sonnel
