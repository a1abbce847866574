#pragma once

#include "platform/Result.h"

#include <cerrno>
#include <system_error>

namespace sonnel {

/// An error of the system: its number and the system's words for it.
[[nodiscard]] inline Error SystemError(int number) {
    return {number, std::generic_category().message(number)};
}

/// The last operation's number; one that set none counts as an input/output error.
[[nodiscard]] inline int LastError() {
    return errno != 0 ? errno : EIO;
}

}  // namespace sonnel
