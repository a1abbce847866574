#include "platform/files/DirectoryLock.h"

#ifndef _WIN32
#include <cerrno>
#include <chrono>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#endif

namespace sonnel {

#ifdef _WIN32

DirectoryLock::DirectoryLock(const std::filesystem::path& /*directory*/) {}
DirectoryLock::~DirectoryLock() = default;

#else

DirectoryLock::DirectoryLock(const std::filesystem::path& directory)
    : handle_(
          open(directory.empty() ? "." : directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    constexpr std::chrono::milliseconds Pause(10);
    constexpr int Attempts = 200;
    for (int attempt = 0; attempt < Attempts && handle_ >= 0; ++attempt) {
        if (flock(handle_, LOCK_EX | LOCK_NB) == 0 || (errno != EWOULDBLOCK && errno != EINTR)) {
            return;
        }
        std::this_thread::sleep_for(Pause);
    }
}

DirectoryLock::~DirectoryLock() {
    if (handle_ >= 0) {
        (void)close(handle_);
    }
}

#endif

}  // namespace sonnel
