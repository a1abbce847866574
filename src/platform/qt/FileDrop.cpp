#include "platform/qt/FileDrop.h"

#include "platform/Paths.h"

#include <QDropEvent>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <utility>

namespace sonnel {
namespace {

/// The files and folders of this machine among what is dropped.
std::vector<std::filesystem::path> LocalFiles(const QMimeData& data) {
    std::vector<std::filesystem::path> files;
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile()) {
            // The address keeps bytes that no text can hold.
            files.push_back(
                PathFromUtf8(QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toUtf8())
                                 .toStdString()));
        }
    }
    return files;
}

}  // namespace

FileDrop::FileDrop(QWidget& window, std::function<bool()> accepts,
                   std::function<void(const std::vector<std::filesystem::path>&)> dropped)
    : QObject(&window), accepts_(std::move(accepts)), dropped_(std::move(dropped)) {
    window.setAcceptDrops(true);
    window.installEventFilter(this);
}

bool FileDrop::eventFilter(QObject* object, QEvent* event) {
    const bool drop = event->type() == QEvent::Drop;
    if (!drop && event->type() != QEvent::DragEnter && event->type() != QEvent::DragMove) {
        return QObject::eventFilter(object, event);
    }
    auto& offer = *static_cast<QDropEvent*>(event);
    std::vector<std::filesystem::path> files = LocalFiles(*offer.mimeData());
    const bool welcome =
        !files.empty() && offer.possibleActions().testFlag(Qt::CopyAction) && accepts_();
    if (welcome) {
        offer.setDropAction(Qt::CopyAction);
    }
    offer.setAccepted(welcome);
    if (welcome && drop) {
        // The program that the files come from waits until this event is over.
        QTimer::singleShot(0, this, [this, files = std::move(files)] { dropped_(files); });
    }
    return true;
}

}  // namespace sonnel
