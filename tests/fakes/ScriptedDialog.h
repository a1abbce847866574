#pragma once

#include "platform/CommonDialog.h"

#include <deque>
#include <utility>

namespace sonnel::test {

/// Keeps what it was asked and answers from a script; cancels when the script is empty.
class ScriptedDialog : public CommonDialog {
  public:
    std::vector<std::filesystem::path> ChooseFiles(const FileRequest& request) override {
        asked.push_back(request);
        return Next(files, {});
    }
    std::optional<Colour> ChooseColour(const std::string& /*title*/, Colour /*initial*/) override {
        return Next(colours, std::optional<Colour>());
    }

    std::deque<std::vector<std::filesystem::path>> files;
    std::deque<std::optional<Colour>> colours;
    std::vector<FileRequest> asked;

  private:
    template <typename Value>
    static Value Next(std::deque<Value>& script, Value cancelled) {
        if (script.empty()) {
            return cancelled;
        }
        Value value = std::move(script.front());
        script.pop_front();
        return value;
    }
};

}  // namespace sonnel::test
