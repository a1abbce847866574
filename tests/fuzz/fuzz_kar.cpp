// Any bytes as a karaoke file: whatever they are, the conversion comes to an end, and the player
// reads back as many lines of each kind as were written.

#include "convert/EstraiParole.h"
#include "fakes/ScriptedMsgBox.h"
#include "platform/Text.h"
#include "platform/files/LineReader.h"
#include "song/LeggiKaraoke.h"

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

/// What the lines after the first are, each by its first character.
void CheckLines(const std::string& text, const sonnel::RigheScritte& written) {
    sonnel::LineReader lines(text);
    int fields = 0;
    int others = 0;
    for (auto line = lines.Next(); (line = lines.Next());) {
        ++(line->starts_with('*') ? fields : others);
    }
    Require(fields == written.Campi && others == written.Eventi());
}

void CheckEvents(const std::string& text, const sonnel::RigheScritte& written) {
    sonnel::Timeline timeline;
    sonnel::InformazioniBrano info;
    sonnel::test::ScriptedMsgBox msgBox;
    const auto outcome = sonnel::LeggiRighe(text, true, timeline, info, msgBox);
    Require(outcome != sonnel::EsitoLettura::NonCantabelle);
    // The sixth digit of a time is read as an event's kind, and may be any.
    if (written.Tardive > 0) {
        return;
    }
    const bool fits = written.Eventi() <= sonnel::Timeline::Capienza;
    Require(outcome == (fits ? sonnel::EsitoLettura::Completa : sonnel::EsitoLettura::Incompleta));
    Require(timeline.NumEventi() == (fits ? written.Eventi() : sonnel::Timeline::Capienza));
    int pages = 0;
    int words = 0;
    for (std::int16_t i = 1; i <= timeline.NumEventi(); ++i) {
        const sonnel::TipoEvento kind = timeline.Eventi(i).Tipo;
        pages += kind == sonnel::TipoEvento::Pagina ? 1 : 0;
        words += kind == sonnel::TipoEvento::Colore ? 1 : 0;
    }
    Require(!fits || (pages == written.Pagine && words == written.Parole));
}

void CheckText(const sonnel::Estrazione& made) {
    const std::string read = sonnel::DecodeFileText(sonnel::EncodeFileText(made.Testo));
    Require(read == made.Testo);
    CheckLines(read, made.Righe);
    CheckEvents(read, made.Righe);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    sonnel::Midifile midifile;
    if (midifile.OpenContent(std::string(data, data + size))) {
        return 0;
    }
    const auto base = sonnel::BaseTempi::Leggi(midifile);
    if (base) {
        CheckText(sonnel::EstraiParole(midifile, *base, {}));
    }
    return 0;
}
