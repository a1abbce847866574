#include "platform/qt/QtCommonDialog.h"

#include "platform/Paths.h"
#include "platform/qt/QtColour.h"
#include "platform/qt/UndecodableFiles.h"
#include "platform/qt/WindowInUse.h"

#include <QColorDialog>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

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

/// Asks again while a new file's directory does not exist; false when the user has cancelled.
bool ExecUntilPathExists(QFileDialog& dialog, const std::optional<UndecodableFiles>& others) {
    while (dialog.exec() == QDialog::Accepted) {
        const QString directory = QFileInfo(dialog.selectedFiles().value(0)).path();
        if ((others && !others->Chosen().empty()) || QFileInfo(directory).isDir()) {
            return true;
        }
        QMessageBox box(QMessageBox::Warning, dialog.windowTitle(),
                        directory + "\nThis directory does not exist.", QMessageBox::Ok, &dialog);
        box.setTextFormat(Qt::PlainText);
        box.exec();
    }
    return false;
}

}  // namespace

std::vector<std::filesystem::path> QtCommonDialog::ChooseFiles(const FileRequest& request) {
    QFileDialog dialog(WindowInUse(), QString::fromStdString(request.title));
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
    std::vector<std::filesystem::path> files;
    if (ExecUntilPathExists(dialog, others)) {
        for (const QString& file : dialog.selectedFiles()) {
            files.push_back(PathFromUtf8(file.toStdString()));
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
    const QColor colour =
        QColorDialog::getColor(ToQColor(initial), WindowInUse(), QString::fromStdString(title));
    return colour.isValid() ? std::optional(FromQColor(colour)) : std::nullopt;
}

}  // namespace sonnel
