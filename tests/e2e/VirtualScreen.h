#pragma once

#include "e2e/Process.h"

#include "fakes/TempDirectory.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <optional>
#include <regex>
#include <stdexcept>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace sonnel::test {

/// An X server without a screen of its own, whose picture lies in a mapped file: looking at it
/// costs the server and the program nothing. Keys and clicks go through xdotool.
class VirtualScreen {
  public:
    static constexpr std::size_t Width = 900;
    static constexpr std::size_t Height = 500;

    /// Throws when the server does not come up.
    VirtualScreen()
        // Without -noreset the server starts anew whenever its last client leaves.
        : server_({"Xvfb", "-displayfd", "1", "-screen", "0", "900x500x24", "-nolisten", "tcp",
                   "-noreset", "-fbdir", directory_.Path().string()},
                  directory_ / "server.log") {
        WaitUntil([this] { return !NumberLine(server_.Output()).empty() || !server_.Running(); },
                  kPatience);
        display_ = ":" + NumberLine(server_.Output());
        if (display_ == ":") {
            throw std::runtime_error("no X server: " + server_.Output());
        }
        Map(directory_ / "Xvfb_screen0");
    }
    VirtualScreen(const VirtualScreen&) = delete;
    VirtualScreen& operator=(const VirtualScreen&) = delete;
    ~VirtualScreen() { munmap(file_, size_); }

    /// Lets a window manager place and decorate the windows; super+m maximises.
    void ManageWindows() {
        const auto settings = directory_.Write(
            "openbox.xml",
            "<openbox_config><keyboard><keybind key='W-m'><action name='ToggleMaximize'/>"
            "</keybind></keyboard></openbox_config>");
        manager_.emplace(std::vector<std::string>{"env", "DISPLAY=" + display_, "openbox",
                                                  "--config-file", settings.string()},
                         directory_ / "openbox.log");
        const auto ready = [this] { return !NumberLine(Xdotool({"get_num_desktops"})).empty(); };
        if (!WaitUntil(ready, kPatience)) {
            throw std::runtime_error("no window manager: " + manager_->Output());
        }
    }
    /// As in the environment variable DISPLAY.
    const std::string& Display() const { return display_; }
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
        return NumberLine(Xdotool({"search", "--onlyvisible", "--name", title}));
    }
    /// Place and size of a window's contents on the screen, as text.
    std::string Place(const std::string& window) const {
        // After a line with the window's number.
        const std::string lines = Xdotool({"getwindowgeometry", "--shell", window});
        return lines.substr(std::min(lines.find('\n'), lines.size()));
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
    void Click(std::size_t x, std::size_t y) const {
        Xdotool({"mousemove", std::to_string(x), std::to_string(y), "click", "1"});
    }

  private:
    static constexpr std::chrono::seconds kPatience{10};

    /// The first line that is a number: programs may have something to complain about before it.
    static std::string NumberLine(const std::string& output) {
        static const std::regex line("(?:^|\n)([0-9]+)\n");
        std::smatch found;
        return std::regex_search(output, found, line) ? found[1].str() : "";
    }
    std::string Xdotool(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {"env", "DISPLAY=" + display_, "xdotool"});
        Process process(arguments, directory_ / "xdotool.log");
        if (!process.WaitForEnd(kPatience)) {
            throw std::runtime_error("xdotool hangs");
        }
        return process.Output();
    }
    /// Maps the picture, an XWD file: a header of words that begin with the highest byte, a table
    /// of colours, the pixels.
    void Map(const std::filesystem::path& path) {
        size_ = std::filesystem::file_size(path);
        const int handle = open(path.c_str(), O_RDONLY | O_CLOEXEC);
        file_ = mmap(nullptr, size_, PROT_READ, MAP_SHARED, handle, 0);
        close(handle);
        if (file_ == MAP_FAILED) {
            throw std::runtime_error("the screen's picture cannot be read");
        }
        const auto* header = static_cast<const std::uint8_t*>(file_);
        const auto word = [header](std::size_t number) {
            return std::size_t{header[4 * number + 2]} * 256 + header[4 * number + 3];
        };
        constexpr std::size_t bytesPerColour = 12;
        const std::size_t first = word(0) + bytesPerColour * word(19);
        if (word(12) != 4 * Width || first + 4 * Width * Height > size_) {
            throw std::runtime_error("the screen's picture has an unknown form");
        }
        pixels_ = header + first;
    }

    TempDirectory directory_;
    Process server_;
    std::optional<Process> manager_;
    std::string display_;
    std::size_t size_ = 0;
    void* file_ = nullptr;
    const std::uint8_t* pixels_ = nullptr;
};

}  // namespace sonnel::test
