#pragma once

#include "platform/MsgBox.h"

#include <deque>
#include <functional>
#include <vector>

namespace sonnel::test {

/// Keeps what was shown and answers from a script; Ok when the script is empty.
class ScriptedMsgBox : public MsgBox {
  public:
    Answer Show(const Message& message) override {
        shown.push_back(message);
        whileShown();
        if (answers.empty()) {
            return Answer::Ok;
        }
        const Answer answer = answers.front();
        answers.pop_front();
        return answer;
    }

    std::vector<Message> shown;
    std::deque<Answer> answers;
    std::function<void()> whileShown = [] {};  ///< what goes on behind an open box
};

}  // namespace sonnel::test
