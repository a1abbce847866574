#include "tool/Argomenti.h"

#include "platform/Files.h"
#include "platform/Text.h"

#include <utility>

namespace sonnel {

std::optional<std::string> RifiutoNome(const std::string& file) {
    if (IsValidUtf8(file)) {
        return std::nullopt;
    }
    return "Can't read the file " + file + ": its name is not UTF-8.";
}

bool HaEstensione(std::string_view file, std::string_view estensione) {
    return file.size() > estensione.size() &&
           FoldCase(file.substr(file.size() - estensione.size())) == estensione;
}

std::string SenzaEstensione(std::string_view file,
                            std::initializer_list<std::string_view> estensioni) {
    for (const std::string_view estensione : estensioni) {
        if (HaEstensione(file, estensione)) {
            file.remove_suffix(estensione.size());
            break;
        }
    }
    return std::string(file);
}

std::filesystem::path FileNominato(const std::string& file) {
    std::filesystem::path percorso = PathFromUtf8(file);
    return FindFile(percorso).value_or(percorso);
}

Result<SmfFile> LeggiMidi(const std::filesystem::path& file) {
    Result<std::string> byte = ReadFile(file);
    if (!byte) {
        return Error{byte.error().number,
                     "Can't read the file " + Utf8FromPath(file) + ": " + byte.error().text + "."};
    }
    Result<SmfFile> letto = ReadSmf(std::move(*byte));
    if (!letto) {
        return Error{letto.error().number, Utf8FromPath(file) + ": " + letto.error().text + "."};
    }
    return letto;
}

std::string ConNome(std::string_view file, std::string_view frase) {
    const bool nominato = frase.find(file) != std::string_view::npos;
    return nominato ? std::string(frase) : std::string(file).append(": ").append(frase);
}

std::vector<std::string> MessaggiRaccolti::Frasi(std::string_view file) const {
    std::vector<std::string> frasi;
    for (const Message& messaggio : messaggi) {
        frasi.push_back(ConNome(file, messaggio.text));
    }
    return frasi;
}

}  // namespace sonnel
