#include "library/CaricaIndice.h"

#include "library/Indice.h"
#include "platform/Paths.h"
#include "platform/files/Files.h"
#include "ui/PuntatoreOccupato.h"
#include "ui/Titoli.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>

namespace sonnel {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view SenzaDirectory =
    "Specified karaoke database directory doesn't exist or can't be accessed. If it's a removable "
    "unit, probably the current disk is wrong or not inserted: please insert the proper disk, "
    "click OK and press the F5 key or select \"Reload index\" from the File menu. If it's a hard "
    "drive, select a different directory from the Options panel.";
constexpr std::string_view NonPronta =
    "The karaoke database drive is not ready: if it's a removable unit please insert the karaoke "
    "disk and click on Ok.";
constexpr std::string_view Rinuncia =
    "If the directory is wrong or no longer exists, select the options panel and choose the "
    "directory where you have your karaoke (or plan to store them). If the database is on a "
    "removable unit, insert the disk and press the F5 key or select \"Reload index\" from the File "
    "menu.";
constexpr std::string_view SenzaIndice =
    "The karaoke index file does not exist: to create a new index file press Ctrl-F5 or select "
    "\"Update index\" from the File menu.";

Answer Avvisa(const Libreria& libreria, std::string_view testo, Buttons bottoni) {
    const PuntatoreNormale puntatore(libreria.eventi);
    return libreria.msgBox.Show({std::string(testo), Icon::Exclamation, bottoni});
}

/// Looks for the index again as long as the user wants to retry. Returns false when there is none
/// to load; a message has reported it.
bool IndicePresente(const Libreria& libreria, PuntatoreOccupato& puntatore) {
    for (;;) {
        const StatoIndice stato = libreria.cercaIndice(PercorsoIndice(libreria.config.OpenDir));
        if (stato == StatoIndice::Presente) {
            return true;
        }
        puntatore.Ripristina();
        if (stato == StatoIndice::DispositivoPerso) {
            (void)Avvisa(libreria, SenzaDirectory, Buttons::OkCancel);
            return false;
        }
        if (stato == StatoIndice::Assente) {
            const bool directory = Accessibile(PathFromUtf8(libreria.config.OpenDir));
            (void)Avvisa(libreria, directory ? SenzaIndice : SenzaDirectory, Buttons::Ok);
            return false;
        }
        if (Avvisa(libreria, NonPronta, Buttons::OkCancel) != Answer::Ok) {
            (void)Avvisa(libreria, Rinuncia, Buttons::Ok);
            return false;
        }
    }
}

}  // namespace

StatoIndice StatoDaErrore(const std::error_code& errore) {
    constexpr std::array Persi{std::errc::no_such_device, std::errc::no_such_device_or_address,
                               std::errc::not_connected};
    // Retrying does not help against a wrong name or missing permission.
    constexpr std::array Assenti{
        std::errc::no_such_file_or_directory, std::errc::not_a_directory,
        std::errc::permission_denied,         std::errc::operation_not_permitted,
        std::errc::filename_too_long,         std::errc::too_many_symbolic_link_levels,
        std::errc::invalid_argument};
    const auto uno = [&](std::errc condizione) { return errore == condizione; };
    if (!errore) {
        return StatoIndice::Presente;
    }
    if (std::any_of(Persi.begin(), Persi.end(), uno)) {
        return StatoIndice::DispositivoPerso;
    }
    return std::any_of(Assenti.begin(), Assenti.end(), uno) ? StatoIndice::Assente
                                                            : StatoIndice::UnitaNonPronta;
}

StatoIndice CercaIndice(const fs::path& indice) {
    std::error_code errore;
    const fs::file_status stato = fs::status(indice, errore);
    if (stato.type() == fs::file_type::not_found || (!errore && !fs::is_regular_file(stato))) {
        return StatoIndice::Assente;
    }
    if (errore) {
        return StatoDaErrore(errore);
    }
    return FileReader::Open(indice) ? StatoIndice::Presente : StatoIndice::UnitaNonPronta;
}

bool Accessibile(const fs::path& directory) {
    std::error_code errore;
    const fs::directory_iterator prima(directory, errore);
    return !errore;
}

void CaricaTabella(const ProfileFile& indice, TabellaBrani& brani) {
    brani.Azzera();
    for (std::string& chiave : indice.Keys(SezioneBrani)) {
        Intestazione voce = LeggiBrano(indice, chiave);
        brani.InserisciBrano({std::move(chiave), std::move(voce.Titolo), std::move(voce.Autore),
                              std::move(voce.Album)});
    }
}

void CaricaIndice(const Libreria& libreria) {
    PuntatoreOccupato puntatore(libreria.eventi);
    libreria.brani.Azzera();
    if (!IndicePresente(libreria, puntatore)) {
        return;
    }
    ProfileFile indice(PercorsoIndice(libreria.config.OpenDir));
    {
        const ProfileFile::Batch lettura(indice);
        CaricaTabella(indice, libreria.brani);
    }
    puntatore.Ripristina();
    AvvisaEsclusi(libreria);
}

void AvvisaEsclusi(const Libreria& libreria) {
    const std::size_t esclusi = libreria.brani.Esclusi();
    if (esclusi == 0) {
        return;
    }
    const auto mostrati = static_cast<std::size_t>(libreria.brani.NumBrani());
    (void)Avvisa(libreria,
                 "The karaoke database holds " + std::to_string(mostrati + esclusi) +
                     " songs: the first " + std::to_string(mostrati) + " are shown, the other " +
                     std::to_string(esclusi) + " are not.",
                 Buttons::Ok);
}

}  // namespace sonnel
