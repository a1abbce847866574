#include "settings/basRegistry.h"

#include <string>

namespace sonnel {

bool CreaChiave(Registry& registro, RegistryRoot radice, std::string_view percorso) {
    return registro.Create({radice, std::string(percorso)});
}

void ScriviChiave(Registry& registro, RegistryRoot radice, std::string_view percorso,
                  std::string_view nome, const RegistryValue& valore) {
    registro.Write({radice, std::string(percorso)}, nome, valore);
}

RegistryValue LeggiChiave(Registry& registro, RegistryRoot radice, std::string_view percorso,
                          std::string_view nome) {
    return registro.Read({radice, std::string(percorso)}, nome)
        .value_or(std::string(ChiaveAssente));
}

}  // namespace sonnel
