#include "platform/qt/QtCommonDialog.h"

#include "platform/Paths.h"
#include "platform/qt/FitScreen.h"
#include "platform/qt/QtColour.h"
#include "platform/qt/QtSystem.h"
#include "platform/qt/UndecodableFiles.h"
#include "platform/qt/WindowInUse.h"

#include <QColorDialog>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QVBoxLayout>

namespace sonnel {
namespace {

/// A kind of files such as "MIDI file (*.mid)", for both cases of letters.
QString Filter(const std::string& kind) {
    QString text = QString::fromStdString(kind);
    const QString pattern = text.section('(', 1).section(')', 0, 0);
    return text.replace(pattern, pattern + ' ' + pattern.toUpper());
}

/// The filters asked for, else one for the extension and one for all; then the further ones.
QStringList Filters(const FileRequest& request) {
    QStringList filters;
    for (const std::string& kind : request.filters) {
        filters.append(Filter(kind));
    }
    if (filters.isEmpty()) {
        const QString extension = QString::fromStdString(request.extension);
        const QString kind = extension.toUpper();
        filters = {QString("%1 files (*.%2 *.%1)").arg(kind, extension), "All files (*)"};
    }
    for (const std::string& kind : request.further) {
        filters.append(Filter(kind));
    }
    return filters;
}

/// A directory that is typed is an answer of its own where the file need not exist: the file of the
/// name asked for in it.
class FileDialog : public QFileDialog {
  public:
    FileDialog(const FileRequest& request, QWidget* parent)
        : QFileDialog(parent, QString::fromStdString(request.title)), request_(request) {}

    void accept() override {
        const bool directory = QFileInfo(selectedFiles().value(0)).isDir();
        if (directory && !request_.mustExist) {
            done(Accepted);
        } else {
            QFileDialog::accept();
        }
    }

  private:
    const FileRequest& request_;
};

/// Asks again while a new file's directory does not exist; false when the user has cancelled.
bool ExecUntilPathExists(QFileDialog& dialog, const std::optional<UndecodableFiles>& others) {
    while (dialog.exec() == QDialog::Accepted) {
        const QString directory = QFileInfo(dialog.selectedFiles().value(0)).path();
        if ((others && !others->Chosen().empty()) || QFileInfo(directory).isDir()) {
            return true;
        }
        QtMsgBox().Show({directory.toStdString() + "\r\nThis directory does not exist.",
                         Icon::Exclamation, Buttons::Ok, 1, dialog.windowTitle().toStdString()});
    }
    return false;
}

/// Lets a dialog that cannot be made smaller scroll on a screen that has no room for it.
void ScrollWhereTooLarge(QDialog& dialog) {
    const QSize room = RoomOnScreen(dialog);
    if (dialog.layout() == nullptr || dialog.sizeHint().boundedTo(room) == dialog.sizeHint()) {
        return;
    }
    auto* content = new QWidget;
    content->setLayout(dialog.layout());
    auto* whole = new QVBoxLayout(&dialog);
    whole->setContentsMargins({});
    whole->addWidget(new ScrollPane(content));
    FitToScreen(dialog);
}

}  // namespace

std::vector<std::filesystem::path> QtCommonDialog::ChooseFiles(const FileRequest& request) {
    FileDialog dialog(request, WindowInUse());
    dialog.setOption(QFileDialog::DontUseNativeDialog, request.anyName);
    const QString extension = QString::fromStdString(request.extension);
    const std::filesystem::path& start = request.directory.empty() ? start_ : request.directory;
    dialog.setDirectory(start.empty() ? QDir::currentPath()
                                      : QString::fromStdString(Utf8FromPath(start)));
    dialog.setNameFilters(Filters(request));
    dialog.setDefaultSuffix(extension);
    dialog.setFileMode(!request.mustExist ? QFileDialog::AnyFile
                       : request.several  ? QFileDialog::ExistingFiles
                                          : QFileDialog::ExistingFile);
    dialog.setLabelText(QFileDialog::Accept, "&Open");
    // A pattern does in its own place: as the filter.
    if (request.name.find('*') == std::string::npos) {
        dialog.selectFile(QString::fromStdString(request.name));
    }
    std::optional<UndecodableFiles> others;
    if (request.anyName) {
        others.emplace(dialog);
    }
    dialog.resize(dialog.size().boundedTo(RoomOnScreen(dialog)));
    std::vector<std::filesystem::path> files;
    if (ExecUntilPathExists(dialog, others)) {
        for (const QString& file : dialog.selectedFiles()) {
            const auto path = PathFromUtf8(QDir::cleanPath(file).toStdString());
            files.push_back(QFileInfo(file).isDir() ? path / request.name : path);
        }
        if (others && !others->Chosen().empty()) {
            files = {others->Chosen()};
        }
        if (request.directory.empty()) {
            start_ = files.front().parent_path();
        }
    }
    return files;
}

std::optional<Colour> QtCommonDialog::ChooseColour(const std::string& title, Colour initial) {
    QColorDialog dialog(ToQColor(initial), WindowInUse());
    dialog.setWindowTitle(QString::fromStdString(title));
    ScrollWhereTooLarge(dialog);
    return dialog.exec() == QDialog::Accepted ? std::optional(FromQColor(dialog.selectedColor()))
                                              : std::nullopt;
}

}  // namespace sonnel
