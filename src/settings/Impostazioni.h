#pragma once

#include "platform/Environment.h"
#include "platform/Registry.h"
#include "settings/Config.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace sonnel {

/// The stored text of a setting without NUL characters at its end, or `predefinito` when it is
/// absent; a number comes as its decimal text.
[[nodiscard]] std::string LeggiImpostazione(Registry& registro, std::string_view sezione,
                                            std::string_view chiave, std::string_view predefinito);

/// A switch, read as a whole number: `predefinito` when it is absent or no number.
[[nodiscard]] bool LeggiInterruttore(Registry& registro, std::string_view sezione,
                                     std::string_view chiave, bool predefinito);

/// Stores the text of a setting. A failure is silent.
void SalvaImpostazione(Registry& registro, std::string_view sezione, std::string_view chiave,
                       std::string_view valore);

/// Takes a setting out of the store. A failure is silent.
void RimuoviImpostazione(Registry& registro, std::string_view sezione, std::string_view chiave);

/// Reads the whole record, each absent or unusable setting as its default, and makes the karaoke
/// directory when it is missing (one level; failures are silent). `larghezzaSchermo` is in twips;
/// `openDirPredefinita` is the default karaoke directory.
[[nodiscard]] Config CaricaConfig(Registry& registro, int larghezzaSchermo,
                                  std::string_view openDirPredefinita);

/// The karaoke directory when the settings name none: "Karaoke" beside the program where that
/// place can be written, else "sonnel/Karaoke" in the user's data directory. The latter also for an
/// installed program, whose place root can write. Ends in a separator and may not exist.
[[nodiscard]] std::filesystem::path DirectoryKaraoke(const std::filesystem::path& dirProgramma,
                                                     bool scrivibile, const Environment& ambiente);

}  // namespace sonnel
