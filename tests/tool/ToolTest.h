#pragma once

#include "fakes/SmfBuilder.h"
#include "fakes/TempDirectory.h"

#include <cstdlib>
#include <filesystem>
#include <string>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <sys/wait.h>

namespace sonnel::test {

namespace fs = std::filesystem;
using nlohmann::json;
using ::testing::HasSubstr;

/// A directory in which the program runs. The arguments are the shell's.
class ToolTest : public ::testing::Test {
  protected:
    int Run(const std::string& arguments) {
        return Shell("SOURCE_DATE_EPOCH=86400 '" SONNEL_TOOL "' " + arguments);
    }
    /// The exit status of a command; what it prints is in `out` and `err`.
    int Shell(const std::string& command) {
        const std::string line = "cd '" + folder.Path().string() + "' && { " + command + "\n} >'" +
                                 (logs / "out").string() + "' 2>'" + (logs / "err").string() + "'";
        const int status = std::system(line.c_str());
        out = Content(logs / "out");
        err = Content(logs / "err");
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    json Json(const std::string& arguments, int status = 0) {
        EXPECT_EQ(Run("--json " + arguments), status) << arguments << "\n" << err;
        return json::parse(out, nullptr, false);
    }
    void Lyk(const std::string& name, const std::string& body) const {
        folder.Write(name, "Cantabelle1.0\r\n" + body);
    }
    static std::string Kar() {
        return SmfBuilder().Tempo(0, 500000).Text(0, 1, "@KMIDI").Text(960, 1, "\\La").Bytes();
    }

    TempDirectory folder;
    TempDirectory logs;
    std::string out;
    std::string err;
};

}  // namespace sonnel::test
