#include "platform/midi/Sequence.h"

#include "platform/midi/TempoMap.h"

#include <algorithm>
#include <string_view>

namespace sonnel {
namespace {

/// Adds the messages of one track to a sequence, with ticks in place of frames for now.
class TrackPlayer {
  public:
    explicit TrackPlayer(Sequence& sequence) : sequence_(sequence) {}

    void Add(const SmfFile& file, const SmfTrack& track) {
        for (const SmfEvent& event : track) {
            if (event.status == kSysExPacket && open_) {
                AddPacket(event.tick, file.Data(event));
                continue;
            }
            if (event.status != kMeta) {
                FinishExclusive();
            }
            if (event.IsChannelMessage()) {
                AddMessage(event.tick, event.status, event.data1, event.data2);
            } else if (event.status == kSysEx) {
                Begin();
                AddPacket(event.tick, file.Data(event));
            } else if (event.status == kSysExPacket) {
                AddEscape(event.tick, file.Data(event));
            }
        }
        FinishExclusive();
    }

  private:
    void AddMessage(std::uint64_t tick, std::uint8_t status, std::uint8_t data1,
                    std::uint8_t data2) {
        SequenceEvent message;
        message.frame = static_cast<std::int64_t>(tick);
        message.status = status;
        message.data1 = data1;
        message.data2 = data2;
        sequence_.events.push_back(message);
    }

    void Begin() {
        open_ = true;
        begin_ = sequence_.exclusive.size();
    }

    /// A message may come in several packets; it is complete, and due, with its last one.
    void AddPacket(std::uint64_t tick, std::string_view data) {
        tick_ = tick;
        const bool last = data.ends_with('\xF7');
        if (last) {
            data.remove_suffix(1);
        }
        sequence_.exclusive.insert(sequence_.exclusive.end(), data.begin(), data.end());
        if (last) {
            FinishExclusive();
        }
    }

    /// Many files leave out the final F7, so the next event ends a message too.
    void FinishExclusive() {
        if (!open_) {
            return;
        }
        open_ = false;
        SequenceEvent message;
        message.frame = static_cast<std::int64_t>(tick_);
        message.status = kSysEx;
        message.offset = static_cast<std::uint32_t>(begin_);
        message.size = static_cast<std::uint32_t>(sequence_.exclusive.size() - begin_);
        if (message.size > 0) {
            sequence_.events.push_back(message);
        }
    }

    /// An escape carries bytes as they would go over the wire.
    void AddEscape(std::uint64_t tick, std::string_view data) {
        while (!data.empty()) {
            const auto status = static_cast<std::uint8_t>(data.front());
            if (status == kSysEx) {
                Begin();
                AddPacket(tick, data.substr(1));
                return;
            }
            const std::size_t size = (status & 0xE0U) == 0xC0 ? 2 : 3;
            if (status < 0x80 || status > kSysEx || data.size() < size) {
                return;
            }
            const auto data2 = size == 3 ? static_cast<std::uint8_t>(data[2]) : std::uint8_t{0};
            AddMessage(tick, status, static_cast<std::uint8_t>(data[1]) & 0x7FU, data2 & 0x7FU);
            data.remove_prefix(size);
        }
    }

    Sequence& sequence_;
    bool open_ = false;
    std::size_t begin_ = 0;
    std::uint64_t tick_ = 0;
};

std::uint64_t LastTick(const SmfFile& file) {
    std::uint64_t last = 0;
    for (const SmfTrack& track : file.tracks) {
        const auto event = std::find_if(track.rbegin(), track.rend(), [](const SmfEvent& e) {
            return !e.IsMeta(kMetaEndOfTrack);
        });
        last = event == track.rend() ? last : std::max(last, event->tick);
    }
    return last;
}

}  // namespace

std::size_t Sequence::FirstAt(std::int64_t frame) const {
    const auto first = std::lower_bound(
        events.begin(), events.end(), frame,
        [](const SequenceEvent& event, std::int64_t f) { return event.frame < f; });
    return static_cast<std::size_t>(first - events.begin());
}

Sequence MakeSequence(const SmfFile& file, int rate) {
    Sequence sequence;
    sequence.rate = rate;
    for (const SmfTrack& track : file.tracks) {
        TrackPlayer(sequence).Add(file, track);
    }
    std::stable_sort(sequence.events.begin(), sequence.events.end(),
                     [](const auto& a, const auto& b) { return a.frame < b.frame; });
    const TempoMap tempos(file);
    for (SequenceEvent& event : sequence.events) {
        event.frame = tempos.Frame(static_cast<std::uint64_t>(event.frame), rate);
    }
    sequence.endFrame = tempos.Frame(LastTick(file), rate);
    sequence.lengthMs = tempos.Milliseconds(LastTick(file));
    return sequence;
}

std::int32_t LengthMs(const SmfFile& file) {
    return TempoMap(file).Milliseconds(LastTick(file));
}

}  // namespace sonnel
