#include "platform/midi/SmfReader.h"

#include "platform/files/Files.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

namespace sonnel {
namespace {

constexpr std::size_t kHeaderSize = 14;
constexpr std::size_t kChunkHeaderSize = 8;
constexpr std::string_view kHeaderName = "MThd";
constexpr std::string_view kTrackName = "MTrk";

std::uint8_t ByteAt(std::string_view bytes, std::size_t at) {
    return static_cast<std::uint8_t>(bytes[at]);
}

std::uint32_t BigEndian(std::string_view bytes, std::size_t at, std::size_t count) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < count; ++i) {
        value = (value << 8U) | ByteAt(bytes, at + i);
    }
    return value;
}

int DataBytes(std::uint8_t status) {
    const int kind = status & 0xF0;
    return kind == 0xC0 || kind == 0xD0 ? 1 : 2;
}

/// Reads the events of one track chunk up to its end-of-track mark or the first that makes no
/// sense. Without a track to fill it only counts them, so that the track can reserve exactly their
/// room.
class TrackReader {
  public:
    TrackReader(std::string_view bytes, std::size_t begin, SmfTrack* events)
        : bytes_(bytes), pos_(begin), events_(events) {}

    void Read() {
        while (ReadEvent()) {
        }
        damaged = damaged || !ended_;
    }
    [[nodiscard]] std::size_t Count() const { return count_; }
    [[nodiscard]] std::size_t End() const { return pos_; }

    bool damaged = false;

  private:
    [[nodiscard]] std::size_t Left() const { return bytes_.size() - pos_; }

    /// The next event, to be filled in its place: copying one costs more than reading it.
    SmfEvent& Add() {
        ++count_;
        return events_ != nullptr ? events_->emplace_back() : (counted_ = {});
    }

    std::optional<std::uint32_t> ReadNumber() {
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < 4 && Left() > 0; ++i) {
            const std::uint8_t byte = ByteAt(bytes_, pos_++);
            value = (value << 7U) | (byte & 0x7FU);
            if (byte < 0x80) {
                return value;
            }
        }
        return std::nullopt;
    }

    bool ReadEvent() {
        const auto delta = ReadNumber();
        if (!delta || Left() == 0) {
            return false;
        }
        tick_ += *delta;
        std::uint8_t status = ByteAt(bytes_, pos_);
        if (status >= 0x80) {
            ++pos_;
        } else if (running_ != 0) {
            // A meta or exclusive event ends the running status, but some files go on using it.
            damaged = damaged || runningEnded_;
            status = running_;
        } else {
            return false;
        }
        if (status < kSysEx) {
            return ReadChannelMessage(status);
        }
        if (status == kSysEx || status == kSysExPacket) {
            return ReadBlock(status, 0);
        }
        if (status == kMeta) {
            return Left() > 0 && ReadBlock(status, ByteAt(bytes_, pos_++));
        }
        return SkipSystemMessage(status);
    }

    bool ReadChannelMessage(std::uint8_t status) {
        const auto count = static_cast<std::size_t>(DataBytes(status));
        if (Left() < count) {
            return false;
        }
        running_ = status;
        runningEnded_ = false;
        SmfEvent& event = Add();
        event.tick = tick_;
        event.status = status;
        event.data1 = ReadDataByte();
        event.data2 = count == 2 ? ReadDataByte() : std::uint8_t{0};
        return true;
    }

    std::uint8_t ReadDataByte() {
        const std::uint8_t byte = ByteAt(bytes_, pos_++);
        damaged = damaged || byte >= 0x80;
        return byte & 0x7FU;
    }

    bool ReadBlock(std::uint8_t status, std::uint8_t metaType) {
        const auto size = ReadNumber();
        if (!size || *size > Left()) {
            return false;
        }
        SmfEvent& event = Add();
        event.tick = tick_;
        event.offset = static_cast<std::uint32_t>(pos_);
        event.size = *size;
        event.status = status;
        event.metaType = metaType;
        pos_ += *size;
        runningEnded_ = true;
        ended_ = event.IsMeta(kMetaEndOfTrack);
        return !ended_;
    }

    /// System common and real-time messages do not belong in a file.
    bool SkipSystemMessage(std::uint8_t status) {
        damaged = true;
        const std::size_t count = status == 0xF2 ? 2 : (status == 0xF1 || status == 0xF3 ? 1 : 0);
        pos_ += std::min(count, Left());
        return true;
    }

    std::string_view bytes_;
    std::size_t pos_;
    std::uint64_t tick_ = 0;
    std::uint8_t running_ = 0;
    bool runningEnded_ = false;
    bool ended_ = false;
    std::size_t count_ = 0;
    SmfEvent counted_;  ///< the last one that was only counted
    SmfTrack* events_;
};

SmfDivision ReadDivision(std::uint32_t word, bool& damaged) {
    SmfDivision division;
    if ((word & 0x8000U) == 0) {
        division.ticks = static_cast<int>(word);
    } else {
        division.framesPerSecond = 256 - static_cast<int>(word >> 8U);
        division.ticks = static_cast<int>(word & 0xFFU);
    }
    if (division.ticks == 0) {
        damaged = true;
        return {};
    }
    return division;
}

/// Where the header begins: at once, or somewhere in a RIFF file. npos when there is none.
std::size_t FindHeader(std::string_view bytes) {
    const std::size_t start = bytes.starts_with("RIFF") ? bytes.find(kHeaderName) : 0;
    const bool found = start != std::string_view::npos && bytes.size() - start >= kHeaderSize &&
                       bytes.substr(start).starts_with(kHeaderName);
    return found ? start : std::string_view::npos;
}

