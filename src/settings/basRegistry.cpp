#include "settings/basRegistry.h"

#include "settings/TestoNumero.h"

#include <optional>

namespace sonnel {
namespace {

constexpr int NonTrattato = -1;
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

}  // namespace

bool CreaChiave(Registro& registro, RegistryRoot radice, std::string_view percorso) {
    RegistryKey chiave = 0;
    if (registro.CreateKey(radice, percorso, chiave) != 0) {
        return false;
    }
    registro.CloseKey(chiave);
    return true;
}

void ScriviChiave(Registro& registro, RegistryRoot radice, std::string_view percorso,
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

ValoreRegistro LeggiChiave(Registro& registro, RegistryRoot radice, std::string_view percorso,
                           std::string_view nome) {
    ValoreRegistro valore{std::string(ChiaveAssente)};
    RegistryKey chiave = 0;
    if (registro.OpenKey(radice, percorso, chiave) != 0) {
        return valore;
    }
    const int stato = LeggiValore(registro, chiave, nome, valore);
    registro.CloseKey(chiave);
    return stato == 0 ? valore : ValoreRegistro{std::string(ChiaveAssente)};
}

int ScriviValore(Registro& registro, RegistryKey chiave, std::string_view nome, RegistryType tipo,
                 const ValoreRegistro& valore) {
    if (tipo == RegistryType::String) {
        return registro.SetValue(chiave, nome, tipo, ComeTesto(valore));
    }
    const std::optional<std::int32_t> numero = ComeNumero(valore);
    if (tipo != RegistryType::Number || !numero) {
        return NonTrattato;
    }
    return registro.SetValue(chiave, nome, tipo, ByteDelNumero(*numero));
}

int LeggiValore(Registro& registro, RegistryKey chiave, std::string_view nome,
                ValoreRegistro& valore) {
    RegistryType tipo{};
    std::string dati;
    if (const int stato = registro.QueryValue(chiave, nome, tipo, dati); stato != 0) {
        return stato;
    }
    if (tipo == RegistryType::String) {
        valore = std::move(dati);
        return 0;
    }
    if (tipo == RegistryType::Number && dati.size() == ByteNumero) {
        valore = NumeroDeiByte(dati);
        return 0;
    }
    return NonTrattato;
}

}  // namespace sonnel
