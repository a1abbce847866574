#include "app/Finestre.h"

#include "convert/ConvertiKar.h"
#include "library/AggiornaIndice.h"
#include "library/AggiungiBrani.h"
#include "library/CaricaIndice.h"
#include "library/Indice.h"
#include "library/SincronizzaDB.h"
#include "library/frmInfoBrano.h"
#include "platform/Files.h"
#include "settings/frmOpzioni.h"

namespace sonnel {

Finestre::Finestre(Programma& programma, CommonDialog& dialoghi, QWidget& principale)
    : programma_(programma),
      dialoghi_(dialoghi),
      principale_(principale),
      libreria_{programma.config, programma.brani, programma.msgBox, programma.eventi},
      messaggio_(programma.schermo) {
    programma.scelta.scegli = [this] { return ScegliBrano(); };
    programma.scelta.nomeFile = [&brani = programma.brani](std::int32_t posizione) {
        return posizione <= brani.NumBrani()
                   ? brani.Brani(static_cast<std::int16_t>(posizione)).NomeFile
                   : "";
    };
    Agganci& agganci = programma.agganci;
    agganci.CaricaIndice = [this] { CaricaIndice(libreria_); };
    agganci.RileggiDB = [this] { RileggiDB(libreria_, Selezione()); };
    agganci.SincronizzaDB = [this] { AggiornaIndiceDaMenu(); };
    agganci.mostraOpzioni = [this] { MostraOpzioni(); };
    agganci.caricaSelezione = [this] { (void)Selezione(); };
}

std::string Finestre::ScegliBrano() {
    frmSelectSong& finestra = Selezione();
    finestra.exec();
    return finestra.Tag;
}

void Finestre::AggiornaIndiceDaMenu() {
    sonnel::SincronizzaDB(libreria_, {Selezione(), messaggio_,
                                      [this](bool abilita) { principale_.setEnabled(abilita); }});
}

void Finestre::MostraOpzioni() {
    frmOpzioni({Opzioni(), dialoghi_, programma_.schermo}, &principale_).exec();
}

PartiOpzioni Finestre::Opzioni() {
    return {.config = programma_.config,
            .registro = programma_.registro,
            .msgBox = programma_.msgBox,
            .esisteIndice = EsisteIndice,
            .creaIndice =
                [this] {
                    ProfileFile indice(PercorsoIndice(programma_.config.OpenDir));
                    CreaIndice(indice);
                },
            .aggiornaIndice = [this] { (void)AggiornaIndice(libreria_); },
            .caricaIndice = [this] { CaricaIndice(libreria_); },
            .scaricaSelezione = [this] { selezione_.reset(); },
            .dialogoParteDa =
                [this](const std::string& openDir) { dialoghi_.StartIn(PathFromUtf8(openDir)); }};
}

frmSelectSong& Finestre::Selezione() {
    if (!selezione_) {
        selezione_ = std::make_unique<frmSelectSong>(
            frmSelectSong::Parti{libreria_, dialoghi_, programma_.caso}, &principale_);
        selezione_->SincronizzaDB = programma_.agganci.SincronizzaDB;
        selezione_->AggiungiBrani = [this] {
            sonnel::AggiungiBrani(libreria_, dialoghi_, *selezione_);
        };
        selezione_->ConvertiKar = [this] {
            sonnel::ConvertiKar(libreria_, {dialoghi_, *selezione_, ProcessEnvironment,
                                            selezione_->ProprietaBrano});
        };
        selezione_->ProprietaBrano = [this] {
            sonnel::ProprietaBrano(libreria_, *selezione_, selezione_.get());
        };
    }
    return *selezione_;
}

}  // namespace sonnel
