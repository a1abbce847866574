#include "library/SincronizzaDB.h"

#include "library/AggiornaIndice.h"
#include "platform/ScopeExit.h"
#include "ui/PuntatoreOccupato.h"

#include <cstdint>
#include <string>

namespace sonnel {
namespace {

constexpr const char* Domanda =
    "Updating the index means reading the existing karaoke file informations and remove from the "
    "index the songs that no more exist. This operation may require some minutes to complete, "
    "depending on the number of files you have. Do you really want to update the index?";

/// Runs a step that refills the song table, then refills the list and selects the same position.
template <class Operazione>
void RinnovaLista(ListaBrani& lista, const Operazione& operazione) {
    const std::int16_t posizione = lista.BranoSelezionato();
    operazione();
    lista.AggiornaLista();
    if (posizione > 0) {
        lista.SelezionaBrano(posizione);
    }
}

}  // namespace

void SincronizzaDB(const Libreria& libreria, const FinestreDB& finestre) {
    if (libreria.msgBox.Show({Domanda, Icon::Question, Buttons::OkCancel, 2}) != Answer::Ok) {
        return;
    }
    {
        const PuntatoreOccupato occupato(libreria.eventi, Pointer::Normal);
        finestre.abilitaFinestra(false);
        const ScopeExit fine([&] {
            finestre.abilitaFinestra(true);
            finestre.messaggio.ChiudiMessaggio();
        });
        finestre.messaggio.MostraMessaggio("Updating, please wait...", false);
        RinnovaLista(finestre.lista, [&] { (void)AggiornaIndice(libreria); });
    }
    (void)libreria.msgBox.Show({"Index update completed.", Icon::Information});
    AvvisaEsclusi(libreria);
}

void RileggiDB(const Libreria& libreria, ListaBrani& lista) {
    const PuntatoreOccupato occupato(libreria.eventi, Pointer::Normal);
    RinnovaLista(lista, [&] { CaricaIndice(libreria); });
}

}  // namespace sonnel
