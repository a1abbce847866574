#pragma once

#include "platform/MsgBox.h"
#include "platform/Shell.h"

namespace sonnel {

/// Shows the desktop's mixer: brings an open one to the front, starts one when none is open.
/// Reports to the user when that fails.
void MostraControlloVolume(Shell& shell, MsgBox& msgBox);

}  // namespace sonnel
