#pragma once

#include "platform/Registry.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace sonnel {

/// A value of the settings store: a text or a 32-bit number.
using ValoreRegistro = std::variant<std::string, std::int32_t>;

/// What LeggiChiave returns for a value that is not there.
inline constexpr std::string_view ChiaveAssente = "#NULL#";

/// Creates a key; true on success.
bool CreaChiave(Registry& registro, RegistryRoot radice, std::string_view percorso);

/// Stores a value, creating its key when it is missing: as a string without a terminating NUL or as
/// a 32-bit number, to which a value of the other kind is converted. A failure is silent.
void ScriviChiave(Registry& registro, RegistryRoot radice, std::string_view percorso,
                  std::string_view nome, const ValoreRegistro& valore, RegistryType tipo);

/// The value, or the text ChiaveAssente when it cannot be read.
[[nodiscard]] ValoreRegistro LeggiChiave(Registry& registro, RegistryRoot radice,
                                         std::string_view percorso, std::string_view nome);

}  // namespace sonnel
