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
    /// With automatic sizing, sets the largest font size at which every line of the song fits the
    /// area, from 8 points up to 8 above the configured size. Warns once when 10 points or less are
    /// needed. On a full screen: the largest size at which every page fits the width and the
    /// height, without that limit and without a warning.
    void FontAutomatico();
    /// The same for a song that was fitted before; does not warn a second time.
    void RiadattaFont();
    /// The same without showing the warning; returns whether there was a reason for it.
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
    bool avvisato_ = false;  ///< the user was warned about the song fitted last
};

}  // namespace sonnel