/// The end of the data that begin at `start`: that of the RIFF chunk that holds them, if it is one.
std::size_t DataEnd(std::string_view bytes, std::size_t start) {
    if (start < kChunkHeaderSize || bytes.substr(start - kChunkHeaderSize, 4) != "data") {
        return bytes.size();
    }
    std::size_t size = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        size |= static_cast<std::size_t>(static_cast<unsigned char>(bytes[start - 4 + i])) << 8 * i;
    }
    // A size that leaves no room for the header is wrong.
    return size < kHeaderSize ? bytes.size() : start + std::min(size, bytes.size() - start);
}

/// Reads format and division from the header that begins at `start`; returns where it ends.
std::size_t ReadHeader(SmfFile& file, std::size_t start) {
    const std::string_view bytes = file.bytes;
    file.format = static_cast<int>(BigEndian(bytes, start + 8, 2));
    file.divisionWord = static_cast<std::uint16_t>(BigEndian(bytes, start + 12, 2));
    file.division = ReadDivision(file.divisionWord, file.damaged);
    constexpr std::size_t Fields = 6;  // bytes of those that are known; more may follow
    const std::size_t length = BigEndian(bytes, start + 4, 4);
    const std::size_t end = start + kHeaderSize;
    const bool fits = length >= Fields && length - Fields <= bytes.size() - end;
    file.damaged = file.damaged || !fits;
    return fits ? end + length - Fields : end;
}

bool IsChunkName(std::string_view name) {
    return std::all_of(name.begin(), name.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

/// Reads the track chunk that begins at `begin`; returns where to look for the next chunk.
std::size_t ReadTrack(SmfFile& file, std::size_t begin, std::size_t end) {
    const std::string_view bytes = file.bytes;
    TrackReader counter(bytes.substr(0, end), begin, nullptr);
    counter.Read();
    SmfTrack& track = file.tracks.emplace_back();
    track.reserve(counter.Count());
    TrackReader reader(bytes.substr(0, end), begin, &track);
    reader.Read();
    file.damaged = file.damaged || reader.damaged || reader.End() != end;
    // A chunk that claims too much would swallow the tracks that follow it.
    const std::size_t inside = bytes.substr(0, end).find(kTrackName, reader.End());
    return std::min(inside, end);
}

void ReadChunks(SmfFile& file, std::size_t pos) {
    const std::string_view bytes = file.bytes;
    while (pos < bytes.size() && bytes.size() - pos >= kChunkHeaderSize) {
        const std::string_view name = bytes.substr(pos, 4);
        const std::size_t length = BigEndian(bytes, pos + 4, 4);
        const std::size_t begin = pos + kChunkHeaderSize;
        const bool whole = length <= bytes.size() - begin;
        file.damaged = file.damaged || !whole;
        if (name == kTrackName) {
            pos = ReadTrack(file, begin, whole ? begin + length : bytes.size());
        } else if (whole && IsChunkName(name)) {
            pos = begin + length;
        } else {
            file.damaged = true;
            pos = bytes.find(kTrackName, pos + 1);
        }
    }
    file.damaged = file.damaged || pos != bytes.size();
}

Error MakeError(SmfError number, std::string text) {
    return {static_cast<int>(number), std::move(text)};
}

Error FormatError(int format) {
    return MakeError(SmfError::Format, "The MIDI file is of format " + std::to_string(format) +
                                           ", only formats 0 and 1 can be played");
}

}  // namespace

std::optional<std::uint32_t> TempoOf(std::string_view data) {
    constexpr std::size_t kTempoSize = 3;
    return data.size() < kTempoSize ? std::nullopt : std::optional(BigEndian(data, 0, kTempoSize));
}

Result<SmfFile> ReadSmf(std::string bytes) {
    SmfFile file;
    file.bytes = std::move(bytes);
    if (file.bytes.empty()) {
        return MakeError(SmfError::NotMidi,
                         "The MIDI file is empty: copy it again from where it came");
    }
    if (file.bytes.size() > std::numeric_limits<std::uint32_t>::max()) {
        return MakeError(SmfError::TooLarge, "The MIDI file is too large to be a song");
    }
    const std::size_t start = FindHeader(file.bytes);
    if (start == std::string_view::npos) {
        return MakeError(
            SmfError::NotMidi,
            "This is not a MIDI file: choose a song whose MID file other players can play");
    }
    file.bytes.resize(DataEnd(file.bytes, start));
    const std::size_t chunks = ReadHeader(file, start);
    constexpr int LastFormat = 2;
    if (file.format > LastFormat) {
        return FormatError(file.format);
    }
    ReadChunks(file, chunks);
    if (file.tracks.empty()) {
        return MakeError(SmfError::NoTracks, "The MIDI file has no track that can be read");
    }
    const std::size_t announced = BigEndian(file.bytes, start + 10, 2);
    file.damaged = file.damaged || file.tracks.size() != announced;
    return file;
}

std::string_view MidiData(std::string_view bytes) {
    const std::size_t start = FindHeader(bytes);
    return start == std::string_view::npos ? bytes
                                           : bytes.substr(start, DataEnd(bytes, start) - start);
}

Result<SmfFile> ReadSmfFile(const std::filesystem::path& path) {
    Result<std::string> bytes = ReadFile(path);
    if (!bytes) {
        return bytes.error();
    }
    return ReadSmf(std::move(*bytes));
}

std::optional<Error> RefusalToPlay(const SmfFile& file) {
    return file.format > 1 ? std::optional(FormatError(file.format)) : std::nullopt;
}

}  // namespace sonnel
