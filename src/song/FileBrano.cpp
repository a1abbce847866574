#include "song/FileBrano.h"

#include "platform/Paths.h"
#include "platform/Text.h"
#include "platform/files/Files.h"
#include "song/LetturaEsatta.h"

#include <system_error>
#include <utility>

namespace sonnel {
namespace {

namespace fs = std::filesystem;

bool UnoDeiDue(const fs::path& file) {
    const std::string estensione = FoldCase(Utf8FromPath(file.extension()));
    return estensione == ".lyk" || estensione == ".mid";
}

/// Reads the words of a MIDI file into its song.
void LeggiParole(const fs::path& file, FileBrano& brano) {
    const Result<SmfFile> midi = ReadSmfFile(file);
    const Result<LetturaEsatta> lettura =
        midi ? LeggiEsatto(*midi, Utf8FromPath(file.stem())) : midi.error();
    if (lettura) {
        brano.mid = file;
        brano.parole = lettura->Testo;
    } else if (lettura.error().number != static_cast<int>(SmfError::NotMidi)) {
        brano.motivo =
            WithReason("Can't read the words of " + Utf8FromPath(file), lettura.error().text);
    }
}

}  // namespace

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
    std::error_code mancante;
    if (!brano.Completo() && fs::is_regular_file(file, mancante)) {
        LeggiParole(file, brano);
    }
    return brano;
}

}  // namespace sonnel
