#include "settings/TestoNumero.h"

#include "platform/Numbers.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace sonnel {
namespace {

std::optional<double> Numero(std::string_view testo) {
    constexpr std::string_view Bianchi = " \t";
    const std::size_t inizio = testo.find_first_not_of(Bianchi);
    if (inizio == std::string_view::npos) {
        return std::nullopt;
    }
    testo = testo.substr(inizio, testo.find_last_not_of(Bianchi) + 1 - inizio);
    if (testo.starts_with('+') && !testo.starts_with("+-")) {
        testo.remove_prefix(1);
    }
    double numero = 0;
    const char* const fine = testo.data() + testo.size();
    const auto [letto, errore] = std::from_chars(testo.data(), fine, numero);
    if (errore != std::errc{} || letto != fine || !std::isfinite(numero)) {
        return std::nullopt;
    }
    return numero;
}

template <class T>
std::optional<T> InteroNelTipo(std::string_view testo) {
    const std::optional<double> numero = Numero(testo);
    if (!numero) {
        return std::nullopt;
    }
    const auto intero = RoundHalfEven<std::int64_t>(*numero);
    if (intero < std::numeric_limits<T>::min() || intero > std::numeric_limits<T>::max()) {
        return std::nullopt;
    }
    return static_cast<T>(intero);
}

}  // namespace

std::string TestoNumero(std::int32_t numero) {
    return std::to_string(numero);
}

std::string TestoNumero(float numero) {
    std::array<char, 192> testo{};  // the smallest float has some 150 fraction digits
    const auto fine =
        std::to_chars(testo.data(), testo.data() + testo.size(), numero, std::chars_format::fixed);
    return {testo.data(), fine.ptr};
}

std::string TestoLogico(bool acceso) {
    return acceso ? "-1" : "0";
}

std::optional<std::int16_t> InteroBreve(std::string_view testo) {
    return InteroNelTipo<std::int16_t>(testo);
}

std::optional<std::int32_t> Intero(std::string_view testo) {
    return InteroNelTipo<std::int32_t>(testo);
}

std::optional<float> Decimale(std::string_view testo) {
    const std::optional<double> numero = Numero(testo);
    if (!numero || std::abs(*numero) > std::numeric_limits<float>::max()) {
        return std::nullopt;
    }
    return static_cast<float>(*numero);
}

}  // namespace sonnel
