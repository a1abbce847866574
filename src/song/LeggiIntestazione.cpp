#include "song/LeggiIntestazione.h"

#include "platform/SystemError.h"
#include "platform/Text.h"
#include "platform/files/Files.h"
#include "platform/files/LineReader.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <optional>

namespace sonnel {
namespace {

constexpr char InizioCorpo = '0';

/// Finds the first line that begins with "0", from `da` on. If `da` is 0, the file's first line
/// counts too, also after a byte order mark.
std::optional<std::size_t> CercaCorpo(std::string_view byte, std::size_t da) {
    if (da == 0 && DecodeFileText(byte.substr(0, 4)).starts_with(InizioCorpo)) {
        return 0;
    }
    for (std::size_t fine = byte.find('\r', da); fine != std::string_view::npos;
         fine = byte.find('\r', fine + 1)) {
        const std::size_t riga = byte.substr(fine + 1, 1) == "\n" ? fine + 2 : fine + 1;
        if (riga < byte.size() && byte[riga] == InizioCorpo) {
            return riga;
        }
    }
    return std::nullopt;
}

/// The bytes of the file up to its body.
Result<std::string> LeggiInizio(FileReader& file) {
    constexpr std::size_t Blocco = 1000;  // most headers are shorter
    constexpr std::size_t FineRiga = 2;
    std::string byte;
    for (;;) {
        const std::size_t prima = byte.size();
        if (std::optional<Error> errore = file.Read(byte, std::max(Blocco, prima))) {
            return *errore;
        }
        // A line end may be split between two blocks.
        const auto corpo = CercaCorpo(byte, prima < FineRiga ? 0 : prima - FineRiga);
        if (corpo || byte.size() == prima) {
            byte.resize(corpo.value_or(prima));
            return byte;
        }
        if (byte.size() > MaxFileSize) {
            return SystemError(EFBIG);
        }
    }
}

}  // namespace

Intestazione IntestazioneDaTesto(std::string_view testo) {
    Intestazione trovata;
    LineReader righe(testo);
    while (const auto riga = righe.Next()) {
        const std::string_view campo = riga->substr(0, 3);
        if (campo == "*TI") {
            trovata.Titolo = riga->substr(3);
        } else if (campo == "*AU") {
            trovata.Autore = riga->substr(3);
        } else if (campo == "*AL") {
            trovata.Album = riga->substr(3);
        }
    }
    return trovata;
}

Result<Intestazione> LeggiIntestazione(const std::filesystem::path& directory,
                                       std::string_view name) {
    const std::filesystem::path atteso = directory / PathFromUtf8(std::string(name) + ".lyk");
    if (!IsPlainName(name)) {
        return ReadError(atteso, EINVAL);
    }
    return LeggiIntestazione(FindFile(atteso).value_or(atteso));
}

Result<Intestazione> LeggiIntestazione(const std::filesystem::path& file) {
    Result<FileReader> aperto = FileReader::Open(file);
    if (!aperto) {
        return ReadError(file, aperto.error().number);
    }
    const Result<std::string> inizio = LeggiInizio(*aperto);
    if (!inizio) {
        return ReadError(file, inizio.error().number);
    }
    return IntestazioneDaTesto(DecodeFileText(*inizio));
}

}  // namespace sonnel
