#pragma once

#include <string_view>

namespace sonnel {

/// Title of the application.
inline constexpr std::string_view TitoloProgramma = "Sonnel Player 98";

}  // namespace sonnel
