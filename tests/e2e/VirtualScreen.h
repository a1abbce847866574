#pragma once

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtEndian>
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace sonnel::test {

constexpr std::chrono::seconds kPatience(15);

/// Asks a question every 10 ms until the answer is yes; false when it still is not after `limit`.
template <typename Question>
bool WaitUntil(Question question, std::chrono::milliseconds limit = kPatience) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!question()) {
        if (std::chrono::steady_clock::now() >= end) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
}

/// A program that runs beside the test. It is ended with the object.
class Program : public QProcess {
  public:
    Program() { setProcessChannelMode(ForwardedErrorChannel); }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program() override {
        terminate();
        if (state() != NotRunning && !waitForFinished(5000)) {
            kill();
            waitForFinished();
        }
    }
};

/// An X server without a screen of its own, whose picture lies in a mapped file: looking at it
/// costs the server and the program nothing. Keys go through xdotool. Programs that are
/// started while it lives show their windows on it.
class VirtualScreen {
  public:
    static constexpr std::size_t Width = 900;
    static constexpr std::size_t Height = 500;

    /// Throws when the server does not come up.
    VirtualScreen() {
        // Without -noreset the server starts anew whenever its last client leaves.
        server_.start("Xvfb", {"-displayfd", "1", "-screen", "0", "900x500x24", "-nolisten", "tcp",
                               "-noreset", "-fbdir", directory_.path()});
        while (!server_.canReadLine() && server_.waitForReadyRead(10000)) {
        }
        const QByteArray display = server_.readLine().trimmed();
        if (display.isEmpty()) {
            throw std::runtime_error("no X server");
        }
        qputenv("DISPLAY", ":" + display);
        Map();
    }

    /// Lets a window manager place and decorate the windows.
    void ManageWindows() {
        const QString settings = directory_.filePath("openbox.xml");
        std::ofstream(settings.toStdString()) << "<openbox_config/>";
        manager_.start("openbox", {"--config-file", settings});
        if (!WaitUntil([this] { return !Xdotool({"get_num_desktops"}).empty(); })) {
            throw std::runtime_error("no window manager");
        }
    }
    /// The picture: a row after the other, 0xRRGGBB each.
    std::vector<std::uint32_t> Grab() const {
        std::vector<std::uint32_t> pixels(Width * Height);
        std::memcpy(pixels.data(), pixels_, 4 * Width * Height);
        for (std::uint32_t& pixel : pixels) {
            pixel &= 0xFFFFFFU;
        }
        return pixels;
    }
    /// The visible window whose title matches a regular expression, "" when there is none.
    std::string Window(const std::string& title) const {
        std::string windows;
        // The search fails when a window goes while it is under way.
        for (int i = 0; i < 3 && windows.empty(); ++i) {
            windows = Xdotool({"search", "--onlyvisible", "--name", title});
        }
        return windows.substr(0, windows.find('\n'));
    }
    /// Place and size of a window's contents on the screen, as text.
    std::string Place(const std::string& window) const {
        const std::string lines = Xdotool({"getwindowgeometry", "--shell", window});
        return lines.substr(std::min(lines.find('\n'), lines.size()));  // after the window's number
    }
    void MoveAndResize(const std::string& window, int x, int y, int width, int height) const {
        Xdotool({"windowsize", "--sync", window, std::to_string(width), std::to_string(height),
                 "windowmove", "--sync", window, std::to_string(x), std::to_string(y)});
    }
    /// Gives the window the keyboard and presses a key in it.
    void Press(const std::string& window, const std::string& key) const {
        Xdotool({"windowfocus", "--sync", window, "key", key});
    }
    /// Types a text into the field of a window that has the keyboard.
    void Type(const std::string& window, const std::string& text) const {
        Xdotool({"windowfocus", "--sync", window, "type", text});
    }

  private:
    static std::string Xdotool(const std::vector<std::string>& arguments) {
        Program program;
        program.setProcessChannelMode(QProcess::SeparateChannels);
        QStringList words;
        for (const std::string& argument : arguments) {
            words << QString::fromStdString(argument);
        }
        program.start("xdotool", words);
        if (!program.waitForFinished(10000)) {
            throw std::runtime_error("xdotool hangs");
        }
        return program.readAllStandardOutput().toStdString();
    }
    /// Maps the picture, an XWD file: a header of words that begin with the highest byte, a table
    /// of colours, the pixels.
    void Map() {
        file_.setFileName(directory_.filePath("Xvfb_screen0"));
        const uchar* header =
            file_.open(QIODevice::ReadOnly) ? file_.map(0, file_.size()) : nullptr;
        if (header == nullptr) {
            throw std::runtime_error("the screen's picture cannot be read");
        }
        const auto word = [header](std::size_t number) {
            return qFromBigEndian<quint32>(header + 4 * number);
        };
        constexpr std::size_t bytesPerColour = 12;
        pixels_ = header + word(0) + bytesPerColour * word(19);
        if (word(12) != 4 * Width || pixels_ + 4 * Width * Height > header + file_.size()) {
            throw std::runtime_error("the screen's picture has an unknown form");
        }
    }

    QTemporaryDir directory_;
    Program server_;
    Program manager_;
    QFile file_;
    const uchar* pixels_ = nullptr;
};

}  // namespace sonnel::test
