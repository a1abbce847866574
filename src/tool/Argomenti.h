#pragma once

#include "platform/MsgBox.h"
#include "platform/Result.h"
#include "platform/midi/SmfReader.h"

#include <filesystem>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sonnel {

/// Why a file is not even looked for by this name: a sentence, or nothing when the name is UTF-8.
[[nodiscard]] std::optional<std::string> RifiutoNome(const std::string& file);

/// Whether a file's name ends in an extension, in any letter case.
[[nodiscard]] bool HaEstensione(std::string_view file, std::string_view estensione);
/// The name without the extension if it has one of these.
[[nodiscard]] std::string SenzaEstensione(std::string_view file,
                                          std::initializer_list<std::string_view> estensioni);

/// The file of this name in any letter case, or where it would be.
[[nodiscard]] std::filesystem::path FileNominato(const std::string& file);

/// Reads a MIDI file. The error's text is a sentence with the file's name.
[[nodiscard]] Result<SmfFile> LeggiMidi(const std::filesystem::path& file);

/// What is wrong, with the file's name in front when the sentence lacks it.
[[nodiscard]] std::string ConNome(std::string_view file, std::string_view frase);

/// Keeps the messages that the player would show. A question whether to go on is declined.
class MessaggiRaccolti : public MsgBox {
  public:
    Answer Show(const Message& message) override {
        messaggi.push_back(message);
        return message.buttons == Buttons::Ok ? Answer::Ok : Answer::Cancel;
    }
    /// As sentences about the file.
    [[nodiscard]] std::vector<std::string> Frasi(std::string_view file) const;

    std::vector<Message> messaggi;
};

}  // namespace sonnel
