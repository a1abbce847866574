#include "platform/qt/UndecodableFiles.h"

#include "platform/Paths.h"
#include "platform/Text.h"
#include "platform/files/Directory.h"

#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <algorithm>

namespace sonnel {
namespace {

namespace fs = std::filesystem;

/// The name as Windows-1252.
QString Decoded(const fs::path& file) {
    return QString::fromStdString(FromWindows1252(Utf8FileName(file)));
}

/// The files of a directory whose names are not UTF-8 and match one of the patterns, in the order
/// of their names.
std::vector<fs::path> FindFiles(const fs::path& directory, const QStringList& patterns) {
    std::vector<fs::path> files;
    (void)ListDirectory(directory, [&](std::string_view name, EntryKind kind) {
        if (kind == EntryKind::File && !IsValidUtf8(name) &&
            QDir::match(patterns, QString::fromStdString(FromWindows1252(name)))) {
            files.push_back(directory / PathFromUtf8(name));
        }
    });
    std::sort(files.begin(), files.end());
    return files;
}

}  // namespace

UndecodableFiles::UndecodableFiles(QFileDialog& dialog)
    : dialog_(dialog),
      label_(new QLabel("&Undecodable names:", &dialog)),
      names_(new QComboBox(&dialog)),
      open_(new QPushButton("Open t&his file", &dialog)) {
    label_->setBuddy(names_);
    if (auto* const grid = qobject_cast<QGridLayout*>(dialog.layout())) {
        const int row = grid->rowCount();
        grid->addWidget(label_, row, 0);
        grid->addWidget(names_, row, 1);
        grid->addWidget(open_, row, 2);
    }
    // The dialog's own signal leaves out directories that are typed.
    if (const auto* const model = dialog.findChild<QFileSystemModel*>()) {
        QObject::connect(model, &QFileSystemModel::rootPathChanged, names_, [this] { Fill(); });
    }
    QObject::connect(&dialog, &QFileDialog::filterSelected, names_, [this] { Fill(); });
    QObject::connect(open_, &QPushButton::clicked, names_, [this] { Choose(); });
    Fill();
}

void UndecodableFiles::Fill() {
    const QString patterns = dialog_.selectedNameFilter().section('(', 1).section(')', 0, 0);
    files_ = FindFiles(PathFromUtf8(dialog_.directory().absolutePath().toStdString()),
                       patterns.split(' '));
    names_->clear();
    for (const fs::path& file : files_) {
        names_->addItem(Decoded(file));
    }
    label_->setVisible(!files_.empty());
    names_->setVisible(!files_.empty());
    open_->setVisible(!files_.empty());
}

void UndecodableFiles::Choose() {
    chosen_ = files_[static_cast<std::size_t>(names_->currentIndex())];
    static_cast<QDialog&>(dialog_).done(QDialog::Accepted);
}

}  // namespace sonnel
