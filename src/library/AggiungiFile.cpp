#include "library/AggiungiFile.h"

#include "library/Aggiunta.h"
#include "library/Indice.h"
#include "library/RaccoltaBrani.h"
#include "platform/Paths.h"
#include "platform/ScopeExit.h"
#include "platform/Text.h"
#include "ui/PuntatoreOccupato.h"

#include <cerrno>
#include <cstddef>

namespace sonnel {
namespace {

namespace fs = std::filesystem;

/// Whether the reason of a failed write will make the next one fail too.
bool SenzaPosto(int errore) {
    return errore == ENOSPC || errore == EDQUOT || errore == EROFS;
}

/// One run, while the message window is shown.
class Corsa {
  public:
    Corsa(const Libreria& libreria, const FinestreDB& finestre)
        : libreria_(libreria), finestre_(finestre) {}

    EsitoAggiunta Esegui(const std::vector<fs::path>& percorsi);

  private:
    bool Continua();
    void Aggiungi(const std::vector<FileBrano>& brani);

    const Libreria& libreria_;
    const FinestreDB& finestre_;
    EsitoAggiunta esito_;
    std::size_t percento_ = 100;  ///< shown last
};

/// Lets events run; false once the user has cancelled.
bool Corsa::Continua() {
    libreria_.eventi.RunPending();
    esito_.annullato = finestre_.messaggio.Annullato();
    return !esito_.annullato;
}

void Corsa::Aggiungi(const std::vector<FileBrano>& brani) {
    const fs::path directory = PathFromUtf8(libreria_.config.OpenDir);
    ProfileFile indice(PercorsoIndice(libreria_.config.OpenDir));
    ProfileFile::Batch lotto(indice);
    Aggiunta aggiunta(directory);
    for (std::size_t i = 0; i < brani.size() && !esito_.interrotto && Continua(); ++i) {
        if (const std::size_t percento = 100 * i / brani.size(); percento != percento_) {
            percento_ = percento;
            finestre_.messaggio.MostraMessaggio("Adding song " + std::to_string(i + 1) + " of " +
                                                    std::to_string(brani.size()) + "...",
                                                true);
        }
        const FileBrano& brano = brani[i];
        if (aggiunta.DellaLibreria(brano)) {
            ++esito_.presenti;
        } else if (const Result<std::string> nome = aggiunta.Aggiungi(indice, brano)) {
            ++esito_.aggiunti;
        } else {
            esito_.esclusi.emplace_back(brano.lyk ? *brano.lyk : *brano.mid, nome.error().text);
            esito_.interrotto = SenzaPosto(nome.error().number);
        }
    }
    esito_.errore = lotto.Commit();
    if (esito_.errore) {
        aggiunta.Ritira();
        esito_.aggiunti = 0;
    }
}

EsitoAggiunta Corsa::Esegui(const std::vector<fs::path>& percorsi) {
    const PuntatoreOccupato occupato(libreria_.eventi, Pointer::Normal);
    finestre_.abilitaFinestra(false);
    const ScopeExit fine([this] {
        finestre_.abilitaFinestra(true);
        finestre_.messaggio.ChiudiMessaggio();
    });
    finestre_.messaggio.MostraMessaggio("Looking for songs...", true);
    RaccoltaBrani raccolta([this] { return Continua(); });
    for (const fs::path& percorso : percorsi) {
        raccolta.Esamina(percorso);
    }
    if (Continua()) {
        Aggiungi(raccolta.Prendi());
    }
    if (esito_.aggiunti > 0) {
        CaricaIndice(libreria_);
        finestre_.lista.AggiornaLista();
    }
    return std::move(esito_);
}

}  // namespace

EsitoAggiunta AggiungiFile(const Libreria& libreria, const std::vector<fs::path>& percorsi,
                           const FinestreDB& finestre) {
    return Corsa(libreria, finestre).Esegui(percorsi);
}

std::string Riepilogo(const EsitoAggiunta& esito) {
    if (esito.errore) {
        return WithReason("No song was added, because the index can't be written",
                          esito.errore->text);
    }
    if (esito.aggiunti + esito.presenti == 0 && esito.esclusi.empty() && !esito.annullato) {
        return "There is no song to add among these files.";
    }
    std::string testo = esito.aggiunti == 1 ? "One song was added"
                                            : std::to_string(esito.aggiunti) + " songs were added";
    if (const std::size_t esclusi = esito.esclusi.size(); esclusi > 0) {
        testo += esclusi == 1 ? "; one file was not" : "; " + std::to_string(esclusi) + " were not";
    }
    if (esito.presenti > 0) {
        testo += "; " + std::to_string(esito.presenti) + " of the library's own passed over";
    }
    if (esito.interrotto) {
        return testo + ", and the rest was not tried: there is no room.";
    }
    return testo + (esito.annullato ? ", then you cancelled." : ".");
}

std::string RigheEsclusi(const EsitoAggiunta& esito) {
    std::string righe;
    for (const auto& [file, motivo] : esito.esclusi) {
        righe += WithReason(OneLine(DecodeUnmarkedText(Utf8FileName(file))), motivo) + "\n";
    }
    return righe;
}

}  // namespace sonnel
