#include "player/Cantante.h"

#include "platform/Numbers.h"
#include "platform/Paths.h"
#include "platform/midi/SmfReader.h"
#include "settings/Impostazioni.h"
#include "settings/TestoNumero.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace sonnel {
namespace {

namespace fs = std::filesystem;

constexpr const char* SezioneCanto = "Singer";
constexpr const char* SezioneAnticipo = "Timing";
constexpr const char* SezionePalco = "Stage";
constexpr int MassimoAnticipo = 2000;  // ms

/// The key under which a song's changes are stored, the same from every directory.
std::string Chiave(const FileBrano& brano) {
    std::error_code errore;
    const fs::path base = fs::absolute(PathFromUtf8(brano.base), errore);
    return Utf8FromPath(errore ? PathFromUtf8(brano.base) : base.lexically_normal());
}

std::optional<CanaleMelodia> MelodiaDi(const fs::path& mid, const Timeline& timeline) {
    const Result<SmfFile> midi = ReadSmfFile(mid);
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
    mid_ = brano.mid;
    melodia_.reset();
    melodiaCercata_ = false;
    const std::string uscita = p_.sequencer.OutputName();
    uscita_ = uscita.empty() ? "no device" : uscita;
    ricordato_ =
        CantoDaTesto(LeggiImpostazione(p_.registro, SezioneCanto, brano_, "")).value_or(Canto{});
    canto_ = imposto_.value_or(ricordato_);
    if (canto_.melodia != Performance::Melody::Normal && !Melodia()) {
        canto_.melodia = Performance::Melody::Normal;
    }
    anticipo_ = std::clamp(
        Intero(LeggiImpostazione(p_.registro, SezioneAnticipo, uscita_, "0")).value_or(0),
        -MassimoAnticipo, MassimoAnticipo);
    Esegui();
}

const std::optional<CanaleMelodia>& Cantante::Melodia() {
    if (mid_ && !std::exchange(melodiaCercata_, true)) {
        melodia_ = MelodiaDi(*mid_, p_.timeline);
    }
    return melodia_;
}

void Cantante::ImponiTonalita(int semitoni) {
    canto_.tonalita = semitoni;
    canto_ = EntroLimiti(canto_);
    Esegui();
}

void Cantante::CambiaTonalita(int semitoni) {
    Cambia(&Canto::tonalita, canto_.tonalita + semitoni);
}

void Cantante::CambiaTempo(int percento) {
    Cambia(&Canto::tempo, canto_.tempo + percento);
}

void Cantante::CambiaMelodia(Performance::Melody melodia) {
    if (Melodia()) {
        Cambia(&Canto::melodia, melodia);
    }
}

void Cantante::ProssimaMelodia() {
    CambiaMelodia(static_cast<Performance::Melody>((static_cast<int>(canto_.melodia) + 1) %
                                                   Performance::Melodies));
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
    if (BranoAperto()) {
        canto_ = ricordato_ = {};
        Ricorda();
        Esegui();
    }
    CambiaAnticipo(-anticipo_);
}

/// Only what the user changes is remembered, not what was imposed beside it.
template <class Valore>
void Cantante::Cambia(Valore Canto::*parte, Valore valore) {
    if (!BranoAperto()) {
        return;
    }
    canto_.*parte = valore;
    canto_ = EntroLimiti(canto_);
    ricordato_.*parte = canto_.*parte;
    Ricorda();
    Esegui();
}

void Cantante::Ricorda() {
    if (ricordato_ == Canto{}) {
        RimuoviImpostazione(p_.registro, SezioneCanto, brano_);
    } else {
        SalvaImpostazione(p_.registro, SezioneCanto, brano_, TestoDaCanto(ricordato_));
    }
}

void Cantante::Esegui() {
    p_.sequencer.Perform(
        {canto_.tonalita, canto_.tempo, canto_.melodia, melodia_ ? melodia_->canale : -1});
}

std::int32_t Cantante::PosizioneParole(std::int32_t posizione) const {
    return std::max(0, posizione + RoundHalfEven<std::int32_t>(0.01 * anticipo_ * canto_.tempo));
}

}  // namespace sonnel
