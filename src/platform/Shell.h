#pragma once

#include <string_view>

namespace sonnel {

/// The door to the desktop's own programs.
class Shell {
  public:
    virtual ~Shell() = default;
    /// Opens a web address in the user's browser; false when none could be started.
    virtual bool OpenAddress(std::string_view address) = 0;
};

}  // namespace sonnel
