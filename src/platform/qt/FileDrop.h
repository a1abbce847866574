#pragma once

#include <QObject>
#include <QWidget>
#include <filesystem>
#include <functional>
#include <vector>

namespace sonnel {

/// Lets files and folders be dropped on a window. It belongs to the window.
class FileDrop final : public QObject {
  public:
    /// `accepts` says whether files are welcome just now; `dropped` gets them once the drop is
    /// over.
    FileDrop(QWidget& window, std::function<bool()> accepts,
             std::function<void(const std::vector<std::filesystem::path>&)> dropped);

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    std::function<bool()> accepts_;
    std::function<void(const std::vector<std::filesystem::path>&)> dropped_;
};

}  // namespace sonnel
