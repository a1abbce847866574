#pragma once

#include "platform/CommonDialog.h"
#include "platform/MsgBox.h"

#include <optional>
#include <string>
#include <string_view>

namespace sonnel {

/// What stands before the path of a song outside the library, in the answer of the song selection.
inline constexpr std::string_view PrefissoFile = "F=";

/// Lets the person choose a LYK file from anywhere. Returns "F=" and its path without ".lyk";
/// nothing when the person has cancelled, or when no MID file is beside it, which a message tells.
[[nodiscard]] std::optional<std::string> ApriLykEsterno(CommonDialog& dialoghi, MsgBox& msgBox);

}  // namespace sonnel
