// Any bytes as a karaoke file: whatever they are, the conversion comes to an end, and the player
// reads back as many events as were written.

#include "Fuzz.h"

#include "convert/EstraiParole.h"
#include "fakes/ScriptedMsgBox.h"
#include "platform/Text.h"
#include "platform/files/LineReader.h"
#include "song/LeggiKaraoke.h"

#include <algorithm>

void sonnel::Check(const std::string& bytes) {
    Midifile midifile;
    if (midifile.OpenContent(bytes)) {
        return;
    }
    const auto base = BaseTempi::Leggi(midifile);
    if (!base) {
        return;
    }
    const Estrazione made = EstraiParole(midifile, *base, {});
    const std::string text = DecodeFileText(EncodeFileText(made.Testo));
    Require(text == made.Testo);
    LineReader lines(text);
    int written = 0;
    bool late = false;  // a time of six digits or more, which the player misreads
    for (auto line = lines.Next(); (line = lines.Next());) {
        if (!line->starts_with('*')) {
            ++written;
            late = late || (line->substr(5, 2) != "01" && line->substr(5, 2) != "02");
        }
    }
    Require(written == made.NumEventi);
    Timeline timeline;
    InformazioniBrano info;
    test::ScriptedMsgBox msgBox;
    (void)LeggiRighe(text, true, timeline, info, msgBox);
    Require(late || timeline.NumEventi() == std::min<int>(written, Timeline::Capienza));
}
