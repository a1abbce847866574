#pragma once

#include "platform/MsgBox.h"
#include "song/FileBrano.h"
#include "song/InformazioniBrano.h"
#include "song/Timeline.h"

#include <string>
#include <string_view>

namespace sonnel {

/// The first characters of every LYK file.
inline constexpr std::string_view MagicoLyk = "Cantabelle1.0";

/// The first line of the LYK files that the player makes, with its line end.
[[nodiscard]] std::string PrimaRigaLyk();

/// What separates the lines of a page in a LYK file.
inline constexpr std::string_view SeparatoreRighe = "$E";

/// The outcome of reading a song's text.
enum class EsitoLettura {
    Completa,
    NonCantabelle,  ///< the first line is not that of a LYK file; a message box reports it
    Incompleta,     ///< the rest of the text is missing, or there are more events than fit
};

/// Reads the text of a LYK file (UTF-8) into an empty timeline and empty song information; reports
/// pages that are too long. `intero` false: the text was cut off, so its incomplete last line is
/// not read.
[[nodiscard]] EsitoLettura LeggiRighe(std::string_view testo, bool intero, Timeline& timeline,
                                      InformazioniBrano& informazioni, MsgBox& msgBox);

/// Reads a song's LYK file, or the words of its MIDI file, into the timeline and the song
/// information, which are emptied first. Returns whether all of it was read. If not, a message box
/// shows the reason and the timeline keeps the events read until then.
bool LeggiKaraoke(const FileBrano& brano, Timeline& timeline, InformazioniBrano& informazioni,
                  MsgBox& msgBox);

}  // namespace sonnel
