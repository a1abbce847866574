#include "tool/LetturaBrano.h"

#include "platform/Text.h"
#include "platform/files/Files.h"
#include "song/LeggiKaraoke.h"
#include "tool/FileNominato.h"

#include <array>
#include <cstddef>
#include <utility>

namespace sonnel {
namespace {

Error NonLetto(const std::filesystem::path& file, const Error& errore) {
    return {errore.number, WithReason("Can't read the file " + Utf8FromPath(file), errore.text)};
}

}  // namespace

std::vector<std::string> MessaggiRaccolti::Frasi(std::string_view file) const {
    std::vector<std::string> frasi;
    for (const Message& messaggio : messaggi) {
        frasi.push_back("The player says of " + std::string(file) + ": \"" + messaggio.text + "\"");
    }
    return frasi;
}

std::optional<std::string> Illeggibile(const std::filesystem::path& file) {
    const Result<FileReader> aperto = FileReader::Open(file);
    return aperto ? std::nullopt : std::optional(ReadError(file, aperto.error().number).text);
}

ParoleLette ParoleDelBrano(const std::string& nome,
                           std::initializer_list<std::string_view> estensioni) {
    ParoleLette parole;
    Result<FileBrano> brano = CercaBrano(nome, estensioni);
    if (!brano) {
        parole.messaggi.push_back(brano.error().text);
        return parole;
    }
    parole.file = std::move(*brano);
    parole.complete =
        LeggiKaraoke(parole.file, parole.timeline, parole.informazioni, parole.msgBox);
    auto chiuso =
        parole.complete
            ? std::nullopt
            : Illeggibile(parole.file.lyk.value_or(PathFromUtf8(parole.file.base + ".lyk")));
    parole.messaggi = chiuso ? std::vector{std::move(*chiuso)} : parole.msgBox.Frasi(nome);
    return parole;
}

Result<SmfFile> LeggiMidi(const std::filesystem::path& file, const std::string& nome,
                          std::vector<std::string>& messaggi) {
    Result<SmfFile> letto = ReadSmfFile(file);
    if (!letto) {
        return NonLetto(file, letto.error());
    }
    if (letto->damaged) {
        messaggi.push_back(nome + ": the file is damaged; the player plays what it can read.");
    }
    return letto;
}

Result<SmfFile> LeggiMusica(const std::filesystem::path& file, const std::string& nome,
                            std::vector<std::string>& messaggi) {
    Result<SmfFile> letto = LeggiMidi(file, nome, messaggi);
    const auto rifiuto = letto ? RefusalToPlay(*letto) : std::nullopt;
    return rifiuto ? NonLetto(file, *rifiuto) : std::move(letto);
}

std::string_view NomeTipo(TipoEvento tipo) {
    static constexpr std::array<std::string_view, 3> Nomi{"marker", "page", "colour"};
    return Nomi.at(static_cast<std::size_t>(tipo));
}

}  // namespace sonnel
