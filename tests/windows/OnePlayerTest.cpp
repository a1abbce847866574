#include "fakes/TempDirectory.h"
#include "platform/qt/OnePlayer.h"

#include <QLocalSocket>
#include <QTest>
#include <QThread>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

namespace sonnel::test {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A player's place, the players that meet there, and the songs the first one gets.
struct OnePlayerTest : testing::Test {
    std::unique_ptr<OnePlayer> NewPlayer(std::chrono::milliseconds patience = OnePlayer::Patience) {
        auto player = std::make_unique<OnePlayer>(place, patience);
        player->accepts = [this] { return welcome; };
        player->onSong = [this](const std::string& path) { songs.push_back(path); };
        return player;
    }
    /// Whether a song of another player is taken, which has a thread of its own here.
    bool Taken(const std::string& path) const {
        bool taken = false;
        const std::unique_ptr<QThread> other(
            QThread::create([&] { taken = OnePlayer(place).HandOver(HandedSong{path}); }));
        other->start();
        EXPECT_TRUE(QTest::qWaitFor([&] { return other->isFinished(); }, 30000));
        QCoreApplication::processEvents();
        return taken;
    }
    /// Whether the player hangs up on one that says this.
    bool HangsUp(const std::string& message) const {
        QLocalSocket client;
        client.connectToServer(QString::fromStdString(socket.string()));
        EXPECT_TRUE(client.waitForConnected());
        client.write(message.data(), std::ssize(message));
        return QTest::qWaitFor([&] { return client.state() == QLocalSocket::UnconnectedState; },
                               10000);
    }

    TempDirectory runtime;
    fs::path place = runtime / "sonnel";
    fs::path socket = place / "socket";
    bool welcome = true;
    std::vector<std::string> songs;
};

TEST_F(OnePlayerTest, TakesSongsOfAnyNameUntilItCloses) {
    const mode_t mask = umask(0);
    auto first = NewPlayer();
    EXPECT_FALSE(first->HandOver(HandedSong{"/its own"}));
    umask(mask);
    EXPECT_EQ(fs::status(place).permissions(), fs::perms::owner_all);
    EXPECT_EQ(fs::status(socket).permissions() & ~fs::perms::owner_all, fs::perms::none);
    const std::string name = "/a \"b\"\n'\xE9'.kar";
    for (const std::string& path : {name, std::string()}) {
        EXPECT_TRUE(Taken(path));
    }
    welcome = false;
    EXPECT_FALSE(Taken("/too late"));
    EXPECT_THAT(songs, ElementsAre(name, ""));

    auto second = NewPlayer();
    EXPECT_FALSE(second->HandOver(std::nullopt));
    EXPECT_FALSE(second->Listens());
    first.reset();
    EXPECT_FALSE(fs::exists(socket));
    EXPECT_FALSE(second->HandOver(std::nullopt));
    EXPECT_TRUE(second->Listens());
}

TEST_F(OnePlayerTest, ReplacesOneThatWasKilledButNotOneThatHangs) {
    fs::create_directory(place);
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    socket.string().copy(address.sun_path, sizeof address.sun_path - 1);
    const int killed = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(bind(killed, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    close(killed);
    const auto hangs = NewPlayer();
    EXPECT_FALSE(hangs->HandOver(std::nullopt));
    EXPECT_TRUE(hangs->Listens());
    QCoreApplication::processEvents();  // it is ready, and then stands still
    const auto other = NewPlayer(std::chrono::milliseconds(50));
    EXPECT_FALSE(other->HandOver(HandedSong{"/a"}));
    EXPECT_FALSE(other->Listens());
    EXPECT_FALSE(OnePlayer(runtime / "no/place").HasPlace());
}

TEST_F(OnePlayerTest, HangsUpOnWhatIsNoSong) {
    const auto player = NewPlayer(std::chrono::milliseconds(200));
    EXPECT_FALSE(player->HandOver(std::nullopt));
    for (const std::string& message :
         {""s, "GET / HTTP/1.0\r\n\r\n\0\0\0"s, "sonnel\0/a"s, "\0\0\0"s, "sonnel\0relative\0\0"s,
          "sonnel\0/"s.append(17000, 'a').append("\0\0"s)}) {
        EXPECT_TRUE(HangsUp(message)) << message.substr(0, 40);
    }
    EXPECT_THAT(songs, IsEmpty());
    for (const std::string& message :
         {"sonnel\0/late\0\0"s, "sonnel\0/a\0\0go\0sonnel\0/b\0\0go\0"s, "sonnel\0/c\0\0no\0"s}) {
        EXPECT_TRUE(HangsUp(message)) << message;
    }
    EXPECT_THAT(songs, ElementsAre("/a"));
}

}  // namespace
}  // namespace sonnel::test
