#pragma once

#include "platform/files/Files.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>

namespace sonnel::test {

/// A directory of its own for a test, removed with all it holds.
class TempDirectory {
  public:
    TempDirectory() {
        std::string name = (std::filesystem::temp_directory_path() / "sonnel-test-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no temporary directory");
        }
        path_ = name;
    }
    TempDirectory(const TempDirectory&) = delete;
    TempDirectory& operator=(const TempDirectory&) = delete;
    ~TempDirectory() {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }

    const std::filesystem::path& Path() const { return path_; }
    std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

    /// Writes a file, bytes as they stand, and returns its path.
    std::filesystem::path Write(std::string_view name, std::string_view content) const {
        std::ofstream(path_ / name, std::ios::binary) << content;
        return path_ / name;
    }
    /// The names of everything in the directory.
    std::set<std::string> Names() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(path_)) {
            names.insert(entry.path().filename().string());
        }
        return names;
    }

  private:
    std::filesystem::path path_;
};

/// What a file holds; "(unreadable)" when it cannot be read.
inline std::string Content(const std::filesystem::path& path) {
    Result<std::string> content = ReadFile(path);
    return content ? *content : "(unreadable)";
}

}  // namespace sonnel::test
