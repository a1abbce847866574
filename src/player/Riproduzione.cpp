#include "player/Riproduzione.h"

#include "platform/Numbers.h"
#include "platform/Paths.h"
#include "platform/Text.h"
#include "player/FormattaTempo.h"
#include "song/LeggiKaraoke.h"
#include "ui/PuntatoreOccupato.h"
#include "ui/Titoli.h"

namespace sonnel {
namespace {

constexpr int IntervalloStato = 10;  // ms between the sequencer's reports
constexpr double MillisecondiPerSecondo = 1000;

std::int32_t Secondi(std::int32_t millisecondi) {
    return RoundHalfEven<std::int32_t>(millisecondi / MillisecondiPerSecondo);
}

}  // namespace

Riproduzione::Riproduzione(const Parti& parti)
    : p_(parti), sincronia_(p_.config, p_.timeline, p_.disegno) {
    p_.sequencer.onStatusUpdate = [this] { MMControl1_StatusUpdate(); };
    p_.sequencer.onDone = [this](MciNotify codice) { MMControl1_Done(codice); };
}

Riproduzione::~Riproduzione() {
    p_.sequencer.onStatusUpdate = nullptr;
    p_.sequencer.onDone = nullptr;
}

std::string Riproduzione::EtichettaVersione() {
    return std::string(TitoloProgramma) + " " + std::to_string(SONNEL_VERSION_MAJOR) + "." +
           std::to_string(SONNEL_VERSION_MINOR) + " beta";
}

bool Riproduzione::InRiproduzione() const {
    return IsPlaying(p_.sequencer.Mode());
}

void Riproduzione::FileLoad(const std::optional<FileBrano>& scelta) {
    if (scelta) {
        if (!CaricaBrano(*scelta)) {
            return;
        }
        PreparaBrano();
    }
    AbilitaFunzioni();
    p_.vista.AnimaLogo(false);
    if (p_.config.Autoplay) {
        SoundPlay();
    }
}

bool Riproduzione::SuonaBrano(const FileBrano& brano, std::optional<int> tonalita) {
    if (!CaricaBrano(brano)) {
        return false;
    }
    if (tonalita) {
        p_.cantante.ImponiTonalita(*tonalita);
        p_.vista.Canto(p_.cantante.Descrizione());
    }
    PreparaBrano();
    SoundPlay();
    return true;
}

bool Riproduzione::CaricaBrano(const FileBrano& brano) {
    const MMControl::Quiet silenzio(p_.sequencer);
    if (!FilePresenti(brano)) {
        return false;
    }
    const PuntatoreOccupato occupato(p_.eventi, Pointer::Normal);
    p_.sequencer.Command(MciCommand::Close);
    p_.vista.Titolo(EtichettaVersione());
    if (!LeggiParole(brano)) {
        return false;
    }
    if (const auto errore = ApriSequencer(brano)) {
        p_.msgBox.Show({"Can't open " + brano.base + ".mid (err." + std::to_string(errore->number) +
                            " - " + errore->text + ")",
                        Icon::Critical});
        AbilitaFunzioni();
        return false;
    }
    p_.cantante.NuovoBrano(brano);
    p_.vista.Canto(p_.cantante.Descrizione());
    p_.vista.Posizione(FormattaTempo(0));
    p_.vista.Titolo(EtichettaVersione() + " - " + p_.informazioni.Titolo);
    return true;
}

bool Riproduzione::FilePresenti(const FileBrano& brano) {
    if (brano.Completo()) {
        return true;
    }
    const std::string mancante = !brano.HaParole()
                                     ? "Can't load the selected song: LYK file is missing!"
                                     : "Can't load the selected song: MID file missing!";
    p_.msgBox.Show({mancante +
                        "\r\nTo properly load a Karaoke file you need to put the LYK and MID file "
                        "in the same directory." +
                        (brano.motivo.empty()
                             ? ""
                             : WithReason("\r\nCan't read the words of " + Utf8FromPath(*brano.mid),
                                          brano.motivo)),
                    Icon::Exclamation});
    p_.eventi.SetPointer(Pointer::Normal);
    return false;
}

bool Riproduzione::LeggiParole(const FileBrano& brano) {
    p_.vista.Disabilita(&StatoComandi::VisInfo);
    const bool letto = LeggiKaraoke(brano, p_.timeline, p_.informazioni, p_.msgBox);
    AbilitaFunzioni();
    return letto;
}

std::optional<Error> Riproduzione::ApriSequencer(const FileBrano& brano) {
    p_.sequencer.SetFileName(Utf8FromPath(*brano.mid));
    if (auto errore = p_.sequencer.Command(MciCommand::Open)) {
        return errore;
    }
    p_.sequencer.SetUpdateInterval(IntervalloStato);
    return std::nullopt;
}

void Riproduzione::PreparaBrano() {
    const MMControl::Quiet silenzio(p_.sequencer);
    const std::int32_t durata = Secondi(p_.sequencer.Length());
    p_.vista.Durata(durata, FormattaTempo(durata));
    p_.vista.Cursore(0);
    p_.disegno.Pulisci();
    p_.impaginazione.FontAutomatico();
    RisincronizzaParole();
}

void Riproduzione::Riadatta() {
    if (!p_.sequencer.FileName().empty()) {
        (void)p_.impaginazione.AdattaFont();
        sincronia_.Ridisegna();
    }
}

void Riproduzione::ApplicaConfig() {
    p_.impaginazione.ApplicaConfig();
    AbilitaFunzioni();
}

std::int32_t Riproduzione::PosizioneParole() {
    return p_.cantante.PosizioneParole(p_.sequencer.Position());
}

void Riproduzione::RisincronizzaParole() {
    sincronia_.Risincronizza(PosizioneParole());
    AbilitaFunzioni();
}

void Riproduzione::AbilitaFunzioni() {
    p_.vista.Comandi(sonnel::AbilitaFunzioni(p_.sequencer.Mode(), p_.sequencer.FileName(),
                                             p_.sequencer.Position()));
}

void Riproduzione::SoundPlay() {
    const MMControl::Quiet silenzio(p_.sequencer);
    const PuntatoreOccupato occupato(p_.eventi, Pointer::Normal);
    p_.sequencer.Command(MciCommand::Play);
    RisincronizzaParole();
}

void Riproduzione::SoundPause() {
    p_.sequencer.Command(MciCommand::Pause);
    AbilitaFunzioni();
}

void Riproduzione::SoundStop() {
    const MMControl::Quiet silenzio(p_.sequencer);
    sincronia_.Azzera();
    p_.sequencer.SetTo(0);
    p_.sequencer.Command(MciCommand::Seek);
    p_.vista.Cursore(0);
    p_.vista.Posizione(FormattaTempo(0));
    RisincronizzaParole();
    p_.vista.Disabilita(&StatoComandi::SoundStop);
}

void Riproduzione::ParoleClick() {
    if (InRiproduzione()) {
        p_.sequencer.Command(MciCommand::Pause);
    } else if (!p_.sequencer.FileName().empty()) {
        p_.sequencer.Command(MciCommand::Play);
    }
}

void Riproduzione::Sospendi() {
    if (InRiproduzione()) {
        p_.sequencer.Command(MciCommand::Pause);
    }
}

void Riproduzione::CursoreSpostato(std::int32_t secondi) {
    if (InRiproduzione()) {
        return;
    }
    p_.sequencer.SetTo(RoundHalfEven<std::int32_t>(secondi * MillisecondiPerSecondo));
    p_.sequencer.Command(MciCommand::Seek);
    p_.vista.Posizione(FormattaTempo(Secondi(p_.sequencer.Position())));
    RisincronizzaParole();
}

void Riproduzione::AggiornaCursore() {
    if (InRiproduzione()) {
        const std::int32_t secondi = Secondi(p_.sequencer.Position());
        p_.vista.Cursore(secondi);
        p_.vista.Posizione(FormattaTempo(secondi));
    }
}

void Riproduzione::MMControl1_StatusUpdate() {
    if (!InRiproduzione()) {
        p_.vista.AnimaLogo(false);
        p_.vista.PrimaImmagineLogo();
        AbilitaFunzioni();
        return;
    }
    sincronia_.ApplicaDovuto(PosizioneParole());
    p_.vista.AnimaLogo(true);
    AbilitaFunzioni();
}

void Riproduzione::MMControl1_Done(MciNotify codice) {
    if (codice != MciNotify::Aborted) {
        p_.sequencer.Command(MciCommand::Prev);
    }
    AbilitaFunzioni();
    if (codice == MciNotify::Successful) {
        p_.vista.BranoFinito();
    }
}

}  // namespace sonnel
