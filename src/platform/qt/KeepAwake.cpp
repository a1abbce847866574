#include "platform/qt/KeepAwake.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFileInfo>

namespace sonnel {
namespace {

QDBusMessage Call(const char* method) {
    constexpr const char* service = "org.freedesktop.ScreenSaver";
    return QDBusMessage::createMethodCall(service, "/org/freedesktop/ScreenSaver", service, method);
}

/// Asking for a bus where there is none would start one, or leave one half made.
bool HasSessionBus() {
    return !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
           (!qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR") &&
            QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + "/bus"));
}

}  // namespace

void KeepAwake::Keep(bool awake) {
    wanted_ = awake;
    if (awake && !cookie_ && !asking_) {
        Inhibit();
    } else if (!awake && cookie_) {
        Release();
    }
}

void KeepAwake::Inhibit() {
    if (!HasSessionBus()) {
        return;
    }
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return;
    }
    asking_ = true;
    QDBusMessage call = Call("Inhibit");
    call << "Sonnel"
         << "A song is playing";
    auto* answer = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<std::uint32_t> reply = *answer;
        answer->deleteLater();
        asking_ = false;
        if (reply.isError()) {
            return;  // this desktop has no such service
        }
        cookie_ = reply.value();
        if (!wanted_) {
            Release();  // the song has ended before the answer came
        }
    });
}

void KeepAwake::Release() {
    QDBusMessage call = Call("UnInhibit");
    call << *cookie_;
    cookie_.reset();
    QDBusConnection::sessionBus().asyncCall(call);
}

}  // namespace sonnel
