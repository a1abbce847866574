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

/// Reads basePath + ".LYK" (any letter case) into the timeline and the song information. True only
/// when the whole file was read; otherwise a message box has told why, and the timeline keeps the
/// events read so far.
bool LeggiKaraoke(const std::string& basePath, Timeline& timeline, InformazioniBrano& informazioni,
                  MsgBox& msgBox, const ComandiLettura& comandi);

}  // namespace sonnel
