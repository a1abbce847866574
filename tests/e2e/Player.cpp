#include "e2e/Player.h"

#include <algorithm>
#include <filesystem>

namespace sonnel::test {
namespace {

constexpr const char* kTitle = "Sonnel Player 98 4.1 beta";
// Nothing else on the screen has these.
constexpr std::uint32_t kSungColour = 0xFFFF00;
constexpr std::uint32_t kUnsungColour = 0x00FF00;

}  // namespace

Player::Player(const std::string& song) {
    std::filesystem::create_directories(home_ / "config/sonnel");
    std::filesystem::create_directory(home_ / "run");
    std::filesystem::permissions(home_ / "run", std::filesystem::perms::owner_all);
    std::filesystem::copy(SONNEL_SONGS, home_ / "Karaoke");
    home_.Write("config/sonnel/settings.conf",
                "[Software\\Corvane\\Sonnel Player\\Opzioni]\r\n"
                "Compensazione=0\r\n"
                "OpenDir=" +
                    (home_ / "Karaoke/").string() +
                    "\r\n"
                    "[Software\\Corvane\\Sonnel Player\\Colori]\r\n"
                    "Testo=65280\r\n"
                    "Selezione=65535\r\n");
    process_ = std::make_unique<Process>(Command(song), home_ / "player.log");
}

std::vector<std::string> Player::Command(const std::string& song) const {
    return {"env",
            "-u",
            "WAYLAND_DISPLAY",
            "-u",
            "DBUS_SESSION_BUS_ADDRESS",
            "DISPLAY=" + screen_.Display(),
            "QT_QPA_PLATFORM=xcb",
            "HOME=" + home_.Path().string(),
            "XDG_CONFIG_HOME=" + (home_ / "config").string(),
            "XDG_DATA_HOME=" + (home_ / "data").string(),
            "XDG_RUNTIME_DIR=" + (home_ / "run").string(),
            "SONNEL_AUDIO=file:" + Sound().string(),
            SONNEL_PROGRAM,
            Library(song).string()};
}

bool Player::MainWindowShown() {
    const auto found = screen_.WindowBeginning(kTitle);
    window_ = found.value_or(window_);
    return found.has_value();
}

Sample Player::Look() {
    screen_.Grab(pixels_);
    const auto share = [this](std::uint32_t colour) {
        return static_cast<double>(std::count(pixels_.begin(), pixels_.end(), colour)) /
               static_cast<double>(pixels_.size());
    };
    std::error_code missing;
    const std::uintmax_t bytes = std::filesystem::file_size(Sound(), missing);
    // The time after all this: a step is never told to be earlier than it was.
    Sample sample{{}, share(kSungColour), share(kUnsungColour), missing ? 0 : bytes};
    sample.at = Clock::now();
    return sample;
}

void Player::ClickWords() {
    Look();
    int left = screen_.Width();
    int right = 0;
    int top = screen_.Height();
    int bottom = 0;
    for (std::size_t i = 0; i < pixels_.size(); ++i) {
        if (pixels_[i] == kSungColour) {
            const int x = static_cast<int>(i) % screen_.Width();
            const int y = static_cast<int>(i) / screen_.Width();
            top = std::min(top, y);
            bottom = std::max(bottom, y);
            left = std::min(left, x);
            right = std::max(right, x);
        }
    }
    screen_.Click((left + right) / 2, (top + bottom) / 2);
}

}  // namespace sonnel::test
