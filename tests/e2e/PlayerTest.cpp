// The real program with a real song: what the user sees and hears.

#include "e2e/Player.h"

#include <cstring>
#include <functional>
#include <stdexcept>

#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr const char* kMain = "^Sonnel Player 98 4.1 beta";
constexpr const char* kMessage = "^Sonnel Karaoke Player$";

/// Waits for a window of that title other than `last` and gives it keys, one after the other.
std::string PressIn(const Player& player, const std::string& title,
                    const std::vector<std::string>& keys = {}, const std::string& last = "") {
    std::string window;
    const auto opened = [&] {
        window = player.screen.Window(title);
        return !window.empty() && window != last;
    };
    if (!WaitUntil(opened)) {
        throw std::runtime_error("no window " + title);
    }
    for (const std::string& key : keys) {
        player.screen.Press(window, key);
    }
    return window;
}

/// Types a text into a window of that title and ends it with Return.
void TypeIn(const Player& player, const std::string& title, const std::string& text,
            const std::vector<std::string>& keysBefore = {}) {
    const std::string window = PressIn(player, title, keysBefore);
    player.screen.Type(window, text);
    player.screen.Press(window, "Return");
}

/// Waits for so many messages, one after the other, and takes each.
void TakeMessages(const Player& player, int count) {
    for (std::string last; count > 0; --count) {
        last = PressIn(player, kMessage, {"Return"}, last);
    }
}

