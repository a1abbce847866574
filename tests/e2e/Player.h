#pragma once

#include "e2e/Process.h"
#include "e2e/Recording.h"
#include "e2e/Screen.h"

#include "fakes/TempDirectory.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace sonnel::test {

/// The player on a screen of its own, with settings and songs of its own.
class Player {
  public:
    /// Starts it with a song of its library, named without extension, on the command line.
    explicit Player(const std::string& song);

    Screen& OnScreen() { return screen_; }
    Process& Program() { return *process_; }
    /// A file of the library.
    std::filesystem::path Library(const std::string& name) const {
        return home_ / ("Karaoke/" + name);
    }
    std::filesystem::path Sound() const { return home_ / "heard.wav"; }

    bool MainWindowShown();
    /// Presses a key in the main window.
    void Press(const std::string& key) { screen_.Press(window_, key); }
    /// A click in the middle of the words shown.
    void ClickWords();

    /// What there is to be seen and heard now.
    Sample Look();
    /// Looks every 10 ms until `enough` says yes to what it saw; false when that takes longer than
    /// `limit`. Everything seen is kept.
    template <typename Enough>
    bool Watch(Enough enough, std::chrono::milliseconds limit);
    void Watch(std::chrono::milliseconds time) {
        Watch([](const Sample&) { return false; }, time);
    }
    const std::vector<Sample>& Seen() const { return seen_; }

  private:
    [[nodiscard]] std::vector<std::string> Command(const std::string& song) const;

    TempDirectory home_;
    Screen screen_;
    std::unique_ptr<Process> process_;
    std::string window_;
    std::vector<std::uint32_t> pixels_;
    std::vector<Sample> seen_;
};

template <typename Enough>
bool Player::Watch(Enough enough, std::chrono::milliseconds limit) {
    return WaitUntil(
        [&] {
            seen_.push_back(Look());
            return enough(seen_.back());
        },
        limit);
}

}  // namespace sonnel::test
