#pragma once

#include "platform/Result.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sonnel {

/// Error numbers of refused files.
enum class SmfError : int { NotMidi = 1001, Format = 1002, NoTracks = 1003, TooLarge = 1004 };

constexpr std::uint8_t kSysEx = 0xF0;
constexpr std::uint8_t kSysExPacket = 0xF7;
constexpr std::uint8_t kMeta = 0xFF;
constexpr std::uint8_t kMetaText = 0x01;
constexpr std::uint8_t kMetaLyric = 0x05;
constexpr std::uint8_t kMetaEndOfTrack = 0x2F;
constexpr std::uint8_t kMetaTempo = 0x51;

/// One event of a track. A channel message has its data bytes in `data1` and `data2` (0 when it has
/// one byte only); for the bytes of others see SmfFile::Data.
struct SmfEvent {
    std::uint64_t tick = 0;    ///< since the start of the track
    std::uint32_t offset = 0;  ///< of the data in the file
    std::uint32_t size = 0;
    std::uint8_t status = 0;    ///< 80 to EF, F0 and F7 as the file has them (packets), FF
    std::uint8_t metaType = 0;  ///< of an FF event
    std::uint8_t data1 = 0;
    std::uint8_t data2 = 0;

    [[nodiscard]] bool IsChannelMessage() const { return status < kSysEx; }
    [[nodiscard]] bool IsMeta(std::uint8_t type) const {
        return status == kMeta && metaType == type;
    }
};

/// Microseconds per quarter note that the data of a set-tempo event hold; nothing when they are cut
/// short.
[[nodiscard]] std::optional<std::uint32_t> TempoOf(std::string_view data);

/// What a tick is: a part of a quarter note, or of a film frame when `framesPerSecond` is not 0 (29
/// stands for 30000/1001).
struct SmfDivision {
    int framesPerSecond = 0;
    int ticks = 96;
};

using SmfTrack = std::vector<SmfEvent>;

/// A Standard MIDI File as it was read.
struct SmfFile {
    std::string bytes;  ///< the file; the events refer into it
    int format = 0;     ///< 0 to 2
    SmfDivision division;
    std::uint16_t divisionWord = 0;  ///< the division as the header has it
    std::vector<SmfTrack> tracks;
    bool damaged = false;  ///< something had to be skipped or mended

    /// The data of a meta or system-exclusive event, as they stand in the file.
    [[nodiscard]] std::string_view Data(const SmfEvent& event) const {
        return std::string_view(bytes).substr(event.offset, event.size);
    }
};

/// Reads a file of format 0 to 2. Tracks that are cut off or broken are read as far as they make
/// sense. Refuses what is not a MIDI file, other formats, and a file without a track.
[[nodiscard]] Result<SmfFile> ReadSmf(std::string bytes);

/// The MIDI data of a file that ReadSmf accepts, without the RIFF file around them.
[[nodiscard]] std::string_view MidiData(std::string_view bytes);

/// The same for a file on disk. One that cannot be read is refused with the system's number and
/// reason.
[[nodiscard]] Result<SmfFile> ReadSmfFile(const std::filesystem::path& path);

/// Why a file that was read cannot be played: the tracks of format 2 are pieces of their own.
[[nodiscard]] std::optional<Error> RefusalToPlay(const SmfFile& file);

}  // namespace sonnel
