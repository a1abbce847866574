#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace sonnel::test {

/// Writes MIDI files for tests. Times are ticks from the start, in any order; events at the same
/// tick keep the order in which they were added.
class SmfBuilder {
  public:
    explicit SmfBuilder(int format = 1, int division = 480)
        : format_(format), division_(division) {}

    SmfBuilder& Track() {
        tracks_.emplace_back();
        return *this;
    }
    SmfBuilder& Raw(std::uint32_t tick, std::string bytes) {
        if (tracks_.empty()) {
            Track();
        }
        tracks_.back().push_back({tick, std::move(bytes)});
        return *this;
    }
    SmfBuilder& Message(std::uint32_t tick, std::initializer_list<int> bytes) {
        std::string text;
        for (const int byte : bytes) {
            text.push_back(static_cast<char>(byte));
        }
        return Raw(tick, text);
    }
    SmfBuilder& Note(std::uint32_t tick, std::uint32_t length, int key, int channel = 0) {
        Message(tick, {0x90 + channel, key, 100});
        return Message(tick + length, {0x80 + channel, key, 64});
    }
    SmfBuilder& Control(std::uint32_t tick, int controller, int value, int channel = 0) {
        return Message(tick, {0xB0 + channel, controller, value});
    }
    SmfBuilder& Program(std::uint32_t tick, int program, int channel = 0) {
        return Message(tick, {0xC0 + channel, program});
    }
    SmfBuilder& Tempo(std::uint32_t tick, int micros) {
        return Message(tick, {0xFF, 0x51, 3, micros >> 16, (micros >> 8) & 0xFF, micros & 0xFF});
    }
    SmfBuilder& Text(std::uint32_t tick, int type, std::string_view text) {
        std::string bytes{'\xFF', static_cast<char>(type)};
        return Raw(tick, bytes + Number(static_cast<std::uint32_t>(text.size())) += text);
    }
    /// A packet of an exclusive message (status F0) or what continues it (status F7).
    SmfBuilder& Exclusive(std::uint32_t tick, std::string_view data, char status = '\xF0') {
        const std::string size = Number(static_cast<std::uint32_t>(data.size()));
        return Raw(tick, status + size + std::string(data));
    }

    std::string Bytes() const {
        std::string file = "MThd" + Big(6, 4) + Big(format_, 2) +
                           Big(static_cast<int>(tracks_.size()), 2) + Big(division_, 2);
        for (const auto& track : tracks_) {
            file += TrackChunk(track);
        }
        return file;
    }
    /// All but the last `count` bytes.
    std::string Truncated(std::size_t count) const {
        const std::string bytes = Bytes();
        return bytes.substr(0, bytes.size() - std::min(count, bytes.size()));
    }

    static std::string Big(int value, int bytes) {
        std::string text;
        for (int i = bytes - 1; i >= 0; --i) {
            text.push_back(static_cast<char>((value >> (8 * i)) & 0xFF));
        }
        return text;
    }
    static std::string Number(std::uint32_t value) {
        std::string text(1, static_cast<char>(value & 0x7FU));
        while ((value >>= 7U) > 0) {
            text.insert(text.begin(), static_cast<char>(0x80U | (value & 0x7FU)));
        }
        return text;
    }

  private:
    struct Event {
        std::uint32_t tick;
        std::string bytes;
    };

    static std::string TrackChunk(std::vector<Event> events) {
        std::stable_sort(events.begin(), events.end(),
                         [](const Event& a, const Event& b) { return a.tick < b.tick; });
        std::string data;
        std::uint32_t tick = 0;
        for (const Event& event : events) {
            data += Number(event.tick - tick) + event.bytes;
            tick = event.tick;
        }
        data += std::string("\0\xFF\x2F\0", 4);
        return "MTrk" + Big(static_cast<int>(data.size()), 4) + data;
    }

    int format_;
    int division_;
    std::vector<std::vector<Event>> tracks_;
};

}  // namespace sonnel::test
