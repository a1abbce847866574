#include "convert/EstraiParole.h"

#include "platform/Numbers.h"
#include "platform/Text.h"
#include "song/LeggiKaraoke.h"

#include <string_view>

namespace sonnel {
namespace {

constexpr int MassimoRighe = 3;

/// One pass over the texts of a file.
class Passata {
  public:
    Passata(Midifile& midifile, const BaseTempi& base, std::chrono::year_month_day oggi)
        : midifile_(midifile), base_(base), oggi_(oggi) {}

    Estrazione Esegui();

  private:
    [[nodiscard]] std::optional<Error> LeggiTraccia();
    [[nodiscard]] std::optional<Error> LeggiTesto();
    void LeggiCampo(std::string_view testo);
    void LeggiTitolo(std::string_view valore);
    void LeggiParola(std::int32_t istante, std::string_view testo);
    void ScriviCampo(std::string_view campo, std::string_view valore);

    Midifile& midifile_;
    BaseTempi base_;
    std::chrono::year_month_day oggi_;
    Estrazione esito_;
    PaginaKar pagina_;
    int riga_ = 0;  ///< line of the current page, from 1
    std::string titolo_;
    std::string autore_;
    std::string fattoDa_;
};

Estrazione Passata::Esegui() {
    esito_.Testo = PrimaRigaLyk();
    esito_.Danneggiato = midifile_.Damaged();
    const int tracce = midifile_.NumTracks();
    for (int i = 1; i <= tracce && !esito_.TestoIniziato && !esito_.Errore; ++i) {
        midifile_.SetTrack(i);
        esito_.Errore = LeggiTraccia();
    }
    esito_.NumEventi = pagina_.NumEventi();
    return std::move(esito_);
}

std::optional<Error> Passata::LeggiTraccia() {
    const int eventi = midifile_.NumEvents();
    for (int i = 1; i <= eventi; ++i) {
        midifile_.SetEvent(i);
        if (midifile_.Status() == kMeta && midifile_.MetaType() == kMetaText) {
            if (auto errore = LeggiTesto()) {
                return errore;
            }
        }
    }
    if (pagina_.NumVoci() > 0) {
        pagina_.ElaboraPagina(esito_.Testo);
    }
    return std::nullopt;
}

std::optional<Error> Passata::LeggiTesto() {
    const Result<std::int32_t> istante = base_.Avanza(midifile_);
    if (!istante) {
        return istante.error();
    }
    const std::string testo = OneLine(midifile_.Data());
    if (testo.starts_with('@')) {
        LeggiCampo(testo);
    } else {
        LeggiParola(*istante, testo);
    }
    return std::nullopt;
}

void Passata::LeggiCampo(std::string_view testo) {
    const std::string_view campo = testo.substr(0, 2);
    const std::string_view valore = testo.substr(campo.size());
    if (campo == "@K") {
        esito_.IntestazioneKaraoke = true;
        ScriviCampo("*VE", "SPConv " + std::to_string(SONNEL_VERSION_MAJOR) + "." +
                               std::to_string(SONNEL_VERSION_MINOR) + "." +
                               std::to_string(SONNEL_VERSION_REVISION));
        ScriviCampo("*DA", ZeroPadded(static_cast<unsigned>(oggi_.day()), 2) + "/" +
                               ZeroPadded(static_cast<unsigned>(oggi_.month()), 2) + "/" +
                               ZeroPadded(static_cast<int>(oggi_.year()) % 100, 2));
    } else if (campo == "@T") {
        LeggiTitolo(valore);
    } else if (campo == "@I" && fattoDa_.empty()) {
        fattoDa_ = valore;
        ScriviCampo("*BY", valore);
    }
}

void Passata::LeggiTitolo(std::string_view valore) {
    if (titolo_.empty()) {
        titolo_ = valore;
        ScriviCampo("*TI", valore);
    } else if (autore_.empty()) {
        autore_ = valore;
        ScriviCampo("*AU", valore);
    }
}

void Passata::ScriviCampo(std::string_view campo, std::string_view valore) {
    esito_.Testo.append(campo).append(valore).append(FineRiga);
}

void Passata::LeggiParola(std::int32_t istante, std::string_view testo) {
    char segno = testo.empty() ? ' ' : testo.front();
    if (segno == '/' && (riga_ == MassimoRighe || !esito_.TestoIniziato)) {
        segno = '\\';
    }
    if (segno == '\\') {
        pagina_.Inizia(istante, testo.substr(1), esito_.Testo);
        esito_.TestoIniziato = true;
        riga_ = 1;
    } else if (segno == '/') {
        if (pagina_.Aggiungi(istante, "$E" + std::string(testo.substr(1)))) {
            ++riga_;
        }
    } else if (esito_.TestoIniziato) {
        pagina_.Aggiungi(istante, testo);
    }
}

}  // namespace

Estrazione EstraiParole(Midifile& midifile, BaseTempi base, std::chrono::year_month_day oggi) {
    return Passata(midifile, base, oggi).Esegui();
}

}  // namespace sonnel
