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

/// The file with a song's words: its LYK file, or a file by another name that was named itself;
/// nothing when only music was named.
std::optional<std::filesystem::path> Parole(const std::string& nome, const FileBrano& brano) {
    const bool musica = HaEstensione(nome, ".mid") || HaEstensione(nome, ".kar");
    const auto nominato = FindFile(PathFromUtf8(nome));
    if (brano.lyk || (nominato && !musica)) {
        return brano.lyk ? brano.lyk : nominato;
    }
    const bool presente = nominato || (brano.mid && !HaEstensione(nome, ".lyk"));
    return presente ? std::nullopt
                    : std::optional(PathFromUtf8(musica ? nome : brano.base + ".lyk"));
}

Rilievo SenzaCompagno(const std::string& manca, const std::string& effetto,
                      const std::string& nome) {
    return {0, "there is no " + manca + " file beside it: the player " + effetto +
                   " there under the name " + Utf8FileName(PathFromUtf8(nome))};
}

/// How long the music beside a song's words lasts, in ms; nothing, and a finding, when there is
/// none or it cannot be read. Damage that the player gets over is no finding but a message.
std::optional<std::int32_t> Durata(const FileBrano& brano, std::vector<Rilievo>& rilievi,
                                   std::vector<std::string>& messaggi) {
    if (!brano.mid) {
        rilievi.push_back(
            SenzaCompagno("MID", "does not play the song; put its music", brano.base + ".mid"));
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

/// The song that is named by its path without extension or by any of its files.
Result<FileBrano> BranoDaControllare(const std::string& nome) {
    const std::filesystem::path file = CercaFile(nome);
    if (std::error_code ignoto;
        std::filesystem::is_regular_file(file, ignoto) && SembraMidi(file)) {
        return BranoDaFile(file);
    }
    return CercaBrano(nome, {".lyk", ".mid", ".kar"});
}

/// Looks through the words and the music; an error when the words cannot be read.
std::optional<Error> Controlla(const std::string& nome, std::vector<Rilievo>& rilievi,
                               std::vector<std::string>& messaggi) {
    const Result<FileBrano> brano = BranoDaControllare(nome);
    if (!brano) {
        return brano.error();
    }
    if (!brano->motivo.empty()) {
        rilievi.push_back({0, "the player can't sing it: " + brano->motivo});
        return std::nullopt;
    }
    Result<std::string> testo = brano->parole.value_or("");
    if (!brano->parole) {
        const std::optional<std::filesystem::path> parole = Parole(nome, *brano);
        if (!parole) {
            rilievi.push_back(
                SenzaCompagno("LYK", "has no words to show; put them", brano->base + ".lyk"));
            return std::nullopt;
        }
        const Result<std::string> byte = ReadFile(*parole);
        if (!byte) {
            return ReadError(*parole, byte.error().number);
        }
        testo = DecodeFileText(*byte);
    }
    const std::optional<std::int32_t> durata = Durata(*brano, rilievi, messaggi);
    for (Rilievo& rilievo : ControllaTesto(*testo, durata)) {
        rilievi.push_back(std::move(rilievo));
    }
    return std::nullopt;
}

}  // namespace

Resoconto ComandoCheck(const std::string& file) {
    Resoconto resoconto;
    std::vector<Rilievo> rilievi;
    const std::optional<Error> errore = Controlla(file, rilievi, resoconto.messaggi);
    if (errore) {
        resoconto.messaggi.push_back(errore->text);
    }
    resoconto.json = {
        {"file", file}, {"ok", !errore && rilievi.empty()}, {"findings", JsonRilievi(rilievi)}};
    resoconto.testo = TestoRilievi(file, rilievi);
    return resoconto;
}

}  // namespace sonnel
