#include "player/FormattaTempo.h"

namespace sonnel {

std::string FormattaTempo(std::int32_t secondi) {
    std::int32_t minuti = secondi / 60;
    std::int32_t resto = secondi % 60;
    if (resto < 0) {
        resto += 60;
        --minuti;
    }
    return std::to_string(minuti) + "' " + (resto < 10 ? "0" : "") + std::to_string(resto) + "\"";
}

}  // namespace sonnel
