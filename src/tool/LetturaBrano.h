#pragma once

#include "platform/MsgBox.h"
#include "platform/midi/SmfReader.h"
#include "song/FileBrano.h"
#include "song/InformazioniBrano.h"
#include "song/Timeline.h"

#include <filesystem>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sonnel {

/// Keeps the messages that the player would show. A question whether to go on is declined.
class MessaggiRaccolti : public MsgBox {
  public:
    Answer Show(const Message& message) override {
        messaggi.push_back(message);
        return message.buttons == Buttons::Ok ? Answer::Ok : Answer::Cancel;
    }
    /// As sentences about the file, in the player's words.
    [[nodiscard]] std::vector<std::string> Frasi(std::string_view file) const;

    std::vector<Message> messaggi;
};

/// Why a file cannot be opened for reading: a sentence with its name, or nothing.
[[nodiscard]] std::optional<std::string> Illeggibile(const std::filesystem::path& file);

/// What the player reads of a song's words.
struct ParoleLette {
    bool complete = false;  ///< all of them were read
    FileBrano file;
    Timeline timeline;
    InformazioniBrano informazioni;
    MessaggiRaccolti msgBox;
    std::vector<std::string> messaggi;  ///< why there is nothing to read, else what the player says
};

/// Reads the words of a song as the player does. `nome` as in CercaBrano.
[[nodiscard]] ParoleLette ParoleDelBrano(const std::string& nome,
                                         std::initializer_list<std::string_view> estensioni);

/// Reads a MIDI file. The error's text is a sentence with the file's name. If parts of the file
/// cannot be read, adds a sentence to `messaggi` that calls it `nome`.
[[nodiscard]] Result<SmfFile> LeggiMidi(const std::filesystem::path& file, const std::string& nome,
                                        std::vector<std::string>& messaggi);

/// The same for a song's music: refuses what the player does.
[[nodiscard]] Result<SmfFile> LeggiMusica(const std::filesystem::path& file,
                                          const std::string& nome,
                                          std::vector<std::string>& messaggi);

/// A kind of event in a word.
[[nodiscard]] std::string_view NomeTipo(TipoEvento tipo);

}  // namespace sonnel
