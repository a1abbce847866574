#include "convert/Midifile.h"

#include "platform/Text.h"
#include "platform/files/Files.h"

#include <algorithm>

namespace sonnel {

std::optional<Error> Midifile::SetAction(MidifileAction action) {
    file_ = {};
    if (action == MidifileAction::Close) {
        return std::nullopt;
    }
    return Take(ReadSmfFile(fileName_));
}

std::optional<Error> Midifile::OpenContent(std::string content) {
    return Take(ReadSmf(std::move(content)));
}

std::optional<Error> Midifile::Take(Result<SmfFile> read) {
    file_ = {};
    if (!read) {
        return Failure(read.error().number, read.error().text);
    }
    file_ = std::move(*read);
    track_ = 0;
    event_ = 0;
    textsBefore_.assign(1, 0);
    for (const SmfTrack& track : file_.tracks) {
        const auto last = std::find_if(track.rbegin(), track.rend(), [](const SmfEvent& event) {
            return event.IsMeta(kMetaText);
        });
        textsBefore_.push_back(last != track.rend() ? last->tick : textsBefore_.back());
    }
    return std::nullopt;
}

std::int64_t Midifile::DeltaTime() const {
    std::uint64_t before = event_ > 0 ? Track()[event_ - 1].tick : 0;
    if (Current().IsMeta(kMetaText)) {
        before = TickOfTextBefore();
    } else if (Current().IsMeta(kMetaTempo)) {
        before = TickOfTempoBefore();
    }
    return static_cast<std::int64_t>(Current().tick - before);
}

std::uint64_t Midifile::TickOfTextBefore() const {
    for (std::size_t i = event_; i-- > 0;) {
        if (Track()[i].IsMeta(kMetaText)) {
            return Track()[i].tick;
        }
    }
    return textsBefore_[track_];
}

std::uint64_t Midifile::TickOfTempoBefore() const {
    // Of a run of equal tempos the first is the one that changed something.
    std::optional<std::uint32_t> tempo;
    std::uint64_t tick = 0;
    for (std::size_t i = event_; i-- > 0;) {
        const SmfEvent& event = Track()[i];
        if (!event.IsMeta(kMetaTempo)) {
            continue;
        }
        const auto here = TempoOf(file_.Data(event));
        if (tempo && here != tempo) {
            break;
        }
        tempo = here;
        tick = event.tick;
    }
    return tick;
}

std::string Midifile::Data() const {
    return DecodeUnmarkedText(file_.Data(Current()));
}

Result<std::int32_t> Midifile::Tempo() const {
    const auto tempo = TempoOf(file_.Data(Current()));
    if (!tempo) {
        return Failure(ErroreKar::TempoIncompleto, "one of its tempos is cut short");
    }
    return static_cast<std::int32_t>(*tempo);
}

Error Midifile::Failure(int number, const std::string& what) const {
    return {number, WithReason("Can't convert the file " + Utf8FromPath(fileName_), what)};
}

}  // namespace sonnel
