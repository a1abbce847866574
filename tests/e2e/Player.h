#pragma once

#include "e2e/Process.h"
#include "e2e/VirtualScreen.h"

#include "fakes/TempDirectory.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

namespace sonnel::test {

using Clock = std::chrono::steady_clock;

/// What could be seen, and how long the sound file was, at one moment.
struct Sample {
    Clock::time_point at;
    std::ptrdiff_t sung = 0;    ///< pixels of the screen in the selection colour
    std::ptrdiff_t unsung = 0;  ///< in the text colour
    std::uintmax_t soundBytes = 0;
};

/// The player on a screen of its own, with settings and songs of its own.
class Player {
  public:
    static constexpr std::uint32_t kBackground = 0x000040;  ///< of the words

    /// Starts it with a song of its library, named without extension, on the command line.
    explicit Player(const std::string& song) {
        PrepareHome();
        home_.Write("sonnel/settings.conf",
                    "[Opzioni]\r\nCompensazione=0\r\nOpenDir=" + Library("").string() +
                        "\r\n"
                        "[Colori]\r\n"
                        "Testo=65280\r\nSelezione=65535\r\nSfondo=4194304\r\n");
        Start({Library(song).string()});
    }
    /// Starts it for the first time, without a song, where a window manager is at work.
    Player() {
        PrepareHome();
        screen.ManageWindows();
        Start({});
    }
    /// Starts it, once more when it has ended, in the home it has.
    void Start(const std::vector<std::string>& arguments) {
        started = Clock::now();
        process_.emplace(Command(arguments), home_ / "player.log");
    }

    /// A file of the library.
    std::filesystem::path Library(const std::string& name) const {
        return home_ / ("Karaoke/" + name);
    }
    std::filesystem::path Sound() const { return home_ / "heard.wav"; }
    std::string MainWindow() const { return screen.Window("^Sonnel Player 98 4.1 beta"); }
    /// Presses a key in the main window.
    void Press(const std::string& key) const { screen.Press(MainWindow(), key); }
    /// A click on a letter that is sung.
    void ClickWords() const {
        const auto pixels = screen.Grab();
        const auto place = static_cast<std::size_t>(
            std::find(pixels.begin(), pixels.end(), kSungColour) - pixels.begin());
        screen.Click(place % VirtualScreen::Width, place / VirtualScreen::Width);
    }
    /// The exit status after the menu's Exit, which it must take within `limit`.
    std::optional<int> Exit(std::chrono::milliseconds limit) {
        Press("ctrl+x");
        return process_->WaitForEnd(limit);
    }
    std::string Output() const { return process_->Output(); }
    std::string Settings() const { return Content(home_ / "sonnel/settings.conf"); }

    /// How many pixels of the screen have a colour, 0xRRGGBB.
    std::ptrdiff_t Pixels(std::uint32_t colour) const {
        const auto pixels = screen.Grab();
        return std::count(pixels.begin(), pixels.end(), colour);
    }
    /// What there is to be seen and heard now.
    Sample Look() const {
        const auto pixels = screen.Grab();
        std::error_code missing;
        const std::uintmax_t bytes = std::filesystem::file_size(Sound(), missing);
        Sample sample{{},
                      std::count(pixels.begin(), pixels.end(), kSungColour),
                      std::count(pixels.begin(), pixels.end(), kUnsungColour),
                      missing ? 0 : bytes};
        // The time after all this: a step is never told to be earlier than it was.
        sample.at = Clock::now();
        return sample;
    }
    /// Looks every 10 ms until `enough` says yes to what it saw; false when that takes longer than
    /// `limit`. Everything seen is kept.
    template <typename Enough>
    bool Watch(Enough enough, std::chrono::milliseconds limit) {
        return WaitUntil([&] { return enough(seen.emplace_back(Look())); }, limit);
    }
    void Watch(std::chrono::milliseconds time) {
        Watch([](const Sample&) { return false; }, time);
    }

    VirtualScreen screen;
    std::vector<Sample> seen;
    Clock::time_point started;  ///< just before the program was

  private:
    // Nothing else on the screen has these.
    static constexpr std::uint32_t kSungColour = 0xFFFF00;
    static constexpr std::uint32_t kUnsungColour = 0x00FF00;

    void PrepareHome() const {
        std::filesystem::create_directory(home_ / "sonnel");
        std::filesystem::copy(SONNEL_SONGS, home_ / "Karaoke");
    }
    /// The command that starts it, in a home with all that it needs.
    std::vector<std::string> Command(const std::vector<std::string>& arguments) const {
        const std::string home = home_.Path().string();
        std::vector<std::string> command = {"env",
                                            "--unset=WAYLAND_DISPLAY",
                                            "--unset=DBUS_SESSION_BUS_ADDRESS",
                                            "DISPLAY=" + screen.Display(),
                                            "QT_QPA_PLATFORM=xcb",
                                            "HOME=" + home,
                                            "XDG_CONFIG_HOME=" + home,
                                            "XDG_DATA_HOME=" + home,
                                            "XDG_RUNTIME_DIR=" + home,
                                            "SONNEL_AUDIO=file:" + Sound().string(),
                                            SONNEL_PROGRAM};
        command.insert(command.end(), arguments.begin(), arguments.end());
        return command;
    }

    TempDirectory home_;
    std::optional<Process> process_;
};

}  // namespace sonnel::test
