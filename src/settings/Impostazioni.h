#pragma once

#include "platform/Registry.h"
#include "settings/Config.h"

#include <string>
#include <string_view>

namespace sonnel {

/// The stored text of a setting, or `predefinito` when it is absent. Text comes without the NUL
/// characters some tools store at its end; a 32-bit number comes as its decimal text.
[[nodiscard]] std::string LeggiImpostazione(Registry& registro, std::string_view sezione,
                                            std::string_view chiave, std::string_view predefinito);

/// Stores the text of a setting. A failure is silent.
void SalvaImpostazione(Registry& registro, std::string_view sezione, std::string_view chiave,
                       std::string_view valore);

/// Reads the whole record, each absent or unusable setting as its default, and makes the karaoke
/// directory when it is missing (one level; failures are silent). `larghezzaSchermo` is in twips;
/// `openDirPredefinita` is the default karaoke directory.
[[nodiscard]] Config CaricaConfig(Registry& registro, int larghezzaSchermo,
                                  std::string_view openDirPredefinita);

}  // namespace sonnel
