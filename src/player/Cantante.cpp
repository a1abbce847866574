#include "player/Cantante.h"

#include "platform/Numbers.h"
#include "platform/Paths.h"
#include "platform/midi/SmfReader.h"
#include "settings/Impostazioni.h"
#include "settings/TestoNumero.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace sonnel {
namespace {

namespace fs = std::filesystem;

constexpr const char* SezioneCanto = "Singer";
constexpr const char* SezioneAnticipo = "Timing";
constexpr const char* SezionePalco = "Stage";
constexpr int MassimoAnticipo = 2000;  // ms

/// The name under which a song is remembered, wherever it was named from.
std::string Chiave(const FileBrano& brano) {
    std::error_code errore;
    const fs::path base = fs::absolute(PathFromUtf8(brano.base), errore);
    return Utf8FromPath(errore ? PathFromUtf8(brano.base) : base.lexically_normal());
}

std::optional<CanaleMelodia> MelodiaDi(const FileBrano& brano, const Timeline& timeline) {
    const Result<SmfFile> midi = ReadSmfFile(*brano.mid);
    return midi ? TrovaMelodia(*midi, timeline) : std::nullopt;
}

}  // namespace

Cantante::Cantante(const Parti& parti, std::optional<Canto> imposto)
    : p_(parti),
      imposto_(imposto),
      vaAvanti_(LeggiInterruttore(p_.registro, SezionePalco, "GoOn", false)) {}

void Cantante::CambiaVaAvanti(bool vaAvanti) {
    vaAvanti_ = vaAvanti;
    SalvaImpostazione(p_.registro, SezionePalco, "GoOn", TestoLogico(vaAvanti));
}

void Cantante::NuovoBrano(const FileBrano& brano) {
    brano_ = Chiave(brano);
    melodia_ = MelodiaDi(brano, p_.timeline);
    const std::string uscita = p_.sequencer.OutputName();
    uscita_ = uscita.empty() ? "no device" : uscita;
    const auto ricordato = CantoDaTesto(LeggiImpostazione(p_.registro, SezioneCanto, brano_, ""));
    canto_ = imposto_.value_or(ricordato.value_or(Canto{}));
    if (!melodia_) {
        canto_.melodia = Performance::Melody::Normal;
    }
    anticipo_ = std::clamp(
        Intero(LeggiImpostazione(p_.registro, SezioneAnticipo, uscita_, "0")).value_or(0),
        -MassimoAnticipo, MassimoAnticipo);
    Esegui();
}

void Cantante::ImponiTonalita(int semitoni) {
    canto_.tonalita = semitoni;
    canto_ = EntroLimiti(canto_);
    Esegui();
}

void Cantante::CambiaTonalita(int semitoni) {
    Cambia({canto_.tonalita + semitoni, canto_.tempo, canto_.melodia});
}

void Cantante::CambiaTempo(int percento) {
    Cambia({canto_.tonalita, canto_.tempo + percento, canto_.melodia});
}

void Cantante::CambiaMelodia(Performance::Melody melodia) {
    if (melodia_) {
        Cambia({canto_.tonalita, canto_.tempo, melodia});
    }
}

void Cantante::ProssimaMelodia() {
    constexpr int quante = 3;
    CambiaMelodia(
        static_cast<Performance::Melody>((static_cast<int>(canto_.melodia) + 1) % quante));
}

void Cantante::CambiaAnticipo(int ms) {
    if (!BranoAperto()) {
        return;  // the output is not known yet
    }
    anticipo_ = std::clamp(anticipo_ + ms, -MassimoAnticipo, MassimoAnticipo);
    if (anticipo_ == 0) {
        RimuoviImpostazione(p_.registro, SezioneAnticipo, uscita_);
    } else {
        SalvaImpostazione(p_.registro, SezioneAnticipo, uscita_, std::to_string(anticipo_));
    }
}

void Cantante::Azzera() {
    Cambia({});
    CambiaAnticipo(-anticipo_);
}

void Cantante::Cambia(const Canto& canto) {
    if (!BranoAperto()) {
        return;
    }
    canto_ = EntroLimiti(canto);
    if (canto_ == Canto{}) {
        RimuoviImpostazione(p_.registro, SezioneCanto, brano_);
    } else {
        SalvaImpostazione(p_.registro, SezioneCanto, brano_, TestoDaCanto(canto_));
    }
    Esegui();
}

void Cantante::Esegui() {
    p_.sequencer.Perform(
        {canto_.tonalita, canto_.tempo, canto_.melodia, melodia_ ? melodia_->canale : -1});
}

std::int32_t Cantante::PosizioneParole(std::int32_t posizione) const {
    return std::max(0, posizione + RoundHalfEven<std::int32_t>(0.01 * anticipo_ * canto_.tempo));
}

}  // namespace sonnel
