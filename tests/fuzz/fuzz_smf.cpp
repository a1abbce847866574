// Any bytes as a MIDI file: what is read of it keeps to these rules, whatever is in it.

#include "Fuzz.h"

#include "platform/midi/Chase.h"
#include "platform/midi/Sequence.h"
#include "platform/midi/SmfReader.h"

namespace {

void CheckSequence(const sonnel::Sequence& sequence) {
    using sonnel::Require;
    Require(sequence.lengthMs >= 0);
    std::int64_t frame = 0;
    for (const auto& event : sequence.events) {
        Require(event.frame >= frame && event.frame <= sequence.endFrame);
        Require(sequence.Exclusive(event).size() == event.size);
        frame = event.frame;
    }
    for (const std::size_t end : {sequence.events.size() / 2, sequence.events.size()}) {
        std::size_t last = 0;
        for (const std::uint32_t number : sonnel::Chase(sequence, end)) {
            Require(number < end && number >= last);
            last = number;
        }
    }
}

}  // namespace

void sonnel::Check(const std::string& bytes) {
    const auto file = ReadSmf(bytes);
    if (!file) {
        return;
    }
    std::size_t events = 0;
    for (const auto& track : file->tracks) {
        events += track.size();
        std::uint64_t tick = 0;
        for (const auto& event : track) {
            Require(event.tick >= tick && event.data1 < 0x80 && event.data2 < 0x80);
            Require(file->Data(event).size() == event.size);
            tick = event.tick;
        }
    }
    Require(events <= bytes.size());
    const Sequence sequence = MakeSequence(*file, 44100);
    Require(sequence.exclusive.size() <= bytes.size());
    CheckSequence(sequence);
}
