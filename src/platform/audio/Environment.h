#pragma once

#include <functional>
#include <string>

namespace sonnel {

/// Gives an environment variable's value; "" when it is not set.
using Environment = std::function<std::string(const std::string& name)>;

/// The environment of this process.
[[nodiscard]] std::string ProcessEnvironment(const std::string& name);

}  // namespace sonnel