/// Waits until the main window of a player with a song has been painted, and so takes keys.
void AwaitPlayer(const Player& player) {
    if (!WaitUntil([&] { return player.Pixels(Player::kBackground) > 10'000; })) {
        throw std::runtime_error("no main window");
    }
}

/// The value of a setting, as the settings file has it.
std::string Setting(const Player& player, const std::string& name) {
    const std::string settings = player.Settings();
    const std::size_t start = settings.find("\n" + name + "=");
    const std::size_t value = start + name.size() + 2;
    return start == std::string::npos ? "none"
                                      : settings.substr(value, settings.find('\n', value) - value);
}

TEST(ThePlayer, ColoursTheWordsAsItsOptionsSayPausesResumesAndStops) {
    constexpr std::uint32_t Chosen = 0xFF0180;
    Player player("Twinkle Twinkle");
    AwaitPlayer(player);
    PressIn(player, kMain, {"alt+v", "o"});
    PressIn(player, "^Options$", {"alt+s", "alt+f", "Tab", "space", "Tab", "space"});
    TypeIn(player, "^Text color$", "#ff0180", {"alt+h", "ctrl+a"});
    PressIn(player, "^Options$", {"alt+o"});
    ASSERT_TRUE(WaitUntil([&] { return player.screen.Window("^Options$").empty(); }));
    EXPECT_TRUE(WaitUntil([&] { return Setting(player, "Testo") == std::to_string(0x8001FF); }));
    EXPECT_EQ(Setting(player, "Grassetto"), "0");

    const auto sung = [&] { return player.Pixels(Player::kSung); };
    player.Press("F2");
    EXPECT_TRUE(WaitUntil([&] { return player.Pixels(Chosen) > 500; }));
    EXPECT_EQ(player.Pixels(Player::kUnsung), 0) << "the colour before";
    EXPECT_TRUE(WaitUntil([&] { return sung() > 0; }));
    player.Press("F3");
    std::this_thread::sleep_for(milliseconds(200));
    const auto paused = sung();
    EXPECT_FALSE(WaitUntil([&] { return sung() != paused; }, milliseconds(1800)));
    player.Press("F2");
    EXPECT_TRUE(WaitUntil([&] { return sung() > paused; }));

    const auto wordless = [&] { return sung() + player.Pixels(Chosen) == 0; };
    player.Press("F4");
    EXPECT_TRUE(WaitUntil(wordless, seconds(1)));
    EXPECT_FALSE(WaitUntil(std::not_fn(wordless), seconds(1)));
    EXPECT_TRUE(player.Exits());
    const std::string sound = Content(player.Sound());
    constexpr std::size_t Header = 44;
    ASSERT_GT(sound.size(), Header);
    std::vector<std::int16_t> samples((sound.size() - Header) / 2);
    std::memcpy(samples.data(), &sound[Header], 2 * samples.size());
    EXPECT_GT(*std::max_element(samples.begin(), samples.end()), 650) << "2 % of full scale";
}

TEST(ThePlayer, CalibratesAtItsFirstStartAndOpensWhereItWasClosed) {
    Player player;
    PressIn(player, kMessage);
    EXPECT_NE(player.MainWindow(), "");
    EXPECT_EQ(Setting(player, "Compensazione"), "none");
    TakeMessages(player, 2);  // the question, and that it was not done
    const auto quiet = [&] { return player.screen.Window(kMessage).empty(); };
    ASSERT_TRUE(WaitUntil(quiet));
    EXPECT_EQ(Setting(player, "Compensazione"), "0");

    player.screen.MoveAndResize(player.MainWindow(), 150, 90, 640, 320);
    const std::string place = player.screen.Place(player.MainWindow());
    EXPECT_TRUE(player.Exits());
    EXPECT_EQ(Setting(player, "Width"), "9600");

    player.Start({});
    EXPECT_EQ(player.screen.Place(PressIn(player, kMain)), place);
    EXPECT_FALSE(WaitUntil(std::not_fn(quiet), milliseconds(500))) << "calibrated before";
    EXPECT_TRUE(player.Exits());
}

TEST(ThePlayer, ImportsConvertsRenamesPlaysAndDeletesSongs) {
    Player player("Twinkle Twinkle");
    const TempDirectory other;
    for (const char* extension : {".lyk", ".mid"}) {
        std::filesystem::copy(player.Library(std::string("Auld Lang Syne") + extension),
                              other / ("one" + std::string(extension)));
    }
    const auto kar = other / "two.kar";
    std::filesystem::copy(SONNEL_SONGS "/../KAR/Auld Lang Syne.kar", kar);
    AwaitPlayer(player);
    PressIn(player, kMain, {"F3", "ctrl+o"});
    PressIn(player, "^Song selection - 5 songs", {"ctrl+Insert"});
    TypeIn(player, "^Add a new LYK song$", (other / "one.lyk").string());
    TakeMessages(player, 1);
    PressIn(player, "^Song selection - 6 songs", {"F3"});
    TypeIn(player, "^Select KAR file to be converted$", kar.string());
    TakeMessages(player, 3);  // it is done; the song is wanted; the old file goes
    TypeIn(player, "^Edit song properties$", "A New Song", {"alt+t", "ctrl+a"});
    const auto index = [&] { return Content(player.Library("sonnel.snl")); };
    EXPECT_TRUE(WaitUntil([&] { return index().find("\ntwo=A New Song|") != std::string::npos; }));
    EXPECT_NE(index().find("\none=Auld Lang Syne|"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(kar));
    EXPECT_NE(Content(player.Library("two.lyk")).find("*TIA New Song\r\n"), std::string::npos);

    PressIn(player, "^Song selection - 7 songs", {"F6", "Return"});
    PressIn(player, "^Sonnel Player 98 4.1 beta - A New Song$");
    EXPECT_TRUE(WaitUntil([&] { return player.Pixels(Player::kSung) > 0; }));
    PressIn(player, kMain, {"F3", "ctrl+o"});
    PressIn(player, "^Song selection", {"Delete"});
    PressIn(player, kMessage, {"Tab", "Return"});
    PressIn(player, "^Song selection - 6 songs", {"Escape"});
    for (const char* file : {"two.lyk", "two.mid"}) {
        EXPECT_FALSE(std::filesystem::exists(player.Library(file))) << file;
    }
    EXPECT_EQ(index().find("\ntwo="), std::string::npos);
    EXPECT_TRUE(player.Exits());
}

}  // namespace
}  // namespace sonnel::test
