#include "tool/Uscite.h"

#include "ui/basCommon.h"

#include <algorithm>
#include <ostream>
#include <utility>

namespace sonnel {

Uscite::Uscite(std::ostream& risultati, std::ostream& messaggi, bool terminale)
    : risultati_(risultati), messaggi_(messaggi), terminale_(terminale) {}

void Uscite::Scrivi(Resoconto resoconto) {
    tuttoBene_ = tuttoBene_ && resoconto.json.at("ok").get<bool>();
    TogliAvanzamento();
    for (const std::string& frase : resoconto.messaggi) {
        Messaggio(frase);
    }
    if (json_) {
        oggetti_.push_back(std::move(resoconto.json));
    } else {
        risultati_ << resoconto.testo;
    }
}

void Uscite::Avanza(const std::string& testo) {
    if (terminale_) {
        TogliAvanzamento();
        messaggi_ << testo << std::flush;
        avanzamento_ = testo.size();
    }
}

void Uscite::TogliAvanzamento() {
    if (avanzamento_ > 0) {
        messaggi_ << '\r' << std::string(avanzamento_, ' ') << '\r' << std::flush;
        avanzamento_ = 0;
    }
}

int Uscite::Concludi(Forma forma) {
    TogliAvanzamento();
    if (json_) {
        Json documento = Json::array();
        if (forma == Forma::Elenco) {
            documento = std::move(oggetti_);
        } else if (!oggetti_.empty()) {
            documento = std::move(oggetti_.front());
        }
        // What is not UTF-8 (a file's name may hold any byte) is marked as such.
        risultati_ << documento.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
    }
    risultati_.flush();
    if (!risultati_) {
        Messaggio("Can't write the results to standard output.");
        return 1;
    }
    return tuttoBene_ ? 0 : 1;
}

void Uscite::Messaggio(std::string_view frase) {
    messaggi_ << "sonnel-tool: " << SuUnaRiga(frase) << '\n';
}

std::string SuUnaRiga(std::string_view testo) {
    std::string riga(testo);
    SostituisciTesto(riga, "\r\n", " ");
    std::replace_if(
        riga.begin(), riga.end(),
        [](char c) { return static_cast<unsigned char>(c) < 0x20U || c == '\x7F'; }, ' ');
    return riga;
}

}  // namespace sonnel
