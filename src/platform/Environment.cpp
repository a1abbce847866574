#include "platform/Environment.h"

#include "platform/Files.h"

#include <cstdlib>

namespace sonnel {

std::string ProcessEnvironment(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    return value == nullptr ? std::string() : std::string(value);
}

std::optional<std::filesystem::path> NamedDirectory(const Environment& environment,
                                                    const std::string& name) {
    const std::filesystem::path directory = PathFromUtf8(environment(name));
    return directory.is_absolute() ? std::optional(directory) : std::nullopt;
}

std::filesystem::path UserDataDirectory(const Environment& environment) {
    if (const auto data = NamedDirectory(environment, "XDG_DATA_HOME")) {
        return *data;
    }
    const auto home = NamedDirectory(environment, "HOME");
    return home ? *home / ".local" / "share" : std::filesystem::path();
}

}  // namespace sonnel
