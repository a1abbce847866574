#include "platform/midi/Sequence.h"
#include "tool/Comandi.h"
#include "tool/FileNominato.h"
#include "tool/LetturaBrano.h"

#include <cstddef>
#include <cstdint>

namespace sonnel {
namespace {

struct Conteggi {
    std::size_t eventi = 0;
    std::size_t note = 0;
    std::size_t tempi = 0;
    std::size_t testi = 0;
};

Conteggi Conta(const SmfFile& file) {
    constexpr unsigned NoteOn = 0x9;
    constexpr std::uint8_t UltimoTesto = 0x0F;
    Conteggi conteggi;
    for (const SmfTrack& traccia : file.tracks) {
        conteggi.eventi += traccia.size();
        for (const SmfEvent& evento : traccia) {
            const bool nota = evento.status >> 4U == NoteOn && evento.data2 > 0;
            const bool testo = evento.status == kMeta && evento.metaType >= kMetaText &&
                               evento.metaType <= UltimoTesto;
            conteggi.note += nota ? 1 : 0;
            conteggi.tempi += evento.IsMeta(kMetaTempo) ? 1 : 0;
            conteggi.testi += testo ? 1 : 0;
        }
    }
    return conteggi;
}

void Descrivi(const std::string& nome, const SmfFile& file, Resoconto& resoconto) {
    const Conteggi conteggi = Conta(file);
    Json& json = resoconto.json;
    json["ok"] = true;
    json["format"] = file.format;
    json["tracks"] = file.tracks.size();
    json["division"] = file.divisionWord;
    json["events"] = conteggi.eventi;
    json["notes"] = conteggi.note;
    json["tempos"] = conteggi.tempi;
    json["texts"] = conteggi.testi;
    json["lengthMs"] = LengthMs(file);
    json["damaged"] = file.damaged;
    resoconto.testo = SuUnaRiga(nome) + ":";
    for (const char* campo : {"format", "tracks", "division", "events", "notes", "tempos", "texts",
                              "lengthMs", "damaged"}) {
        resoconto.testo += std::string(" ") + campo + " " + json[campo].dump();
    }
    resoconto.testo += "\n";
}

}  // namespace

Resoconto ComandoMidi(const std::string& file) {
    Resoconto resoconto;
    resoconto.json = {{"file", file},  {"ok", false},   {"format", 0},      {"tracks", 0},
                      {"division", 0}, {"events", 0},   {"notes", 0},       {"tempos", 0},
                      {"texts", 0},    {"lengthMs", 0}, {"damaged", false}, {"error", ""}};
    const Result<std::filesystem::path> nominato = FileNominato(file);
    const Result<SmfFile> letto =
        nominato ? LeggiMidi(*nominato, file, resoconto.messaggi) : nominato.error();
    if (letto) {
        Descrivi(file, *letto, resoconto);
    } else {
        resoconto.json["error"] = letto.error().text;
        resoconto.messaggi.push_back(letto.error().text);
    }
    return resoconto;
}

}  // namespace sonnel
