#pragma once

#include "e2e/VirtualScreen.h"

#include "fakes/TempDirectory.h"

#include <filesystem>

namespace sonnel::test {

/// The environment of a program with a home of its own and windows on the virtual screen.
inline QProcessEnvironment EnvironmentIn(const std::filesystem::path& home) {
    auto environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"}) {
        environment.insert(name, QString::fromStdString(home.string()));
    }
    environment.remove("WAYLAND_DISPLAY");
    environment.remove("DBUS_SESSION_BUS_ADDRESS");
    environment.insert("QT_QPA_PLATFORM", "xcb");
    return environment;
}

/// The player on a screen of its own, with settings and songs of its own.
class Player {
  public:
    // Nothing else on the screen has the colours that it is given for the words.
    static constexpr std::uint32_t kBackground = 0x000040;
    static constexpr std::uint32_t kSung = 0xFFFF00;
    static constexpr std::uint32_t kUnsung = 0x00FF00;

    /// Starts it with a song of its library, named without extension, on the command line.
    explicit Player(const std::string& song) {
        PrepareHome();
        home_.Write("sonnel/settings.conf",
                    "[Opzioni]\r\nCompensazione=0\r\nOpenDir=" + Library("").string() +
                        "\r\n"
                        "[Queue]\r\nSeconds=1\r\n[Colori]\r\n"
                        "Testo=65280\r\nSelezione=65535\r\nSfondo=4194304\r\n");
        Start({QString::fromStdString(Library(song).string())});
    }
    /// Starts it for the first time, without a song, where a window manager is at work.
    Player() {
        PrepareHome();
        screen.ManageWindows();
        Start({});
    }
    /// Starts it, once more when it has ended, in the home it has.
    void Start(const QStringList& arguments) {
        started = std::chrono::steady_clock::now();
        process_.start(SONNEL_PROGRAM, arguments);
    }

    /// A file of the library.
    std::filesystem::path Library(const std::string& name) const {
        return home_ / ("Karaoke/" + name);
    }
    std::filesystem::path Sound() const { return home_ / "heard.wav"; }
    std::string Queue() const { return Content(home_ / "sonnel/queue"); }
    std::string Settings() const { return Content(home_ / "sonnel/settings.conf"); }
    std::string MainWindow() const { return screen.Window("^Sonnel Player 98 4.1 beta"); }
    /// Presses a key in the main window.
    void Press(const std::string& key) const { screen.Press(MainWindow(), key); }
    /// Ends it as a crash would.
    void Kill() {
        process_.kill();
        process_.waitForFinished();
    }
    /// Whether the menu's Exit ends it in time and well.
    bool Exits() {
        Press("ctrl+x");
        return process_.waitForFinished(15000) && process_.exitStatus() == QProcess::NormalExit &&
               process_.exitCode() == 0;
    }
    /// How many pixels of the screen have a colour, 0xRRGGBB.
    std::ptrdiff_t Pixels(std::uint32_t colour) const {
        const auto pixels = screen.Grab();
        return std::count(pixels.begin(), pixels.end(), colour);
    }

    VirtualScreen screen;
    std::chrono::steady_clock::time_point started;  ///< just before the program was

  private:
    void PrepareHome() {
        std::filesystem::create_directory(home_ / "sonnel");
        std::filesystem::copy(SONNEL_SONGS, home_ / "Karaoke");
        auto environment = EnvironmentIn(home_.Path());
        environment.insert("SONNEL_AUDIO", "file:" + QString::fromStdString(Sound().string()));
        process_.setProcessEnvironment(environment);
    }

    TempDirectory home_;
    Program process_;
};

}  // namespace sonnel::test
