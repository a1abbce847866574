#pragma once

#include "platform/Shell.h"

#include <string>
#include <vector>

namespace sonnel::test {

/// Keeps what it was asked to open.
class FakeShell : public Shell {
  public:
    bool OpenAddress(std::string_view address) override {
        opened.emplace_back(address);
        return works;
    }

    bool works = true;
    std::vector<std::string> opened;
};

}  // namespace sonnel::test
