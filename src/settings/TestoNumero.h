#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace sonnel {

/// Numbers as the settings keep them: decimal text with a point, whatever the locale, and with as
/// many fraction digits as the number needs.
[[nodiscard]] std::string TestoNumero(std::int32_t numero);
[[nodiscard]] std::string TestoNumero(float numero);
/// A switch: "-1" when it is on, "0" when it is off.
[[nodiscard]] std::string TestoLogico(bool acceso);

/// The number that a text, without the blanks around it, stands for; nothing when it is no number
/// or past the type's range. Whole numbers are rounded, halves to the even one.
[[nodiscard]] std::optional<std::int16_t> InteroBreve(std::string_view testo);
[[nodiscard]] std::optional<std::int32_t> Intero(std::string_view testo);
[[nodiscard]] std::optional<float> Decimale(std::string_view testo);

}  // namespace sonnel
