#pragma once

#include <QDialog>
#include <string>

namespace sonnel {

/// Reports what became of many files: a sentence, and a list that scrolls.
class frmResoconto final : public QDialog {
  public:
    frmResoconto(const std::string& riepilogo, const std::string& righe, QWidget* parent);
};

}  // namespace sonnel
