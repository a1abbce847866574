#include "tool/ConversioneEsatta.h"

#include "convert/ScriviLyk.h"
#include "library/RiscriviIntestazione.h"
#include "platform/Paths.h"
#include "platform/Text.h"
#include "platform/files/Files.h"
#include "platform/midi/SmfReader.h"
#include "song/LeggiIntestazione.h"
#include "song/LetturaEsatta.h"

#include <optional>
#include <system_error>

namespace sonnel {
namespace {

namespace fs = std::filesystem;

/// The header of the song that is replaced.
std::optional<Intestazione> Precedente(const fs::path& lyk) {
    const Result<Intestazione> letta = LeggiIntestazione(lyk);
    return letta ? std::optional(*letta) : std::nullopt;
}

std::optional<Error> Scrivi(const Conversione& lavoro, const SmfFile& midi, std::string testo,
                            bool sovrascrivi, EsitoConversione& esito) {
    if (const auto precedente = Precedente(lavoro.lyk)) {
        testo = ConIntestazione(testo, *precedente);
    }
    if (auto errore = ScriviLyk(lavoro.lyk, testo, sovrascrivi)) {
        return errore;
    }
    esito.lykScritto = true;
    if (lavoro.copiaMid) {
        if (auto errore = WriteFileAtomically(lavoro.mid, MidiData(midi.bytes))) {
            RitiraParole(lavoro, sovrascrivi, esito);
            return errore;
        }
    }
    esito.midScritto = true;
    return std::nullopt;
}

}  // namespace

void RitiraParole(const Conversione& lavoro, bool sovrascrivi, EsitoConversione& esito) {
    std::error_code ignorato;
    esito.lykScritto = sovrascrivi || !fs::remove(lavoro.lyk, ignorato);
}

void ConvertiEsatto(const Conversione& lavoro, bool sovrascrivi, EsitoConversione& esito) {
    const Result<SmfFile> midi = ReadSmfFile(lavoro.origine);
    const Result<LetturaEsatta> lettura =
        midi ? LeggiEsatto(*midi, Utf8FromPath(lavoro.lyk.stem())) : midi.error();
    if (!lettura) {
        esito.errore = WithReason("Can't convert the file " + lavoro.file, lettura.error().text);
        return;
    }
    esito.intestazione = !CampiMidi(*midi, 'K').empty();
    esito.parole = true;
    esito.danneggiato = lettura->Danneggiato;
    esito.genere = lettura->Genere;
    if (const auto errore = Scrivi(lavoro, *midi, lettura->Testo, sovrascrivi, esito)) {
        esito.errore = errore->text;
    }
}

}  // namespace sonnel
