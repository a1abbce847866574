// Any bytes as a song file: whatever they are, the reader comes to an end and the timeline is one
// that the player can show.

#include "Fuzz.h"

#include "fakes/ScriptedMsgBox.h"
#include "platform/Text.h"
#include "song/LeggiKaraoke.h"
#include "ui/basCommon.h"

namespace {

void CheckTimeline(const sonnel::Timeline& timeline) {
    using namespace sonnel;
    Require(timeline.NumEventi() >= 0 && timeline.NumEventi() <= timeline.MaxEventi());
    for (std::int16_t i = 1; i <= timeline.NumEventi(); ++i) {
        const Evento& event = timeline.Eventi(i);
        Require(event.Tipo >= TipoEvento::Marcatore && event.Tipo <= TipoEvento::Colore);
        std::string text = event.Testo;
        Require(event.Tipo != TipoEvento::Pagina || SostituisciTesto(text, "\r\n", " ") < 4);
    }
}

}  // namespace

void sonnel::Check(const std::string& bytes) {
    const std::string text = DecodeFileText(bytes);
    Require(DecodeFileText(EncodeFileText(text)) == text);
    for (const bool whole : {true, false}) {
        Timeline timeline;
        InformazioniBrano info;
        test::ScriptedMsgBox msgBox;
        (void)LeggiRighe(text, whole, timeline, info, msgBox);
        Require(msgBox.shown.size() <= 1);
        CheckTimeline(timeline);
    }
}
