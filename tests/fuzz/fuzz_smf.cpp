#include "platform/midi/Chase.h"
#include "platform/midi/Sequence.h"
#include "platform/midi/SmfReader.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <utility>

namespace {

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

/// What every file that is read must keep to, whatever is in it.
void Check(const sonnel::SmfFile& file) {
    std::size_t events = 0;
    for (const auto& track : file.tracks) {
        events += track.size();
        std::uint64_t tick = 0;
        for (const auto& event : track) {
            Require(event.tick >= tick && event.data1 < 0x80 && event.data2 < 0x80);
            Require(file.Data(event).size() == event.size);
            tick = event.tick;
        }
    }
    Require(events <= file.bytes.size());
    const sonnel::Sequence sequence = sonnel::MakeSequence(file, 44100);
    Require(sequence.lengthMs >= 0 && sequence.exclusive.size() <= file.bytes.size());
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

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string bytes(size, '\0');
    for (std::size_t i = 0; i < size; ++i) {
        bytes[i] = static_cast<char>(data[i]);
    }
    const auto file = sonnel::ReadSmf(std::move(bytes));
    if (file) {
        Check(*file);
    }
    return 0;
}
