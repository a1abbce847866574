#include "library/AggiornaIndice.h"
#include "library/CaricaIndice.h"
#include "library/Indice.h"
#include "platform/Paths.h"
#include "platform/SystemError.h"
#include "platform/SystemEvents.h"
#include "tool/Comandi.h"
#include "tool/FileNominato.h"
#include "tool/LetturaBrano.h"
#include "ui/basCommon.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

namespace sonnel {
namespace {

/// There are no window events. Each time they could run, one more file is done.
class Contatore : public SystemEvents {
  public:
    explicit Contatore(Uscite& uscite) : uscite_(uscite) {}
    void RunPending() override {
        constexpr std::size_t Passo = 100;
        if (++file_ % Passo == 0) {
            uscite_.Avanza("Indexing: " + std::to_string(file_) + " steps done");
        }
    }
    void WaitPending(std::chrono::milliseconds /*limit*/) override {}
    Pointer SetPointer(Pointer pointer) override { return std::exchange(puntatore_, pointer); }
    void Beep() override {}

  private:
    Uscite& uscite_;
    std::size_t file_ = 0;
    Pointer puntatore_ = Pointer::Normal;
};

bool Ricostruisci(const Libreria& libreria, std::vector<std::string>& messaggi) {
    EsitoAggiornamento esito = AggiornaIndice(libreria);
    messaggi = std::move(esito.saltati);
    if (esito.errore) {
        messaggi.push_back(std::move(esito.errore->text));
        return false;
    }
    return true;
}

/// Why there is no index to load: a sentence without the player's menus, which its own name.
std::optional<std::string> SenzaIndice(const std::string& directory, const std::string& openDir) {
    std::error_code errore;
    const std::filesystem::directory_iterator prima(PathFromUtf8(openDir), errore);
    if (errore) {
        return "Can't list the directory " + directory + ": " + SystemError(errore.value()).text +
               ".";
    }
    if (!EsisteIndice(openDir)) {
        return "Can't list the songs of " + directory +
               ": there is no index in it; --rebuild makes one.";
    }
    return Illeggibile(PercorsoIndice(openDir));
}

Json JsonBrani(const TabellaBrani& brani) {
    Json elenco = Json::array();
    for (int i = 1; i <= brani.NumBrani(); ++i) {
        const Brano& brano = brani.Brani(static_cast<std::int16_t>(i));
        elenco.push_back({{"file", brano.NomeFile},
                          {"title", brano.Titolo},
                          {"author", brano.Autore},
                          {"album", brano.Album}});
    }
    return elenco;
}

Json JsonAlbum(const std::string& directory) {
    Json elenco = Json::array();
    const std::string nomi =
        LeggiIndice(ProfileFile(PercorsoIndice(directory)), SezioneAlbum, "", "");
    std::string_view resto = nomi;
    for (std::string nome; ProssimaChiave(resto, nome);) {
        elenco.push_back(nome);
    }
    return elenco;
}

std::string TestoIndice(const TabellaBrani& brani, const Json& album) {
    std::string testo;
    for (int i = 1; i <= brani.NumBrani(); ++i) {
        const Brano& brano = brani.Brani(static_cast<std::int16_t>(i));
        testo += SuUnaRiga(brano.NomeFile) + ": " + SuUnaRiga(brano.Titolo) + " / " +
                 SuUnaRiga(brano.Autore) + " / " + SuUnaRiga(brano.Album) + "\n";
    }
    for (const Json& nome : album) {
        testo += "album " + SuUnaRiga(nome.get<std::string>()) + "\n";
    }
    return testo;
}

}  // namespace

Resoconto ComandoIndex(const std::string& directory, bool ricostruisci, Uscite& uscite) {
    Resoconto resoconto;
    resoconto.json = {{"ok", false}, {"songs", Json::array()}, {"albums", Json::array()}};
    if (const auto rifiuto = RifiutoNome(directory)) {
        resoconto.messaggi.push_back(rifiuto->text);
        return resoconto;
    }
    Config config;
    config.OpenDir = AggiungiBarra(directory);
    TabellaBrani brani;
    MessaggiRaccolti msgBox;
    Contatore eventi(uscite);
    const Libreria libreria{config, brani, msgBox, eventi};
    if (ricostruisci && !Ricostruisci(libreria, resoconto.messaggi)) {
        return resoconto;
    }
    if (auto errore = SenzaIndice(directory, config.OpenDir)) {
        resoconto.messaggi.push_back(std::move(*errore));
        return resoconto;
    }
    CaricaIndice(libreria);
    for (std::string& frase : msgBox.Frasi(directory)) {
        resoconto.messaggi.push_back(std::move(frase));
    }
    resoconto.json["ok"] = true;
    resoconto.json["songs"] = JsonBrani(brani);
    resoconto.json["albums"] = JsonAlbum(config.OpenDir);
    resoconto.testo = TestoIndice(brani, resoconto.json["albums"]);
    return resoconto;
}

}  // namespace sonnel
