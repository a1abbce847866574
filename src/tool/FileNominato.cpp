#include "tool/FileNominato.h"

#include "platform/Text.h"
#include "platform/files/Files.h"

#include <utility>

namespace sonnel {

std::optional<Error> RifiutoNome(const std::string& file) {
    if (file.empty()) {
        return Error{0, "Can't read a file whose name is empty."};
    }
    if (IsValidUtf8(file)) {
        return std::nullopt;
    }
    return Error{0, "Can't read the file " + file + ": its name is not UTF-8."};
}

bool HaEstensione(std::string_view file, std::string_view estensione) {
    return file.size() > estensione.size() &&
           FoldCase(file.substr(file.size() - estensione.size())) == estensione;
}

std::filesystem::path CercaFile(const std::string& file) {
    const std::filesystem::path percorso = PathFromUtf8(file);
    return FindFile(percorso).value_or(percorso);
}

Result<std::filesystem::path> FileNominato(const std::string& file) {
    if (auto rifiuto = RifiutoNome(file)) {
        return std::move(*rifiuto);
    }
    return CercaFile(file);
}

Result<FileBrano> CercaBrano(const std::string& nome,
                             std::initializer_list<std::string_view> estensioni) {
    if (auto rifiuto = RifiutoNome(nome)) {
        return std::move(*rifiuto);
    }
    std::string_view base = nome;
    for (const std::string_view estensione : estensioni) {
        if (HaEstensione(nome, estensione)) {
            base.remove_suffix(estensione.size());
            break;
        }
    }
    return TrovaFileBrano(std::string(base));
}

}  // namespace sonnel
