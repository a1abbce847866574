#pragma once

#include "platform/MsgBox.h"
#include "song/FileBrano.h"
#include "song/InformazioniBrano.h"
#include "song/Timeline.h"

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

/// Reads the words of a song as the player does. Returns whether all of them were read; what people
/// should know goes into `messaggi`: why the file cannot be opened, else what the player says.
[[nodiscard]] bool LeggiParole(std::string_view file, const FileBrano& brano, Timeline& timeline,
                               InformazioniBrano& informazioni, MessaggiRaccolti& msgBox,
                               std::vector<std::string>& messaggi);

/// A kind of event in a word.
[[nodiscard]] std::string_view NomeTipo(TipoEvento tipo);

}  // namespace sonnel
