#pragma once

#include "platform/Shell.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace sonnel::test {

/// Keeps what it was asked to open and to register; a desktop whose one mixer is set by hand.
class FakeShell : public Shell {
  public:
    bool OpenAddress(std::string_view address) override {
        opened.emplace_back(address);
        return works;
    }
    std::optional<OpenWindow> FindMixer() override { return mixer; }
    bool StartMixer() override {
        ++starts;
        mixer = works ? opensAtOnce : mixer;
        return works;
    }
    std::string MixerProgram() const override { return "mixer"; }
    bool Activate(const OpenWindow& window) override {
        activated.push_back(window.id);
        return activates;
    }
    void RegisterFileType(const std::filesystem::path& program) override {
        registered.push_back(program);
        whileRegistering();
    }

    bool works = true;                      ///< whether programs can be started
    bool activates = true;                  ///< whether windows can be brought to the front
    std::optional<OpenWindow> mixer;        ///< the open one
    std::optional<OpenWindow> opensAtOnce;  ///< the window that a started mixer has at once
    int starts = 0;
    std::vector<std::string> opened;
    std::vector<std::uint32_t> activated;
    std::vector<std::filesystem::path> registered;
    std::function<void()> whileRegistering = [] {};
};

}  // namespace sonnel::test
