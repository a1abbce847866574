#pragma once

#include "platform/Environment.h"
#include "platform/files/DirectoryLock.h"

#include <QLocalServer>
#include <QObject>
#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

class QLocalSocket;

namespace sonnel {

/// What a player that starts hands to the one that runs.
struct HandedSong {
    std::string path;  ///< absolute; "" when the other one only has to come to the front
    std::string activationToken{};  ///< the desktop's permission to do so, if there is one
};

/// The permission to take the focus that the desktop gave this process. It stands in the
/// environment until Qt starts.
[[nodiscard]] std::string ActivationToken(const Environment& environment);

/// The directory in which the players of a user meet.
[[nodiscard]] std::filesystem::path MeetingPlace(const Environment& environment);

/// The player of a user that takes the songs of those that start later. It listens on a local
/// socket that only this user can open.
class OnePlayer final : public QObject {
  public:
    static constexpr std::chrono::milliseconds Patience{2000};

    /// Makes the directory when it is missing. Other players, and those that have connected to this
    /// one, are given so much time to speak.
    explicit OnePlayer(std::filesystem::path directory,
                       std::chrono::milliseconds patience = Patience);
    OnePlayer(const OnePlayer&) = delete;
    OnePlayer& operator=(const OnePlayer&) = delete;
    ~OnePlayer() override;

    /// False when the directory cannot be had: then there are no other players for this one.
    [[nodiscard]] bool HasPlace() const { return !name_.isEmpty(); }
    [[nodiscard]] const std::filesystem::path& Directory() const { return directory_; }
    /// Listens, unless another player does. That one gets the song, if there is one; true when it
    /// has taken it.
    [[nodiscard]] bool HandOver(const std::optional<HandedSong>& song);
    [[nodiscard]] bool Listens() const { return server_.isListening(); }

    std::function<bool()> accepts;                        ///< whether songs are welcome
    std::function<void(const std::string& path)> onSong;  ///< gets the path of a HandedSong

  private:
    void Listen();
    void Welcome();
    void Read(QLocalSocket& client);
    void Take(const HandedSong& song) const;

    std::filesystem::path directory_;
    std::chrono::milliseconds patience_;
    QString name_;  ///< of the socket
    QLocalServer server_;
    std::optional<DirectoryLock> lock_;
};

}  // namespace sonnel
