#pragma once

#include <filesystem>
#include <vector>

class QComboBox;
class QFileDialog;
class QLabel;
class QPushButton;

namespace sonnel {

/// A line in Qt's own file dialog for the files of the directory that it cannot list, for their
/// names are not UTF-8: those that suit the kind of files chosen, read as Windows-1252. Hidden
/// where there are none. The dialog outlives it.
class UndecodableFiles {
  public:
    explicit UndecodableFiles(QFileDialog& dialog);
    UndecodableFiles(const UndecodableFiles&) = delete;
    UndecodableFiles& operator=(const UndecodableFiles&) = delete;
    ~UndecodableFiles() = default;

    /// The file that was chosen in this line; empty when the dialog was closed otherwise.
    [[nodiscard]] const std::filesystem::path& Chosen() const { return chosen_; }

  private:
    void Fill();
    void Choose();

    QFileDialog& dialog_;
    QLabel* label_;
    QComboBox* names_;
    QPushButton* open_;
    std::vector<std::filesystem::path> files_;
    std::filesystem::path chosen_;
};

}  // namespace sonnel
