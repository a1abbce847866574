#include "settings/basRegistry.h"

#include "settings/TestoNumero.h"

#include <optional>
#include <utility>

namespace sonnel {
namespace {

constexpr std::size_t ByteNumero = 4;

std::string ByteDelNumero(std::int32_t numero) {
    auto resto = static_cast<std::uint32_t>(numero);
    std::string byte;
    for (std::size_t i = 0; i < ByteNumero; ++i) {
        byte += static_cast<char>(resto & 0xFFU);
        resto >>= 8U;
    }
    return byte;
}

std::int32_t NumeroDeiByte(std::string_view byte) {
    std::uint32_t numero = 0;
    for (std::size_t i = ByteNumero; i > 0; --i) {
        numero = numero << 8U | static_cast<unsigned char>(byte[i - 1]);
    }
    return static_cast<std::int32_t>(numero);
}

std::string ComeTesto(const ValoreRegistro& valore) {
    const auto* const testo = std::get_if<std::string>(&valore);
    return testo != nullptr ? *testo : TestoNumero(std::get<std::int32_t>(valore));
}

std::optional<std::int32_t> ComeNumero(const ValoreRegistro& valore) {
    const auto* const testo = std::get_if<std::string>(&valore);
    return testo != nullptr ? Intero(*testo) : std::get<std::int32_t>(valore);
}

/// Stores a value under an open key; what does not convert to the type is not stored.
void ScriviValore(Registry& registro, RegistryKey chiave, std::string_view nome, RegistryType tipo,
                  const ValoreRegistro& valore) {
    if (tipo == RegistryType::String) {
        registro.SetValue(chiave, nome, tipo, ComeTesto(valore));
    } else if (const auto numero = ComeNumero(valore); numero && tipo == RegistryType::Number) {
        registro.SetValue(chiave, nome, tipo, ByteDelNumero(*numero));
    }
}

/// A value of an open key; nothing when it cannot be read or is neither a text nor a 32-bit number.
std::optional<ValoreRegistro> LeggiValore(Registry& registro, RegistryKey chiave,
                                          std::string_view nome) {
    RegistryType tipo{};
    std::string dati;
    if (registro.QueryValue(chiave, nome, tipo, dati) != 0) {
        return std::nullopt;
    }
    if (tipo == RegistryType::String) {
        return dati;
    }
    if (tipo == RegistryType::Number && dati.size() == ByteNumero) {
        return NumeroDeiByte(dati);
    }
    return std::nullopt;
}

}  // namespace

bool CreaChiave(Registry& registro, RegistryRoot radice, std::string_view percorso) {
    RegistryKey chiave = 0;
    if (registro.CreateKey(radice, percorso, chiave) != 0) {
        return false;
    }
    registro.CloseKey(chiave);
    return true;
}

void ScriviChiave(Registry& registro, RegistryRoot radice, std::string_view percorso,
                  std::string_view nome, const ValoreRegistro& valore, RegistryType tipo) {
    RegistryKey chiave = 0;
    if (registro.OpenKey(radice, percorso, chiave) != 0 &&
        (!CreaChiave(registro, radice, percorso) ||
         registro.OpenKey(radice, percorso, chiave) != 0)) {
        return;
    }
    ScriviValore(registro, chiave, nome, tipo, valore);
    registro.CloseKey(chiave);
}

ValoreRegistro LeggiChiave(Registry& registro, RegistryRoot radice, std::string_view percorso,
                           std::string_view nome) {
    std::optional<ValoreRegistro> valore;
    RegistryKey chiave = 0;
    if (registro.OpenKey(radice, percorso, chiave) == 0) {
        valore = LeggiValore(registro, chiave, nome);
        registro.CloseKey(chiave);
    }
    return valore ? *std::move(valore) : std::string(ChiaveAssente);
}

}  // namespace sonnel
