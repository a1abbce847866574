#pragma once

#include <cstdint>
#include <string>

namespace sonnel {

/// Time text of whole seconds, as in 3' 07".
[[nodiscard]] std::string FormattaTempo(std::int32_t secondi);

}  // namespace sonnel
