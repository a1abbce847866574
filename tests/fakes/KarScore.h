#pragma once

#include "fakes/SmfBuilder.h"

#include <cstdint>
#include <sstream>
#include <string>

namespace sonnel::test {

/// A karaoke file from a score, whose events are parted by "|": "TIME TEXT", "TIME tempo
/// MICROSECONDS", "TIME lyric TEXT" or "TIME note". TIME is in tenths of a second at 120 quarter
/// notes a minute, which is 96 ticks, or in ticks with "=" before it. "track" begins the next
/// track.
inline SmfBuilder KarScore(const std::string& score, int division = 480) {
    SmfBuilder file(1, division);
    std::istringstream events(score);
    for (std::string event; std::getline(events, event, '|');) {
        if (event == "track") {
            file.Track();
            continue;
        }
        const std::string what = event.substr(event.find(' ') + 1);
        const std::size_t time =
            event.front() == '=' ? std::stoul(event.substr(1)) : 96 * std::stoul(event);
        const auto tick = static_cast<std::uint32_t>(time);
        if (what.starts_with("tempo ")) {
            file.Tempo(tick, std::stoi(what.substr(6)));
        } else if (what == "note") {
            file.Note(tick, 1, 60);
        } else if (what.starts_with("lyric ")) {
            file.Text(tick, 5, what.substr(6));
        } else {
            file.Text(tick, 1, what);
        }
    }
    return file;
}

}  // namespace sonnel::test
