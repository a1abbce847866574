// The real program with a real song: what the user sees and hears.

#include "e2e/Player.h"

#include "fakes/SmfBuilder.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <stdexcept>

#include <gtest/gtest.h>

namespace sonnel::test {
namespace {

using Steady = std::chrono::steady_clock;
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

/// What was heard, left and right in turn, at 44,100 Hz.
std::vector<std::int16_t> Samples(const Player& player) {
    constexpr std::size_t header = 44;
    const std::string sound = Content(player.Sound());
    std::vector<std::int16_t> samples((std::max(sound.size(), header) - header) / 2);
    std::memcpy(samples.data(), sound.data() + sound.size() - 2 * samples.size(),
                2 * samples.size());
    return samples;
}

/// When words of a song begin to be sung, by the colour of its letters on the screen.
std::vector<Steady::time_point> MomentsSung(const Player& player, std::size_t words) {
    std::vector<Steady::time_point> moments;
    const Steady::time_point limit = Steady::now() + seconds(20);
    for (bool before = false; moments.size() < words && Steady::now() < limit;) {
        const bool sung = player.Pixels(Player::kSung) > 0;
        if (sung && !before) {
            moments.push_back(Steady::now());
        }
        before = sung;
    }
    return moments;
}

/// When clicks begin in what was heard, in seconds.
std::vector<double> Onsets(const std::vector<std::int16_t>& samples) {
    constexpr std::size_t second = 88'200;  // left and right
    std::vector<double> onsets;
    std::size_t quietFrom = 0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        if (std::abs(samples[i]) > 600) {
            if (i - quietFrom > second / 2) {
                onsets.push_back(static_cast<double>(i) / second);
            }
            quietFrom = i;
        }
    }
    return onsets;
}

/// The pitch of what was heard from a moment on, by its waves in 0.4 s. Only those that go well
/// below and above zero count.
double Hertz(const std::vector<std::int16_t>& samples, double from) {
    constexpr double length = 0.4;
    const auto first = static_cast<std::size_t>(from * 44'100);
    const std::size_t end = first + static_cast<std::size_t>(length * 44'100);
    int peak = 0;
    for (std::size_t i = first; i < end; ++i) {
        peak = std::max(peak, std::abs(samples.at(2 * i)));
    }
    int waves = 0;
    bool below = false;
    for (std::size_t i = first; i < end; ++i) {
        const int sample = samples[2 * i];
        waves += below && sample > peak / 4 ? 1 : 0;
        below = sample < -peak / 4 || (below && sample <= peak / 4);
    }
    return waves / length;
}

/// How far words may be from the notes, in seconds. The sanitizers take the time that they take.
#ifdef __SANITIZE_ADDRESS__
constexpr double kApart = 0.3;
constexpr double kApartSlowed = 0.3;
#else
constexpr double kApart = 0.075;
constexpr double kApartSlowed = 0.095;
#endif

TEST(ThePlayer, SingsAKaraokeFileInStepThroughTempoChangesAndInAnotherKey) {
    Player player("Twinkle Twinkle");
    AwaitPlayer(player);
    ASSERT_TRUE(player.Exits());
    // Four words, each with a click, then a flute.
    SmfBuilder song(0, 480);
    song.Tempo(0, 700'000).Tempo(1100, 311'111).Tempo(3000, 1'234'567).Tempo(3700, 411'000);
    for (const std::uint32_t tick : {960U, 2400U, 3600U, 7000U}) {
        song.Text(tick, 1, "\\Sing ").Message(tick, {0x99, 37, 127});
    }
    song.Program(0, 73).Note(8500, 1500, 72).Control(11000, 7, 100);
    const TempDirectory folder;
    const QString kar = QString::fromStdString(folder.Write("song.kar", song.Bytes()).string());
    double before = 0;
    for (const double tempo : {1.0, 0.8}) {
        const QStringList singer{"--key", "3", "--tempo", "80", kar};
        player.Start(tempo < 1 ? singer : QStringList{kar});
        AwaitPlayer(player);
        player.Press("F2");
        const auto sung = MomentsSung(player, 4);
        std::this_thread::sleep_for(seconds(4));
        EXPECT_TRUE(player.Exits());
        const std::vector<double> heard = Onsets(Samples(player));
        ASSERT_EQ(heard.size(), 5U);
        ASSERT_EQ(sung.size(), 4U);
        for (std::size_t i = 1; i < sung.size(); ++i) {
            const double after = std::chrono::duration<double>(sung[i] - sung[0]).count();
            EXPECT_NEAR(after, heard[i] - heard[0], tempo < 1 ? kApartSlowed : kApart);
        }
        const double hertz = Hertz(Samples(player), heard[4] + 0.3);
        EXPECT_NEAR(hertz, tempo < 1 ? before * std::pow(2, 3.0 / 12) : 523, 15);
        before = hertz;
    }
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
    const std::vector<std::int16_t> samples = Samples(player);
    ASSERT_FALSE(samples.empty());
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

TEST(ThePlayer, BeginsTheSongsOfItsQueueByItselfAlsoAfterACrash) {
    constexpr const char* queue = "^Queue";
    Player player("Twinkle Twinkle");
    AwaitPlayer(player);
    PressIn(player, kMain, {"ctrl+u"});
    const auto add = [&](const std::string& find, const std::string& singer, int songs) {
        TypeIn(player, queue, find, {"ctrl+f"});
        TypeIn(player, "^Queue - " + std::to_string(songs), singer);
    };
    add("auld", "Anna", 1);
    add("row", "Bruno", 2);
    add("fr", "Carla", 3);
    const auto sing = [&](const std::string& first, const std::string& second) {
        PressIn(player, kMain, {"F3", "End", "F2"});
        PressIn(player, "^Sonnel Player 98 4.1 beta - " + first);
        EXPECT_TRUE(WaitUntil([&] { return player.Pixels(Player::kSung) > 0; })) << second;
    };
    sing("Auld", "begins");
    PressIn(player, "^Queue - 2 songs", {"Up", "Up", "Delete"});
    PressIn(player, "^Queue - 1 song$");
    EXPECT_TRUE(WaitUntil([&] { return player.Queue().find("Bruno") == std::string::npos; }));
    player.Kill();
    player.Start({QString::fromStdString(player.Library("Twinkle Twinkle").string())});
    AwaitPlayer(player);
    EXPECT_NE(player.Queue().find("\tCarla\t"), std::string::npos);
    sing("Fr", "begins after the crash");
    EXPECT_EQ(player.Queue(), "");
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
