#pragma once

#include <filesystem>
#include <string_view>

namespace sonnel {

/// The door to the desktop's own programs.
class Shell {
  public:
    virtual ~Shell() = default;
    /// Opens a web address in the user's browser; false when none could be started.
    virtual bool OpenAddress(std::string_view address) = 0;
    /// Makes a program, an absolute path, the one with which the user's desktop opens LYK files.
    /// What is in place already is left alone, so it may be called at each start. Failures are
    /// silent.
    virtual void RegisterFileType(const std::filesystem::path& program) = 0;
};

}  // namespace sonnel
