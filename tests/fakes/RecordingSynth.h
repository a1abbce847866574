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

/// Keeps every message with the frame it came at, and what a General MIDI synthesiser would make of
/// them. While a note sounds it renders a constant 1.
class RecordingSynth : public Synthesizer {
  public:
    using Message = std::vector<std::uint8_t>;
    using Parameter = std::array<int, 3>;  ///< 0 for RPN or 1 for NRPN, its MSB, its LSB
    static constexpr Parameter kNoParameter{-1, 127, 127};

    struct Channel {
        int program = 0;
        std::pair<int, int> programBank{0, 0};  ///< selected when the program came
        std::map<int, int> controllers;
        int bend = 0x2000;
        int pressure = 0;
        Parameter parameter = kNoParameter;
        std::map<Parameter, std::pair<int, int>> parameters;
        bool operator==(const Channel&) const = default;
    };
    struct State {
        std::array<Channel, 16> channels;
        std::vector<Message> exclusive;
        bool operator==(const State&) const = default;
    };
    struct Recorded {
        std::int64_t frame;
        Message message;
        bool operator==(const Recorded&) const = default;
    };

    std::optional<Error> Prepare(int sampleRate) override {
        rate = sampleRate;
        return prepareError;
    }
    void Reset() noexcept override {
        state = {};
        sounding.clear();
    }
    void ChannelMessage(std::uint8_t status, std::uint8_t data1,
                        std::uint8_t data2) noexcept override {
        recorded.push_back({frame, {status, data1, data2}});
        Apply(status, data1, data2);
    }
    void SystemExclusive(std::span<const std::uint8_t> data) noexcept override {
        recorded.push_back({frame, Message(data.begin(), data.end())});
        state.exclusive.emplace_back(data.begin(), data.end());
    }
    void AllSoundOff() noexcept override { sounding.clear(); }
    void Render(std::span<float> out) noexcept override {
        std::fill(out.begin(), out.end(), sounding.empty() ? 0.0F : 1.0F);
        frame += static_cast<std::int64_t>(out.size() / 2);
    }

    int rate = 0;
    std::optional<Error> prepareError;
    std::int64_t frame = 0;  ///< rendered so far
    std::vector<Recorded> recorded;
    std::set<std::pair<int, int>> sounding;  ///< channel and key
    State state;

  private:
    void Apply(int status, int data1, int data2) {
        const int number = status & 0x0F;
        Channel& channel = state.channels.at(static_cast<std::size_t>(number));
        switch (status & 0xF0) {
            case 0x80:
                sounding.erase({number, data1});
                break;
            case 0x90:
                sounding.erase({number, data1});
                if (data2 > 0) {
                    sounding.insert({number, data1});
                }
                break;
            case 0xB0:
                Control(number, channel, data1, data2);
                break;
            case 0xC0:
                channel.program = data1;
                channel.programBank = {channel.controllers[0], channel.controllers[32]};
                break;
            case 0xD0:
                channel.pressure = data1;
                break;
            case 0xE0:
                channel.bend = data2 * 128 + data1;
                break;
            default:
                break;
        }
    }

    void Control(int number, Channel& channel, int controller, int value) {
        if (controller == 120 || controller == 123) {
            std::erase_if(sounding, [number](const auto& note) { return note.first == number; });
        } else if (controller == 121) {
            channel.bend = 0x2000;
            channel.pressure = 0;
            channel.parameter = kNoParameter;
            for (const int reset : {1, 11, 64, 65, 66, 67}) {
                channel.controllers.erase(reset);
            }
        } else if (controller >= 98 && controller <= 101) {
            channel.parameter[0] = controller >= 100 ? 0 : 1;
            channel.parameter.at(controller % 2 == 1 ? 1 : 2) = value;
        } else if (controller == 6 || controller == 38 || controller == 96 || controller == 97) {
            EnterData(channel, controller, value);
        } else {
            channel.controllers[controller] = value;
        }
    }

    static void EnterData(Channel& channel, int controller, int value) {
        if (channel.parameter[0] < 0) {
            return;
        }
        auto& [coarse, fine] = channel.parameters[channel.parameter];
        if (controller == 6) {
            coarse = value;
        } else if (controller == 38) {
            fine = value;
        } else {
            coarse += controller == 96 ? 1 : -1;
        }
    }
};

}  // namespace sonnel::test
