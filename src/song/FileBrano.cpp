#include "song/FileBrano.h"

#include "platform/Paths.h"
#include "platform/Text.h"
#include "platform/files/Files.h"
#include "song/LetturaEsatta.h"

#include <utility>

namespace sonnel {
namespace {

namespace fs = std::filesystem;

bool UnoDeiDue(const fs::path& file) {
    const std::string estensione = FoldCase(Utf8FromPath(file.extension()));
    return estensione == ".lyk" || estensione == ".mid";
}

}  // namespace

bool SembraMidi(const fs::path& file) {
    constexpr std::size_t inizio = 4;
    std::string byte;
    Result<FileReader> lettore = FileReader::Open(file);
    return lettore && !lettore->Read(byte, inizio) && (byte == "MThd" || byte == "RIFF");
}

void LeggiParole(FileBrano& brano) {
    const Result<SmfFile> midi = ReadSmfFile(*brano.mid);
    const Result<LetturaEsatta> lettura =
        midi ? LeggiEsatto(*midi, Utf8FromPath(brano.mid->stem())) : midi.error();
    if (lettura) {
        brano.parole = lettura->Testo;
    } else {
        brano.motivo = lettura.error().text;
    }
}

FileBrano TrovaFileBrano(std::string base) {
    FileBrano brano{.base = std::move(base)};
    brano.lyk = FindFile(PathFromUtf8(brano.base + ".LYK"));
    brano.mid = FindFile(PathFromUtf8(brano.base + ".MID"));
    return brano;
}

FileBrano BranoDaFile(const fs::path& file) {
    FileBrano brano{.base = Utf8FromPath(fs::path(file).replace_extension())};
    if (UnoDeiDue(file)) {
        brano = TrovaFileBrano(brano.base);
    }
    if (!brano.Completo() && SembraMidi(file)) {
        brano = {.base = brano.base, .mid = file};
        LeggiParole(brano);
    }
    return brano;
}

}  // namespace sonnel
