#include "platform/midi/Chase.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace sonnel {
namespace {

constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

enum Controller : std::uint8_t {
    BankMsb = 0,
    DataEntryMsb = 6,
    BankLsb = 32,
    DataEntryLsb = 38,
    DataIncrement = 96,
    DataDecrement = 97,
    NrpnLsb = 98,
    RpnMsb = 101,
    AllSoundOff = 120,
    ResetAllControllers = 121,
    AllNotesOff = 123,
    OmniOff = 124
};

/// Controllers whose effect depends on earlier ones of this group.
bool DependsOnOrder(std::uint8_t controller) {
    return controller == DataEntryMsb || controller == DataEntryLsb ||
           (controller >= DataIncrement && controller <= RpnMsb) ||
           controller == ResetAllControllers || controller >= OmniOff;
}

/// The chased events that are in force for one channel, by their places in the list.
struct Channel {
    Channel() {
        controllers.fill(kNone);
        keyPressures.fill(kNone);
    }

    std::array<std::uint32_t, 128> controllers{};
    std::array<std::uint32_t, 128> keyPressures{};
    std::array<std::uint32_t, 2> programBank{kNone, kNone};
    std::uint32_t program = kNone;
    std::uint32_t bend = kNone;
    std::uint32_t pressure = kNone;
    std::uint32_t lastOrdered = kNone;
    std::uint8_t lastOrderedController = 0;
};

class Chaser {
  public:
    void Add(std::uint32_t number, const SequenceEvent& event) {
        Channel& channel = channels_.at(event.status & 0x0FU);
        switch (event.status & 0xF0U) {
            case 0xA0:
                Replace(channel.keyPressures.at(event.data1), number);
                break;
            case 0xB0:
                AddController(channel, number, event.data1);
                break;
            case 0xC0:
                Replace(channel.program, number);
                TakeBank(channel, 0, BankMsb);
                TakeBank(channel, 1, BankLsb);
                break;
            case 0xD0:
                Replace(channel.pressure, number);
                break;
            case 0xE0:
                Replace(channel.bend, number);
                break;
            case 0xF0:
                AddExclusive(number);
                break;
            default:
                break;
        }
    }

    std::vector<std::uint32_t> Take() {
        list_.erase(std::remove(list_.begin(), list_.end(), kNone), list_.end());
        return std::move(list_);
    }

  private:
    /// Keeps only the newest event of a kind, at its own place in the order.
    void Replace(std::uint32_t& place, std::uint32_t number) {
        Drop(place);
        place = static_cast<std::uint32_t>(list_.size());
        list_.push_back(number);
    }

    void Drop(std::uint32_t place) {
        if (place != kNone) {
            list_[place] = kNone;
        }
    }

    /// The effect of a system-exclusive message is unknown, so it is kept, and so are the data
    /// entries before it, whose parameter selection it may change.
    void AddExclusive(std::uint32_t number) {
        list_.push_back(number);
        for (Channel& channel : channels_) {
            channel.lastOrdered = kNone;
        }
    }

    void AddController(Channel& channel, std::uint32_t number, std::uint8_t controller) {
        if (controller == AllSoundOff || controller == AllNotesOff) {
            return;
        }
        if (!DependsOnOrder(controller)) {
            Replace(channel.controllers.at(controller), number);
            return;
        }
        const bool steps = controller == DataIncrement || controller == DataDecrement;
        if (steps || channel.lastOrderedController != controller) {
            channel.lastOrdered = kNone;
        }
        channel.lastOrderedController = controller;
        Replace(channel.lastOrdered, number);
    }

    /// A program comes from the bank selected before it. A bank selected later belongs to the next
    /// program and must not replace this one's.
    void TakeBank(Channel& channel, std::size_t part, Controller controller) {
        std::uint32_t& selected = channel.controllers.at(controller);
        if (selected != kNone) {
            Drop(channel.programBank.at(part));
            channel.programBank.at(part) = selected;
            selected = kNone;
        }
    }

    std::array<Channel, 16> channels_;
    std::vector<std::uint32_t> list_;
};

}  // namespace

std::vector<std::uint32_t> Chase(const Sequence& sequence, std::size_t end) {
    Chaser chaser;
    const auto count = static_cast<std::uint32_t>(std::min(end, sequence.events.size()));
    for (std::uint32_t number = 0; number < count; ++number) {
        chaser.Add(number, sequence.events[number]);
    }
    return chaser.Take();
}

}  // namespace sonnel
