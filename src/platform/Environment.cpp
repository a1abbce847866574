#include "platform/Environment.h"

#include "platform/Paths.h"

#include <algorithm>
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

std::vector<std::filesystem::path> NamedDirectories(const Environment& environment,
                                                    const std::string& name,
                                                    std::string_view usual) {
    const std::string named = environment(name);
    std::vector<std::filesystem::path> directories;
    for (std::string_view list = named.empty() ? usual : named; !list.empty();) {
        const std::string_view entry = list.substr(0, list.find(':'));
        list.remove_prefix(std::min(entry.size() + 1, list.size()));
        if (std::filesystem::path directory = PathFromUtf8(entry); directory.is_absolute()) {
            directories.push_back(std::move(directory));
        }
    }
    return directories;
}

std::filesystem::path UserDataDirectory(const Environment& environment) {
    if (const auto data = NamedDirectory(environment, "XDG_DATA_HOME")) {
        return *data;
    }
    const auto home = NamedDirectory(environment, "HOME");
    return home ? *home / ".local" / "share" : std::filesystem::path();
}

}  // namespace sonnel
