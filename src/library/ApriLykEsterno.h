#pragma once

#include "platform/CommonDialog.h"
#include "platform/MsgBox.h"
#include "song/FileBrano.h"

#include <optional>

namespace sonnel {

/// Lets the user choose a LYK file from anywhere. Returns its song's files; nothing when the user
/// cancels, or when no MID file is beside it, which a message reports.
[[nodiscard]] std::optional<FileBrano> ApriLykEsterno(CommonDialog& dialoghi, MsgBox& msgBox);

}  // namespace sonnel
