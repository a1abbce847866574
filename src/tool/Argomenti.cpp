#include "tool/Argomenti.h"

#include "platform/Text.h"
#include "platform/files/Files.h"

#include <exception>
#include <new>
#include <utility>

namespace sonnel {

std::optional<std::string> RifiutoNome(const std::string& file) {
    if (file.empty()) {
        return "Can't read a file whose name is empty.";
    }
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
    Result<SmfFile> letto = ReadSmfFile(file);
    if (!letto) {
        return Error{letto.error().number,
                     WithReason("Can't read the file " + Utf8FromPath(file), letto.error().text)};
    }
    return letto;
}

void AvvisaSeDanneggiato(const std::string& file, const SmfFile& letto,
                         std::vector<std::string>& messaggi) {
    if (letto.damaged) {
        messaggi.push_back(file + ": the file is damaged; the player plays what it can read.");
    }
}

std::optional<std::string> Illeggibile(const std::filesystem::path& file) {
    const Result<FileReader> aperto = FileReader::Open(file);
    return aperto ? std::nullopt : std::optional(ReadError(file, aperto.error().number).text);
}

std::optional<std::string> Tenta(std::string_view file, const std::function<void()>& lavoro) {
    const std::string frase = "Can't finish the work on the file " + std::string(file);
    try {
        lavoro();
        return std::nullopt;
    } catch (const std::bad_alloc&) {
        return frase + ": there is not enough memory.";
    } catch (const std::exception& errore) {
        return WithReason(frase, errore.what());
    }
}

}  // namespace sonnel
