#include "tool/Tenta.h"

#include "platform/Text.h"

#include <exception>
#include <new>

namespace sonnel {

std::optional<std::string> Tenta(std::string_view file, const std::function<void()>& lavoro) {
    const std::string frase = "Can't finish the work on the file " + std::string(file);
    try {
        lavoro();
        return std::nullopt;
    } catch (const std::bad_alloc&) {
        return frase + ": there is not enough memory.";
    } catch (const std::exception& errore) {
        return WithReason(frase, errore.what());
    }
}

}  // namespace sonnel
