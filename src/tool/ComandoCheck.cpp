#include "platform/Text.h"
#include "platform/files/Files.h"
#include "platform/midi/Sequence.h"
#include "song/FileBrano.h"
#include "tool/Argomenti.h"
#include "tool/Comandi.h"
#include "tool/Controllo.h"

#include <optional>
#include <utility>

namespace sonnel {
namespace {

/// How long the music beside a song's words lasts, in ms; nothing, and a finding, when it is not to
/// be had. Damage that the player gets over is told in `messaggi` only.
std::optional<std::int32_t> Durata(const FileBrano& brano, std::vector<Rilievo>& rilievi,
                                   std::vector<std::string>& messaggi) {
    if (!brano.mid) {
        rilievi.push_back({0,
                           "there is no MID file beside it: the player does not play the song; put "
                           "its music there under the name " +
                               Utf8FromPath(PathFromUtf8(brano.base + ".mid").filename())});
        return std::nullopt;
    }
    const Result<SmfFile> letto = LeggiMidi(*brano.mid);
    if (!letto) {
        std::string cosa = WithReason("the player does not play the song", letto.error().text);
        cosa.pop_back();  // findings end without a point
        rilievi.push_back({0, std::move(cosa)});
        return std::nullopt;
    }
    AvvisaSeDanneggiato(Utf8FromPath(*brano.mid), *letto, messaggi);
    return LengthMs(*letto);
}

Json JsonRilievi(const std::vector<Rilievo>& rilievi) {
    Json elenco = Json::array();
    for (const Rilievo& rilievo : rilievi) {
        elenco.push_back({{"line", rilievo.riga}, {"what", rilievo.cosa}});
    }
    return elenco;
}

std::string TestoRilievi(const std::string& file, const std::vector<Rilievo>& rilievi) {
    std::string testo;
    for (const Rilievo& rilievo : rilievi) {
        testo += SuUnaRiga(file) + ":" +
                 (rilievo.riga > 0 ? std::to_string(rilievo.riga) + ":" : "") + " " +
                 SuUnaRiga(rilievo.cosa) + "\n";
    }
    return testo;
}

}  // namespace

Resoconto ComandoCheck(const std::string& file) {
    Resoconto resoconto;
    std::vector<Rilievo> rilievi;
    bool letto = false;
    if (const auto rifiuto = RifiutoNome(file)) {
        resoconto.messaggi.push_back(*rifiuto);
    } else if (const Result<std::string> byte = ReadFile(FileNominato(file))) {
        letto = true;
        const auto durata =
            Durata(TrovaFileBrano(SenzaEstensione(file, {".lyk"})), rilievi, resoconto.messaggi);
        for (Rilievo& rilievo : ControllaTesto(DecodeFileText(*byte), durata)) {
            rilievi.push_back(std::move(rilievo));
        }
    } else {
        resoconto.messaggi.push_back(ReadError(FileNominato(file), byte.error().number).text);
    }
    resoconto.json = {
        {"file", file}, {"ok", letto && rilievi.empty()}, {"findings", JsonRilievi(rilievi)}};
    resoconto.testo = TestoRilievi(file, rilievi);
    return resoconto;
}

}  // namespace sonnel
