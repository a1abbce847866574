#pragma once

#include <filesystem>

namespace sonnel {

/// Keeps other players from rewriting files of a directory for as long as it lives. Advisory: it
/// waits up to two seconds for another process's lock and then goes on without one. It also goes on
/// where the directory cannot be locked. Leaves nothing in the directory.
class DirectoryLock {
  public:
    explicit DirectoryLock(const std::filesystem::path& directory);
    DirectoryLock(const DirectoryLock&) = delete;
    DirectoryLock& operator=(const DirectoryLock&) = delete;
    ~DirectoryLock();

  private:
    int handle_ = -1;
};

}  // namespace sonnel
