#pragma once

#include "platform/Registry.h"

#include <string_view>

namespace sonnel {

/// What LeggiChiave returns for a value that is not there.
inline constexpr std::string_view ChiaveAssente = "#NULL#";

/// Creates a key; true on success.
bool CreaChiave(Registry& registro, RegistryRoot radice, std::string_view percorso);

/// Stores a value, and creates its key when it is missing. A failure is silent.
void ScriviChiave(Registry& registro, RegistryRoot radice, std::string_view percorso,
                  std::string_view nome, const RegistryValue& valore);

/// The value, or the text ChiaveAssente when it cannot be read.
[[nodiscard]] RegistryValue LeggiChiave(Registry& registro, RegistryRoot radice,
                                        std::string_view percorso, std::string_view nome);

}  // namespace sonnel
