#pragma once

#include "platform/Shell.h"

namespace sonnel {

/// The desktop's programs as Qt finds them, their windows as X11 shows them. Elsewhere than on X11
/// no window of a mixer is ever found, and it is left to the mixer that is started again to show
/// the one that is open.
class QtShell : public Shell {
  public:
    bool OpenAddress(std::string_view address) override;
    void RegisterFileType(const std::filesystem::path& program) override;
    std::optional<OpenWindow> FindMixer() override;
    bool StartMixer() override;
    [[nodiscard]] std::string MixerProgram() const override;
    bool Activate(const OpenWindow& window) override;
};

}  // namespace sonnel
