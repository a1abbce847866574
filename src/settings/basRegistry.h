#pragma once

#include "platform/Registro.h"

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
bool CreaChiave(Registro& registro, RegistryRoot radice, std::string_view percorso);

/// Stores a value, creating its key when it is missing. A failure is silent.
void ScriviChiave(Registro& registro, RegistryRoot radice, std::string_view percorso,
                  std::string_view nome, const ValoreRegistro& valore, RegistryType tipo);

/// The value, or the text ChiaveAssente when it cannot be read.
[[nodiscard]] ValoreRegistro LeggiChiave(Registro& registro, RegistryRoot radice,
                                         std::string_view percorso, std::string_view nome);

/// Stores a value under an open key, as a string without a terminating NUL or as a 32-bit number;
/// a value of the other kind is converted. Returns the store's status, or -1 for another type or a
/// text that is no number: nothing is written then.
int ScriviValore(Registro& registro, RegistryKey chiave, std::string_view nome, RegistryType tipo,
                 const ValoreRegistro& valore);

/// Reads a value of an open key. Returns the store's status, or -1 for a value that is neither a
/// string nor a 32-bit number: `valore` stays as it was then.
int LeggiValore(Registro& registro, RegistryKey chiave, std::string_view nome,
                ValoreRegistro& valore);

}  // namespace sonnel
