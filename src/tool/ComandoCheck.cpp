#include "platform/Text.h"
#include "platform/files/Files.h"
#include "platform/midi/Sequence.h"
#include "tool/Comandi.h"
#include "tool/Controllo.h"
#include "tool/FileNominato.h"
#include "tool/LetturaBrano.h"

#include <optional>
#include <utility>

namespace sonnel {
namespace {

Result<std::string> LeggiTesto(const std::string& file) {
    const Result<std::filesystem::path> nominato = FileNominato(file);
    if (!nominato) {
        return nominato.error();
    }
    const Result<std::string> byte = ReadFile(*nominato);
    if (!byte) {
        return ReadError(*nominato, byte.error().number);
    }
    return DecodeFileText(*byte);
}

/// How long the music beside a song's words lasts, in ms; nothing, and a finding, when there is
/// none or it cannot be read. Damage that the player gets over is no finding but a message.
std::optional<std::int32_t> Durata(const FileBrano& brano, std::vector<Rilievo>& rilievi,
                                   std::vector<std::string>& messaggi) {
    if (!brano.mid) {
        rilievi.push_back({0,
                           "there is no MID file beside it: the player does not play the song; put "
                           "its music there under the name " +
                               Utf8FromPath(PathFromUtf8(brano.base + ".mid").filename())});
        return std::nullopt;
    }
    const Result<SmfFile> letto = LeggiMusica(*brano.mid, Utf8FromPath(*brano.mid), messaggi);
    if (!letto) {
        std::string cosa = WithReason("the player does not play the song", letto.error().text);
        cosa.pop_back();  // findings end without a point
        rilievi.push_back({0, std::move(cosa)});
        return std::nullopt;
    }
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
    const Result<std::string> testo = LeggiTesto(file);
    if (testo) {
        const auto durata = Durata(*BranoNominato(file, {".lyk"}), rilievi, resoconto.messaggi);
        for (Rilievo& rilievo : ControllaTesto(*testo, durata)) {
            rilievi.push_back(std::move(rilievo));
        }
    } else {
        resoconto.messaggi.push_back(testo.error().text);
    }
    resoconto.json = {
        {"file", file}, {"ok", testo && rilievi.empty()}, {"findings", JsonRilievi(rilievi)}};
    resoconto.testo = TestoRilievi(file, rilievi);
    return resoconto;
}

}  // namespace sonnel
