#pragma once

#include "platform/Shell.h"

#include <string>
#include <vector>

namespace sonnel::test {

/// Keeps what it was asked to open and to register.
class FakeShell : public Shell {
  public:
    bool OpenAddress(std::string_view address) override {
        opened.emplace_back(address);
        return works;
    }
    void RegisterFileType(const std::filesystem::path& program) override {
        registered.push_back(program);
    }

    bool works = true;
    std::vector<std::string> opened;
    std::vector<std::filesystem::path> registered;
};

}  // namespace sonnel::test
