#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sonnel {

/// Gives an environment variable's value; "" when it is not set.
using Environment = std::function<std::string(const std::string& name)>;

/// The environment of this process.
[[nodiscard]] std::string ProcessEnvironment(const std::string& name);

/// The directory an environment variable names, if it names one; relative ones do not count.
[[nodiscard]] std::optional<std::filesystem::path> NamedDirectory(const Environment& environment,
                                                                  const std::string& name);

/// The directories of the list that an environment variable holds, or of the list `usual` when it
/// is not set; relative ones do not count.
[[nodiscard]] std::vector<std::filesystem::path> NamedDirectories(const Environment& environment,
                                                                  const std::string& name,
                                                                  std::string_view usual);

/// The user's data directory: XDG_DATA_HOME or its usual place. Empty when the environment names no
/// home.
[[nodiscard]] std::filesystem::path UserDataDirectory(const Environment& environment);

}  // namespace sonnel
