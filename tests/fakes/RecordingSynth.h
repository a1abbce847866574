#pragma once

#include "platform/Synthesizer.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <utility>
#include <vector>

namespace sonnel::test {

/// Keeps every message with the frame it came at, and what a General MIDI synthesizer would make of
/// them. While a note sounds it renders a constant 1.
class RecordingSynth : public Synthesizer {
  public:
    using Message = std::vector<std::uint8_t>;

    struct State {
        /// Values by channel, controller (or one of `Kind`) and key or parameter.
        std::map<std::array<int, 3>, int> values;
        std::vector<Message> exclusive;
        bool operator==(const State&) const = default;
    };

    std::optional<Error> Prepare(int /*sampleRate*/) override { return prepareError; }
    void Reset() noexcept override {
        state = {};
        sounding.clear();
    }
    void ChannelMessage(std::uint8_t status, std::uint8_t data1,
                        std::uint8_t data2) noexcept override {
        recorded.emplace_back(frame, Message{status, data1, data2});
        Apply(status & 0xF0, status & 0x0F, data1, data2);
    }
    bool PlaysDrums(int channel) noexcept override { return channel == 9; }
    void SystemExclusive(std::span<const std::uint8_t> data) noexcept override {
        recorded.emplace_back(frame, Message(data.begin(), data.end()));
        state.exclusive.push_back(recorded.back().second);
    }
    void AllSoundOff() noexcept override { sounding.clear(); }
    void Render(std::span<float> out) noexcept override {
        std::fill(out.begin(), out.end(), sounding.empty() ? 0.0F : 1.0F);
        frame += static_cast<std::int64_t>(out.size() / 2);
    }

    std::optional<Error> prepareError;
    std::int64_t frame = 0;  ///< rendered so far
    std::vector<std::pair<std::int64_t, Message>> recorded;
    std::set<std::pair<int, int>> sounding;  ///< channel and key
    State state;

  private:
    /// What is kept besides controllers: a status, or one of these.
    enum Kind { ProgramBank = 256, SelectedParameters };

    int& At(int channel, int kind, int parameter = 0) {
        return state.values[{channel, kind, parameter}];
    }

    void Apply(int status, int channel, int data1, int data2) {
        if (status == 0xB0) {
            Control(channel, data1, data2);
        } else if (status >= 0xA0) {
            At(channel, status, status == 0xA0 ? data1 : 0) = data2 * 128 + data1;
            if (status == 0xC0) {
                At(channel, ProgramBank) = At(channel, 0) * 128 + At(channel, 32);
            }
        } else {
            sounding.erase({channel, data1});
            if (status == 0x90 && data2 > 0) {
                sounding.insert({channel, data1});
            }
        }
    }

    void Control(int channel, int controller, int value) {
        if (controller == 120 || controller == 123) {
            std::erase_if(sounding, [channel](const auto& note) { return note.first == channel; });
        } else if (controller == 121) {
            for (const int reset : {1, 11, 64, 65, 66, 67, 0xD0, 0xE0, int{SelectedParameters}}) {
                state.values.erase({channel, reset, 0});
            }
        } else if (controller == 96 || controller == 97) {
            At(channel, 6, Parameter(channel)) += controller == 96 ? 1 : -1;
        } else if (controller == 6 || controller == 38) {
            At(channel, controller, Parameter(channel)) = value;
        } else {
            At(channel, controller) = value;
            if (controller >= 98 && controller <= 101) {
                At(channel, SelectedParameters) = controller / 2 * 2;  // 98: NRPN, 100: RPN
            }
        }
    }

    /// The parameter that data entries change; 0 when none is selected.
    int Parameter(int channel) {
        const int kind = At(channel, SelectedParameters);
        return kind == 0 ? 0 : kind * 16384 + At(channel, kind + 1) * 128 + At(channel, kind);
    }
};

}  // namespace sonnel::test
