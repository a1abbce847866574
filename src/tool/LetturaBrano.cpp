#include "tool/LetturaBrano.h"

#include "platform/Paths.h"
#include "song/LeggiKaraoke.h"
#include "tool/Argomenti.h"

#include <array>
#include <cstddef>
#include <optional>
#include <utility>

namespace sonnel {

std::vector<std::string> MessaggiRaccolti::Frasi(std::string_view file) const {
    std::vector<std::string> frasi;
    for (const Message& messaggio : messaggi) {
        frasi.push_back("The player says of " + std::string(file) + ": \"" + messaggio.text + "\"");
    }
    return frasi;
}

bool LeggiParole(std::string_view file, const FileBrano& brano, Timeline& timeline,
                 InformazioniBrano& informazioni, MessaggiRaccolti& msgBox,
                 std::vector<std::string>& messaggi) {
    const bool letto = LeggiKaraoke(brano, timeline, informazioni, msgBox);
    auto chiuso =
        letto ? std::nullopt : Illeggibile(brano.lyk.value_or(PathFromUtf8(brano.base + ".lyk")));
    messaggi = chiuso ? std::vector{std::move(*chiuso)} : msgBox.Frasi(file);
    return letto;
}

std::string_view NomeTipo(TipoEvento tipo) {
    static constexpr std::array<std::string_view, 3> Nomi{"marker", "page", "colour"};
    return Nomi.at(static_cast<std::size_t>(tipo));
}

}  // namespace sonnel
