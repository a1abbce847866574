#pragma once

#include "platform/Result.h"
#include "platform/midi/SmfReader.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace sonnel {

/// Numbers of the errors that end a conversion, beside the system's and the MIDI parser's.
enum class ErroreKar : int {
    TempoIncompleto = 1101,
    NessunTempo = 1102,
    TempoNullo = 1103,
    DivisioneNulla = 1104,
    TempoTroppoGrande = 1105
};

enum class MidifileAction { Open = 1, Close = 2 };

/// A MIDI file as the converter walks it: numbered tracks of numbered events, both from 1, of which
/// one at a time is the current one and shows its fields. What is asked of the current track or
/// event needs one to be selected.
class Midifile {
  public:
    void SetFileName(std::filesystem::path fileName) { fileName_ = std::move(fileName); }
    /// Opens the named file, which is read whole, or closes it. An Open that fails leaves nothing
    /// open; its error has the system's number or the parser's and a sentence with the file's name.
    [[nodiscard]] std::optional<Error> SetAction(MidifileAction action);
    /// Opens the content of a file that was read already.
    [[nodiscard]] std::optional<Error> OpenContent(std::string content);

    /// The division word of the file's header, unchecked: ticks per quarter note in most files.
    [[nodiscard]] std::uint16_t TimeDivision() const { return file_.divisionWord; }
    /// The tracks that are there; 0 when no file is open.
    [[nodiscard]] int NumTracks() const { return static_cast<int>(file_.tracks.size()); }
    /// Whether something of the file had to be skipped or mended.
    [[nodiscard]] bool Damaged() const { return file_.damaged; }

    /// Selects a track, 1 to NumTracks.
    void SetTrack(int track) { track_ = static_cast<std::size_t>(track) - 1; }
    [[nodiscard]] int NumEvents() const { return static_cast<int>(Track().size()); }
    /// Selects an event of the current track, 1 to NumEvents.
    void SetEvent(int event) { event_ = static_cast<std::size_t>(event) - 1; }

    /// The current event's status byte; 255 marks a meta event.
    [[nodiscard]] std::uint8_t Status() const { return Current().status; }
    [[nodiscard]] std::uint8_t MetaType() const { return Current().metaType; }
    /// Ticks since the event before in the track. Of a text: since the text before, in this track
    /// or an earlier one, so that all of them add up to the tick the text has in its track; it may
    /// be negative. Of a tempo: since the tempo before that changed something.
    [[nodiscard]] std::int64_t DeltaTime() const;
    /// The current text; its bytes are UTF-8 or else Windows-1252.
    [[nodiscard]] std::string Data() const;
    /// The current set-tempo event's microseconds per quarter note; an error when it is cut short.
    [[nodiscard]] Result<std::int32_t> Tempo() const;

    /// An error of this file: a sentence with its name and what is wrong.
    [[nodiscard]] Error Failure(ErroreKar number, const std::string& what) const {
        return Failure(static_cast<int>(number), what);
    }

  private:
    [[nodiscard]] std::optional<Error> Take(Result<SmfFile> read);
    [[nodiscard]] Error Failure(int number, const std::string& what) const;
    [[nodiscard]] const SmfTrack& Track() const { return file_.tracks[track_]; }
    [[nodiscard]] const SmfEvent& Current() const { return Track()[event_]; }
    [[nodiscard]] std::uint64_t TickOfTextBefore() const;
    [[nodiscard]] std::uint64_t TickOfTempoBefore() const;

    std::filesystem::path fileName_;
    SmfFile file_;
    std::vector<std::uint64_t> textsBefore_;  ///< by track: tick of the last text of earlier tracks
    std::size_t track_ = 0;                   ///< the current one, from 0
    std::size_t event_ = 0;                   ///< likewise
};

}  // namespace sonnel
