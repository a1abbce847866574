// Any bytes as a karaoke file: whatever they are, the conversion comes to an end, and the player
// reads back as many events as were written.

#include "convert/EstraiParole.h"
#include "fakes/ScriptedMsgBox.h"
#include "platform/Text.h"
#include "platform/files/LineReader.h"
#include "song/LeggiKaraoke.h"

#include <algorithm>
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

void CheckSong(const sonnel::Estrazione& made) {
    const std::string text = sonnel::DecodeFileText(sonnel::EncodeFileText(made.Testo));
    Require(text == made.Testo);
    sonnel::LineReader lines(text);
    int written = 0;
    bool late = false;  // a time of six digits or more, which the player misreads
    for (auto line = lines.Next(); (line = lines.Next());) {
        if (!line->starts_with('*')) {
            ++written;
            late = late || (line->substr(5, 2) != "01" && line->substr(5, 2) != "02");
        }
    }
    Require(written == made.NumEventi);
    sonnel::Timeline timeline;
    sonnel::InformazioniBrano info;
    sonnel::test::ScriptedMsgBox msgBox;
    (void)sonnel::LeggiRighe(text, true, timeline, info, msgBox);
    Require(late || timeline.NumEventi() == std::min<int>(written, sonnel::Timeline::Capienza));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    sonnel::Midifile midifile;
    if (midifile.OpenContent(std::string(data, data + size))) {
        return 0;
    }
    if (const auto base = sonnel::BaseTempi::Leggi(midifile)) {
        CheckSong(sonnel::EstraiParole(midifile, *base, {}));
    }
    return 0;
}
