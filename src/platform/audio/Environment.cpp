#include "platform/audio/Environment.h"

#include <cstdlib>

namespace sonnel {

std::string ProcessEnvironment(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    return value == nullptr ? std::string() : std::string(value);
}

}  // namespace sonnel
