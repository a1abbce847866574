#include "platform/qt/OnePlayer.h"

#include "platform/Paths.h"

#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QTimer>
#include <chrono>
#include <iterator>
#include <string_view>
#include <system_error>
#include <utility>

namespace sonnel {
namespace {

namespace fs = std::filesystem;

constexpr qint64 LongestMessage = 16384;
constexpr qsizetype MostClients = 64;
/// A message is three fields, each with a NUL at its end: this, the path, the activation token.
constexpr const char* Greeting = "sonnel";
constexpr qsizetype Fields = 3;
constexpr std::string_view Taken = "taken";  // the answer
/// What the sender says to the answer. A player that was asleep does not take what nobody waits
/// for.
constexpr const char* Confirmation = "go";

/// Sends a song and waits until it has been taken.
bool Send(QLocalSocket& player, const HandedSong& song, const QDeadlineTimer& limit) {
    for (const std::string& field : {std::string(Greeting), song.path, song.activationToken}) {
        player.write(field.c_str(), static_cast<qint64>(field.size()) + 1);
    }
    while (player.bytesAvailable() < std::ssize(Taken) &&
           player.waitForReadyRead(static_cast<int>(limit.remainingTime()))) {
    }
    if (player.readAll().toStdString() != Taken) {
        return false;
    }
    player.write(Confirmation, static_cast<qint64>(std::string_view(Confirmation).size()) + 1);
    return player.waitForBytesWritten(static_cast<int>(limit.remainingTime()));
}

/// The song in a message; nothing when it is none.
std::optional<HandedSong> SongIn(const QList<QByteArray>& fields) {
    HandedSong song{fields[1].toStdString(), fields[2].toStdString()};
    const bool known = song.path.empty() || PathFromUtf8(song.path).is_absolute();
    return known && fields[0] == Greeting ? std::optional(std::move(song)) : std::nullopt;
}

/// Makes a directory that only this user can enter; false when that cannot be.
bool MakePrivate(const fs::path& directory) {
    std::error_code error;
    fs::create_directory(directory, error);
    if (fs::symlink_status(directory, error).type() != fs::file_type::directory) {
        return false;
    }
    fs::permissions(directory, fs::perms::owner_all, error);
    return !error;
}

}  // namespace

std::string ActivationToken(const Environment& environment) {
    const std::string token = environment("XDG_ACTIVATION_TOKEN");
    return token.empty() ? environment("DESKTOP_STARTUP_ID") : token;
}

fs::path MeetingPlace(const Environment& environment) {
    const fs::path runtime =
        NamedDirectory(environment, "XDG_RUNTIME_DIR")
            .value_or(PathFromUtf8(
                QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation).toStdString()));
    return runtime / "sonnel";
}

OnePlayer::OnePlayer(fs::path directory, std::chrono::milliseconds patience)
    : directory_(std::move(directory)), patience_(patience) {
    if (!MakePrivate(directory_)) {
        return;
    }
    name_ = QString::fromStdString(Utf8FromPath(directory_ / "socket"));
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&server_, &QLocalServer::newConnection, this, &OnePlayer::Welcome);
    // The player that was used last takes the place of one that has gone.
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](auto state) {
        if (state == Qt::ApplicationActive && !Listens() && accepts && accepts()) {
            (void)HandOver(std::nullopt);
        }
    });
}

OnePlayer::~OnePlayer() {
    if (Listens()) {
        // Removes the socket's file, which must not be that of a player that has begun to listen.
        lock_.emplace(directory_);
        server_.close();
    }
}

bool OnePlayer::HandOver(const std::optional<HandedSong>& song) {
    if (!HasPlace()) {
        return false;
    }
    lock_.emplace(directory_);
    QLocalSocket player;
    player.connectToServer(name_);
    if (player.waitForConnected(static_cast<int>(patience_.count()))) {
        lock_.reset();
        return song && Send(player, *song, QDeadlineTimer(patience_));
    }
    if (player.error() == QLocalSocket::ServerNotFoundError ||
        player.error() == QLocalSocket::ConnectionRefusedError) {
        Listen();
    }
    // Those that start at the same time wait until this one can answer.
    QTimer::singleShot(0, this, [this] { lock_.reset(); });
    return false;
}

void OnePlayer::Listen() {
    QLocalServer::removeServer(name_);  // left by a player that was killed
    (void)server_.listen(name_);
}

void OnePlayer::Welcome() {
    while (QLocalSocket* const client = server_.nextPendingConnection()) {
        connect(client, &QLocalSocket::disconnected, client, &QObject::deleteLater);
        if (server_.findChildren<QLocalSocket*>().size() > MostClients) {
            client->abort();
            continue;
        }
        client->setReadBufferSize(LongestMessage + 1);
        connect(client, &QLocalSocket::readyRead, this, [this, client] { Read(*client); });
        QTimer::singleShot(patience_, client, [client] { client->abort(); });
    }
}

void OnePlayer::Read(QLocalSocket& client) {
    const QByteArray message = client.peek(LongestMessage + 1);
    const QList<QByteArray> fields = message.split('\0');
    if (fields.size() <= Fields && message.size() <= LongestMessage) {
        return;  // there is more to come
    }
    std::optional<HandedSong> song;
    if (message.size() <= LongestMessage) {
        song = SongIn(fields);
    }
    if (!song || !accepts || !accepts()) {
        client.abort();
        return;
    }
    if (fields.size() == Fields + 1) {
        client.write(Taken.data(), std::ssize(Taken));
        return;
    }
    client.disconnect(this);  // what else it says is not heard
    client.disconnectFromServer();
    if (fields[Fields] != Confirmation) {
        return;
    }
    // The song may bring up a message box, and its sender does not wait for that.
    QTimer::singleShot(0, this, [this, song = *std::move(song)] { Take(song); });
}

void OnePlayer::Take(const HandedSong& song) const {
    // From there it is taken when a window is activated; an X server is asked without it.
    if (!song.activationToken.empty() && QGuiApplication::platformName().startsWith("wayland")) {
        qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(song.activationToken));
    }
    onSong(song.path);
}

}  // namespace sonnel
