#include "e2e/Screen.h"

#include <cstring>
#include <sstream>
#include <stdexcept>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace sonnel::test {
namespace {

constexpr std::chrono::seconds kPatience(10);
constexpr std::uint32_t kRgb = 0xFFFFFF;

/// Fields of an XWD file's header, in words that begin with the highest byte.
enum XwdField : std::size_t {
    kHeaderSize = 0,
    kWidth = 4,
    kHeight = 5,
    kBitsPerPixel = 11,
    kBytesPerLine = 12,
    kColours = 19,
    kFields = 25
};
constexpr std::size_t kBytesPerColour = 12;

std::size_t Field(std::span<const std::uint8_t> file, XwdField field) {
    std::size_t value = 0;
    for (const std::uint8_t byte : file.subspan(4 * field, 4)) {
        value = value << 8 | byte;
    }
    return value;
}

/// The first line that is a number: programs may have something to complain about before it.
std::string NumberLine(const std::string& output) {
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line) && !lines.eof();) {
        if (!line.empty() && line.find_first_not_of("0123456789") == std::string::npos) {
            return line;
        }
    }
    return "";
}

}  // namespace

Screen::Screen()
    // Without -noreset the server starts anew whenever its last client leaves.
    : server_({"Xvfb", "-displayfd", "1", "-screen", "0", "900x500x24", "-nolisten", "tcp",
               "-noreset", "-fbdir", directory_.Path().string()},
              directory_ / "server.log") {
    const auto ready = [this] {
        display_ = NumberLine(server_.Output());
        return !display_.empty() || !server_.Running();
    };
    if (!WaitUntil(ready, kPatience) || display_.empty()) {
        throw std::runtime_error("no X server: " + server_.Output());
    }
    display_.insert(0, ":");
    Map(directory_ / "Xvfb_screen0");
}

Screen::~Screen() {
    munmap(const_cast<std::uint8_t*>(file_.data()), file_.size());
}

void Screen::Map(const std::filesystem::path& file) {
    const std::size_t size = std::filesystem::file_size(file);
    const int handle = open(file.c_str(), O_RDONLY | O_CLOEXEC);
    void* memory = mmap(nullptr, size, PROT_READ, MAP_SHARED, handle, 0);
    close(handle);
    if (memory == MAP_FAILED || size < 4 * kFields) {
        throw std::runtime_error("the screen's picture cannot be read");
    }
    file_ = {static_cast<const std::uint8_t*>(memory), size};
    first_ = Field(file_, kHeaderSize) + kBytesPerColour * Field(file_, kColours);
    stride_ = Field(file_, kBytesPerLine);
    width_ = static_cast<int>(Field(file_, kWidth));
    height_ = static_cast<int>(Field(file_, kHeight));
    if (Field(file_, kBitsPerPixel) != 32 ||
        first_ + stride_ * static_cast<std::size_t>(height_) > size) {
        throw std::runtime_error("the screen's picture has an unknown form");
    }
}

void Screen::Grab(std::vector<std::uint32_t>& pixels) const {
    const auto width = static_cast<std::size_t>(width_);
    const auto height = static_cast<std::size_t>(height_);
    pixels.resize(width * height);
    for (std::size_t y = 0; y < height; ++y) {
        std::memcpy(&pixels[y * width], &file_[first_ + y * stride_], 4 * width);
    }
    for (std::uint32_t& pixel : pixels) {
        pixel &= kRgb;
    }
}

std::string Screen::Xdotool(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {"env", "DISPLAY=" + display_, "xdotool"});
    Process process(arguments, directory_ / "xdotool.log");
    if (!process.WaitForEnd(kPatience)) {
        throw std::runtime_error("xdotool hangs");
    }
    return process.Output();
}

std::optional<std::string> Screen::Search(const std::string& pattern) const {
    const std::string id = NumberLine(Xdotool({"search", "--onlyvisible", "--name", pattern}));
    return id.empty() ? std::nullopt : std::optional(id);
}

std::optional<std::string> Screen::Window(const std::string& title) const {
    return Search("^" + title + "$");
}

std::optional<std::string> Screen::WindowBeginning(const std::string& title) const {
    return Search("^" + title);
}

void Screen::Press(const std::string& window, const std::string& key) const {
    Xdotool({"windowfocus", "--sync", window, "key", key});
}

void Screen::Click(int x, int y) const {
    Xdotool({"mousemove", std::to_string(x), std::to_string(y), "click", "1"});
}

}  // namespace sonnel::test
