#include "song/LeggiKaraoke.h"
#include "tool/Comandi.h"
#include "tool/LetturaBrano.h"
#include "ui/basCommon.h"

#include <string_view>

namespace sonnel {
namespace {

std::string_view NomeIcona(Icon icona) {
    switch (icona) {
        case Icon::Critical:
            return "critical";
        case Icon::Exclamation:
            return "exclamation";
        case Icon::Information:
            return "information";
        case Icon::Question:
            return "question";
        case Icon::None:
            break;
    }
    return "none";
}

Json JsonMessaggi(const MessaggiRaccolti& msgBox) {
    Json elenco = Json::array();
    for (const Message& messaggio : msgBox.messaggi) {
        elenco.push_back({{"text", messaggio.text},
                          {"icon", NomeIcona(messaggio.icon)},
                          {"title", messaggio.title}});
    }
    return elenco;
}

Json JsonEventi(const Timeline& timeline) {
    Json elenco = Json::array();
    for (int i = 1; i <= timeline.NumEventi(); ++i) {
        const Evento& evento = timeline.Eventi(static_cast<std::int16_t>(i));
        elenco.push_back({{"time", evento.Tempo},
                          {"kind", static_cast<int>(evento.Tipo)},
                          {"text", evento.Testo}});
    }
    return elenco;
}

std::string RigaCampo(std::string_view nome, std::string valore) {
    // An "&" is doubled for the labels of windows.
    SostituisciTesto(valore, "&&", "&");
    return std::string(nome) + SuUnaRiga(valore) + "\n";
}

std::string TestoEventi(const Timeline& timeline) {
    std::string testo;
    for (int i = 1; i <= timeline.NumEventi(); ++i) {
        const Evento& evento = timeline.Eventi(static_cast<std::int16_t>(i));
        std::string parole = evento.Testo;
        SostituisciTesto(parole, FineRiga, " / ");
        testo += std::to_string(evento.Tempo) + "\t";
        testo += NomeTipo(evento.Tipo);
        testo += "\t" + SuUnaRiga(parole) + "\n";
    }
    return testo;
}

std::string TestoBrano(const InformazioniBrano& informazioni, const Timeline& timeline) {
    return RigaCampo("Title:      ", informazioni.Titolo) +
           RigaCampo("Author:     ", informazioni.Autore) +
           RigaCampo("Karaoke by: ", informazioni.KaraokeBy) +
           RigaCampo("Version:    ", informazioni.Versione) +
           RigaCampo("Date:       ", informazioni.Data) + TestoEventi(timeline);
}

}  // namespace

Resoconto ComandoShow(const std::string& file) {
    const ParoleLette parole = ParoleDelBrano(file, {".lyk"});
    const InformazioniBrano& informazioni = parole.informazioni;
    Resoconto resoconto;
    resoconto.json = {{"file", file},
                      {"ok", parole.complete},
                      {"messages", JsonMessaggi(parole.msgBox)},
                      {"title", informazioni.Titolo},
                      {"author", informazioni.Autore},
                      {"karaokeBy", informazioni.KaraokeBy},
                      {"version", informazioni.Versione},
                      {"date", informazioni.Data},
                      {"events", JsonEventi(parole.timeline)}};
    resoconto.testo = parole.complete ? TestoBrano(informazioni, parole.timeline) : "";
    resoconto.messaggi = parole.messaggi;
    return resoconto;
}

}  // namespace sonnel
