#pragma once

#include "platform/MsgBox.h"
#include "song/InformazioniBrano.h"
#include "song/Timeline.h"

#include <functional>
#include <string>
#include <string_view>

namespace sonnel {

/// The first characters of every LYK file.
inline constexpr std::string_view MagicoLyk = "Cantabelle1.0";

/// What the reader asks of the main window.
struct ComandiLettura {
    std::function<void()> disabilitaInfo;   ///< song information command and its button off
    std::function<void()> abilitaFunzioni;  ///< run on every way out
};

/// How reading the text of a song ended.
enum class EsitoLettura {
    Completa,
    NonCantabelle,  ///< the first line is another one; a message box has told so
    Incompleta,     ///< the rest of the text is missing, or there are more events than fit
};

/// Reads the text of a LYK file (UTF-8) into an empty timeline and empty song information; tells
/// about pages that are too long. `intero` false: the text breaks off somewhere and what is left of
/// its last line is not read.
[[nodiscard]] EsitoLettura LeggiRighe(std::string_view testo, bool intero, Timeline& timeline,
                                      InformazioniBrano& informazioni, MsgBox& msgBox);

/// Reads basePath + ".LYK" (any letter case) into the timeline and the song information. True only
/// when the whole file was read; otherwise a message box has told why, and the timeline keeps the
/// events read so far.
bool LeggiKaraoke(const std::string& basePath, Timeline& timeline, InformazioniBrano& informazioni,
                  MsgBox& msgBox, const ComandiLettura& comandi);

}  // namespace sonnel
