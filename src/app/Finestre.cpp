#include "app/Finestre.h"

#include "convert/ConvertiKar.h"
#include "library/AggiornaIndice.h"
#include "library/AggiungiFile.h"
#include "library/CaricaIndice.h"
#include "library/Indice.h"
#include "library/SincronizzaDB.h"
#include "library/frmElencaPerLingua.h"
#include "library/frmInfoBrano.h"
#include "library/frmResoconto.h"
#include "settings/frmOpzioni.h"

#include <utility>

namespace sonnel {

Finestre::Finestre(const Porte& porte, frmKaraoke::Avvio avvio, std::filesystem::path fileCoda)
    : p_(porte),
      libreria_{config_, brani_, p_.msgBox, p_.eventi},
      messaggio_(p_.schermo),
      coda_(std::move(fileCoda)),
      principale_({config_, timeline_, informazioni_, caso_, p_.registro, p_.sequencer, p_.msgBox,
                   p_.eventi, p_.orologio, p_.schermo, p_.shell, *this, coda_},
                  std::move(avvio)) {}

frmSelectSong& Finestre::Selezione() {
    if (!selezione_) {
        selezione_ = std::make_unique<frmSelectSong>(
            frmSelectSong::Parti{libreria_, p_.dialoghi, caso_, *this}, &principale_);
    }
    return *selezione_;
}

std::optional<FileBrano> Finestre::ScegliBrano() {
    frmSelectSong& finestra = Selezione();
    finestra.exec();
    return finestra.Scelta();
}

void Finestre::RileggiDB() {
    sonnel::RileggiDB(libreria_, Selezione());
}

void Finestre::SincronizzaDB() {
    sonnel::SincronizzaDB(libreria_, FinestreLibreria());
}

FinestreDB Finestre::FinestreLibreria() {
    return {Selezione(), messaggio_, [this](bool abilita) { principale_.setEnabled(abilita); }};
}

void Finestre::AggiungiFile(const std::vector<std::filesystem::path>& percorsi) {
    const EsitoAggiunta esito = sonnel::AggiungiFile(libreria_, percorsi, FinestreLibreria());
    if (esito.esclusi.size() <= 1) {
        const std::string escluso = esito.esclusi.empty() ? "" : "\r\n\r\n" + RigheEsclusi(esito);
        (void)p_.msgBox.Show({Riepilogo(esito) + escluso, Icon::Information});
    } else {
        frmResoconto(Riepilogo(esito), RigheEsclusi(esito), &Selezione()).exec();
    }
}

void Finestre::CaricaLibreria() {
    CaricaIndice(libreria_);
    (void)Selezione();
}

std::vector<RigaElenco> Finestre::ElencoBrani() {
    return ElencaPerLingua(brani_, Ordine::Titolo);
}

Result<Turno> Finestre::TurnoDelBrano(std::int16_t posizione) {
    return TurnoDi(FileDelBrano(config_.OpenDir, brani_.Brani(posizione)));
}

std::optional<std::string> Finestre::Accoda(std::int16_t posizione) {
    if (const auto errore = coda_.Aggiungi(TurnoDelBrano(posizione))) {
        (void)p_.msgBox.Show({errore->text, Icon::Exclamation});
        return std::nullopt;
    }
    const std::size_t quanti = coda_.Turni().size();
    return "Added: the queue has " + std::to_string(quanti) + (quanti == 1 ? " song" : " songs");
}

void Finestre::ConvertiKar() {
    frmSelectSong& finestra = Selezione();
    sonnel::ConvertiKar(libreria_,
                        {p_.dialoghi, finestra, ProcessEnvironment, [&](std::int16_t posizione) {
                             ProprietaBrano(libreria_, finestra, posizione, &finestra);
                         }});
}

void Finestre::MostraOpzioni() {
    frmOpzioni({Opzioni(), p_.schermo}, &principale_).exec();
}

PartiOpzioni Finestre::Opzioni() {
    return {.config = config_,
            .registro = p_.registro,
            .msgBox = p_.msgBox,
            .dialoghi = p_.dialoghi,
            .esisteIndice = EsisteIndice,
            .creaIndice =
                [this] {
                    ProfileFile indice(PercorsoIndice(config_.OpenDir));
                    CreaIndice(indice);
                    (void)AggiornaIndice(libreria_);
                },
            .caricaIndice =
                [this] {
                    CaricaIndice(libreria_);
                    selezione_.reset();
                }};
}

}  // namespace sonnel
