#pragma once

#include "platform/Shell.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace sonnel {

/// An open window of one of the programs, those named first first; several of one program in the
/// order they were opened. A program's windows are those with its name in their class, without
/// regard to letter case and to a domain before it ("org.example.Program"). Nothing when there is
/// none or the display is not an X server.
[[nodiscard]] std::optional<OpenWindow> FindX11Window(const std::vector<std::string>& programs);

/// Has the window manager bring a window to the front, with whatever hides it: another desktop, an
/// icon. False when the window is gone, or no window manager that does this is running.
bool ActivateX11Window(std::uint32_t id);

}  // namespace sonnel
