#include "player/Coda.h"

#include "platform/Numbers.h"
#include "platform/Paths.h"
#include "platform/Text.h"
#include "platform/files/DirectoryLock.h"
#include "platform/files/Files.h"
#include "platform/files/LineReader.h"
#include "player/Canto.h"
#include "song/LeggiIntestazione.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <system_error>
#include <utility>

namespace sonnel {
namespace {

namespace fs = std::filesystem;

constexpr char Separatore = '\t';
constexpr std::size_t CampiPrima = 5;  // fields before the path

/// A text as a field: line ends and separators removed.
std::string Campo(std::string_view testo) {
    std::string campo = OneLine(testo);
    std::ranges::replace(campo, Separatore, ' ');
    return campo;
}

auto Trova(std::vector<Turno>& turni, std::int64_t numero) {
    return std::ranges::find(turni, numero, &Turno::numero);
}

/// A number that no turn has yet.
std::int64_t NuovoNumero(const std::vector<Turno>& turni) {
    std::int64_t numero = 1;
    for (const Turno& turno : turni) {
        numero = std::max(numero, turno.numero + 1);
    }
    return numero;
}

std::string TestoCoda(const std::vector<Turno>& turni) {
    std::string testo;
    for (const Turno& turno : turni) {
        testo += RigaTurno(turno);
        testo += "\r\n";
    }
    return testo;
}

}  // namespace

Result<Turno> TurnoDi(const FileBrano& brano) {
    const fs::path file =
        brano.parole ? *brano.mid : brano.lyk.value_or(PathFromUtf8(brano.base + ".LYK"));
    const Result<Intestazione> letta =
        brano.parole ? IntestazioneDaTesto(*brano.parole) : LeggiIntestazione(file);
    if (!letta) {
        return brano.motivo.empty()
                   ? letta.error()
                   : Error{EINVAL, WithReason("Can't read the words of " + Utf8FromPath(*brano.mid),
                                              brano.motivo)};
    }
    if (!brano.mid) {
        return Error{ENOENT, "Can't play " + Utf8FromPath(file) + ": its MID file is missing."};
    }
    if (OneLine(Utf8FromPath(file)) != Utf8FromPath(file)) {
        return ReadError(file, EINVAL);  // the line format cannot hold its name
    }
    std::error_code errore;
    fs::path assoluto = fs::absolute(file, errore);
    if (errore) {
        return ReadError(file, errore.value());
    }
    return Turno{.titolo = letta->Titolo, .autore = letta->Autore, .file = std::move(assoluto)};
}

bool Presente(const Turno& turno) {
    std::error_code errore;
    return fs::is_regular_file(turno.file, errore);
}

std::string RigaTurno(const Turno& turno) {
    std::string riga = std::to_string(turno.numero);
    riga += Separatore;
    riga += turno.tonalita ? std::to_string(*turno.tonalita) : "";
    for (const std::string& testo : {turno.cantante, turno.titolo, turno.autore}) {
        riga += Separatore;
        riga += Campo(testo);
    }
    riga += Separatore;
    return riga + Utf8FromPath(turno.file);
}

std::optional<Turno> TurnoDaRiga(std::string_view riga) {
    std::array<std::string_view, CampiPrima> campi;
    for (std::string_view& campo : campi) {
        const std::size_t fine = riga.find(Separatore);
        if (fine == std::string_view::npos) {
            return std::nullopt;
        }
        campo = riga.substr(0, fine);
        riga.remove_prefix(fine + 1);
    }
    if (riga.empty()) {
        return std::nullopt;
    }
    const auto& [numero, tonalita, cantante, titolo, autore] = campi;
    Turno turno{.numero = ReadInteger<std::int32_t>(numero),
                .cantante = std::string(cantante),
                .titolo = std::string(titolo),
                .autore = std::string(autore),
                .file = PathFromUtf8(riga)};
    if (!tonalita.empty()) {
        turno.tonalita = EntroLimiti(Canto{.tonalita = ReadInteger<int>(tonalita)}).tonalita;
    }
    return turno;
}

Coda::Coda(fs::path file) : file_(std::move(file)) {
    (void)Leggi(turni_);  // an error is reported at the first change
}

std::optional<Error> Coda::Leggi(std::vector<Turno>& turni) const {
    const Result<std::string> testo = ReadFile(file_);
    if (!testo) {
        const Error& errore = testo.error();
        return errore.number == ENOENT ? std::nullopt
                                       : std::optional(ReadError(file_, errore.number));
    }
    LineReader righe(*testo, LineEnds::AlsoLf);
    while (const auto riga = righe.Next()) {
        if (std::optional<Turno> turno = TurnoDaRiga(*riga)) {
            if (Trova(turni, turno->numero) != turni.end()) {
                turno->numero = NuovoNumero(turni);  // a duplicate in a file edited by hand
            }
            turni.push_back(std::move(*turno));
        }
    }
    return std::nullopt;
}

std::optional<Error> Coda::Scrivi(const Modifica& modifica) {
    std::error_code ignorato;  // if the directory is missing, writing reports it
    fs::create_directories(file_.parent_path(), ignorato);
    const DirectoryLock chiusa(file_.parent_path());
    std::vector<Turno> turni;
    if (auto errore = Leggi(turni)) {
        return errore;
    }
    modifica(turni);
    if (auto errore = WriteFileAtomically(file_, TestoCoda(turni))) {
        return errore;
    }
    Sostituisci(std::move(turni));
    return std::nullopt;
}

void Coda::Sostituisci(std::vector<Turno> turni) {
    if (turni == turni_) {
        return;
    }
    turni_ = std::move(turni);
    if (onCambiata) {
        onCambiata();
    }
}

void Coda::Rileggi() {
    std::vector<Turno> turni;
    if (!Leggi(turni)) {
        Sostituisci(std::move(turni));
    }
}

std::optional<Error> Coda::Aggiungi(Result<Turno> turno) {
    if (!turno) {
        return turno.error();
    }
    return Scrivi([&turno](std::vector<Turno>& turni) {
        turno->numero = NuovoNumero(turni);
        turni.push_back(*turno);
    });
}

std::optional<Error> Coda::Cambia(std::int64_t numero, const std::string& cantante,
                                  std::optional<int> tonalita) {
    return Scrivi([&](std::vector<Turno>& turni) {
        if (const auto turno = Trova(turni, numero); turno != turni.end()) {
            turno->cantante = Campo(cantante);
            turno->tonalita = tonalita;
        }
    });
}

std::optional<Error> Coda::Togli(std::int64_t numero) {
    return Scrivi([numero](std::vector<Turno>& turni) {
        std::erase_if(turni, [numero](const Turno& turno) { return turno.numero == numero; });
    });
}

std::optional<Error> Coda::Sposta(std::int64_t numero, int posti) {
    return Scrivi([&](std::vector<Turno>& turni) {
        const auto da = Trova(turni, numero);
        if (da == turni.end()) {
            return;
        }
        const auto a = turni.begin() + std::clamp<std::ptrdiff_t>(da - turni.begin() + posti, 0,
                                                                  std::ssize(turni) - 1);
        if (a < da) {
            std::rotate(a, da, da + 1);
        } else {
            std::rotate(da, da + 1, a + 1);
        }
    });
}

}  // namespace sonnel
