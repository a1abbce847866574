#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace sonnel {

/// A window that some program has open.
struct OpenWindow {
    std::uint32_t id;   ///< the window system's own number
    std::string title;  ///< as its frame shows it
};

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

    /// An open window of a mixer; nothing when there is none, or none that can be seen from here.
    virtual std::optional<OpenWindow> FindMixer() = 0;
    /// Starts the first mixer program that is installed, without waiting for its window; false when
    /// none could be started.
    virtual bool StartMixer() = 0;
    /// The program that StartMixer tries first; the best known one when none is installed.
    [[nodiscard]] virtual std::string MixerProgram() const = 0;
    /// Brings a window to the front; false when it is gone or nobody does this here.
    virtual bool Activate(const OpenWindow& window) = 0;
};

}  // namespace sonnel
