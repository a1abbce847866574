#pragma once

#include <string>

namespace sonnel {

enum class Icon { None, Critical, Question, Exclamation, Information };
enum class Buttons { Ok, OkCancel, YesNo, RetryCancel };
enum class Answer { Ok, Cancel, Yes, No, Retry };

/// One message to the user; lines of the text are separated by CR LF.
struct Message {
    static constexpr const char* UsualTitle = "Sonnel Karaoke Player";

    std::string text;
    Icon icon = Icon::None;
    Buttons buttons = Buttons::Ok;
    int defaultButton = 1;  ///< which button Return presses, counted from 1
    std::string title = UsualTitle;
};

/// The door to the message boxes.
class MsgBox {
  public:
    virtual ~MsgBox() = default;
    /// Shows the message and waits for the answer. Closing the box answers Cancel where there is a
    /// Cancel, No where there is a No, otherwise Ok.
    virtual Answer Show(const Message& message) = 0;
};

}  // namespace sonnel
