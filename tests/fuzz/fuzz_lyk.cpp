// Any bytes as a song file: whatever they are, the reader comes to an end and the timeline is one
// that the player can show.

#include "fakes/ScriptedMsgBox.h"
#include "platform/Text.h"
#include "song/LeggiKaraoke.h"
#include "ui/basCommon.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

void CheckTimeline(const sonnel::Timeline& timeline) {
    Require(timeline.NumEventi() >= 0 && timeline.NumEventi() <= timeline.MaxEventi());
    for (std::int16_t i = 1; i <= timeline.NumEventi(); ++i) {
        const sonnel::Evento& event = timeline.Eventi(i);
        Require(event.Tipo >= sonnel::TipoEvento::Marcatore &&
                event.Tipo <= sonnel::TipoEvento::Colore);
        std::string text = event.Testo;
        Require(event.Tipo != sonnel::TipoEvento::Pagina ||
                sonnel::SostituisciTesto(text, "\r\n", " ") < 4);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(data, data + size);
    const std::string text = sonnel::DecodeFileText(bytes);
    Require(sonnel::DecodeFileText(sonnel::EncodeFileText(text)) == text);
    for (const bool whole : {true, false}) {
        sonnel::Timeline timeline;
        sonnel::InformazioniBrano info;
        sonnel::test::ScriptedMsgBox msgBox;
        (void)sonnel::LeggiRighe(text, whole, timeline, info, msgBox);
        Require(msgBox.shown.size() <= 1);
        CheckTimeline(timeline);
    }
    return 0;
}
