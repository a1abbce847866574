#pragma once

#include <QDialog>
#include <string>

namespace sonnel {

/// Reports the outcome for many files: a sentence and a scrollable list.
class frmResoconto final : public QDialog {
  public:
    frmResoconto(const std::string& riepilogo, const std::string& righe, QWidget* parent);
};

}  // namespace sonnel
