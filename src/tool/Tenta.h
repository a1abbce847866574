#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace sonnel {

/// Does a piece of the work on a file. An exception ends that piece only: returns a sentence with
/// the file's name and the reason, or nothing when all went well.
[[nodiscard]] std::optional<std::string> Tenta(std::string_view file,
                                               const std::function<void()>& lavoro);

}  // namespace sonnel
