#pragma once

#include "platform/CommonDialog.h"

namespace sonnel {

/// File and colour dialogs in front of the active window.
class QtCommonDialog : public CommonDialog {
  public:
    std::vector<std::filesystem::path> ChooseFiles(const FileRequest& request) override;
    std::optional<Colour> ChooseColour(const std::string& title, Colour initial) override;

  private:
    std::filesystem::path start_;  ///< empty for the process's own directory
};

}  // namespace sonnel
