#pragma once

#include "e2e/Process.h"

#include "fakes/TempDirectory.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace sonnel::test {

/// An X server without a screen of its own, whose picture lies in a mapped file: looking at it
/// costs the server and the program nothing. Keys and clicks go through xdotool.
class Screen {
  public:
    /// Throws when the server does not come up.
    Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;
    ~Screen();

    /// As in the environment variable DISPLAY.
    const std::string& Display() const { return display_; }

    /// Copies the picture: a row after the other, 0xRRGGBB each.
    void Grab(std::vector<std::uint32_t>& pixels) const;
    int Width() const { return width_; }
    int Height() const { return height_; }

    /// The visible window with exactly this title, or one whose title begins with it.
    std::optional<std::string> Window(const std::string& title) const;
    std::optional<std::string> WindowBeginning(const std::string& title) const;
    /// Gives the window the keyboard and presses a key in it.
    void Press(const std::string& window, const std::string& key) const;
    void Click(int x, int y) const;

  private:
    std::optional<std::string> Search(const std::string& pattern) const;
    std::string Xdotool(std::vector<std::string> arguments) const;
    void Map(const std::filesystem::path& file);

    TempDirectory directory_;
    Process server_;
    std::string display_;
    std::span<const std::uint8_t> file_;
    std::size_t first_ = 0;   // byte of the first pixel
    std::size_t stride_ = 0;  // bytes of a row
    int width_ = 0;
    int height_ = 0;
};

}  // namespace sonnel::test
