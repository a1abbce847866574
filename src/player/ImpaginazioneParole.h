#pragma once

#include "platform/MsgBox.h"
#include "platform/PictureBox.h"
#include "player/CorniceParole.h"
#include "settings/Config.h"
#include "song/Timeline.h"

#include <cstdint>

namespace sonnel {

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
    /// page takes 10 points or less.
    void FontAutomatico();
    /// The same again for a song that was fitted already: after a warning it gives none.
    void RiadattaFont();
    /// The same without the warning: true when it would be due.
    [[nodiscard]] bool AdattaFont();
    /// On a full screen, automatic sizing takes the largest size at which every page fits the width
    /// and the height, without a limit and without a warning.
    void SchermoIntero(bool intero) { intero_ = intero; }
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
    bool intero_ = false;
    bool avvisato_ = false;  ///< about the song that was fitted last
};

}  // namespace sonnel
