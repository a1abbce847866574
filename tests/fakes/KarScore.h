#pragma once

#include "fakes/SmfBuilder.h"

#include <cstdint>
#include <sstream>
#include <string>

namespace sonnel::test {

/// A karaoke file from a score of one event a line: "TIME TEXT", or "TIME tempo MICROSECONDS", or
/// "TIME note". TIME is in tenths of a second at 120 quarter notes a minute, which is 96 ticks, or
/// in ticks with "=" before it. A line "track" begins the next track.
inline SmfBuilder KarScore(const std::string& score, int division = 480) {
    SmfBuilder file(1, division);
    std::istringstream lines(score);
    for (std::string line; std::getline(lines, line);) {
        if (line == "track") {
            file.Track();
            continue;
        }
        const std::size_t blank = line.find(' ');
        const bool ticks = line.starts_with('=');
        const auto time = static_cast<std::uint32_t>(std::stoul(line.substr(ticks ? 1 : 0, blank)));
        const std::uint32_t tick = ticks ? time : 96 * time;
        const std::string what = line.substr(blank + 1);
        if (what.starts_with("tempo ")) {
            file.Tempo(tick, std::stoi(what.substr(6)));
        } else if (what == "note") {
            file.Note(tick, 1, 60);
        } else {
            file.Text(tick, 1, what);
        }
    }
    return file;
}

}  // namespace sonnel::test
