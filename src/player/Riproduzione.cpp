#include "player/Riproduzione.h"

#include "library/ApriLykEsterno.h"
#include "platform/Files.h"
#include "platform/Numbers.h"
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
    : p_(parti),
      impaginazione_(p_.config, p_.timeline, p_.parole, p_.cornice, p_.msgBox),
      disegno_(p_.config, p_.parole, p_.cornice, impaginazione_),
      sincronia_(p_.config, p_.timeline, disegno_) {
    p_.sequencer.onStatusUpdate = [this] { MMControl1_StatusUpdate(); };
    p_.sequencer.onDone = [this](MciNotify codice) { MMControl1_Done(codice); };
}

std::string Riproduzione::EtichettaVersione() {
    return std::string(TitoloProgramma) + " " + std::to_string(SONNEL_VERSION_MAJOR) + "." +
           std::to_string(SONNEL_VERSION_MINOR) + " beta";
}

bool Riproduzione::InRiproduzione() const {
    return IsPlaying(p_.sequencer.Mode());
}

void Riproduzione::FileLoad() {
    const std::string basePath = PercorsoScelto(p_.scelta.scegli());
    if (!basePath.empty()) {
        if (!CaricaBrano(basePath)) {
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

std::string Riproduzione::PercorsoScelto(const std::string& scelta) const {
    const auto posizione = ReadInteger<std::int32_t>(scelta);
    if (posizione > 0) {
        const std::string nome = p_.scelta.nomeFile(posizione);
        // A name that leads out of the directory is no song's: its files are told to be missing.
        return p_.config.OpenDir + (IsPlainName(nome) ? nome : "");
    }
    return scelta.starts_with(PrefissoFile) ? scelta.substr(PrefissoFile.size()) : "";
}

bool Riproduzione::CaricaBrano(const std::string& basePath) {
    const MMControl::Quiet silenzio(p_.sequencer);
    if (!FileDelBrano(basePath)) {
        return false;
    }
    const PuntatoreOccupato occupato(p_.eventi, Pointer::Normal);
    p_.sequencer.Command(MciCommand::Close);
    p_.vista.Titolo(EtichettaVersione());
    if (!LeggiParole(basePath)) {
        return false;
    }
    if (const auto errore = ApriSequencer(basePath)) {
        p_.msgBox.Show({"Can't open " + basePath + ".mid (err." + std::to_string(errore->number) +
                            " - " + errore->text + ")",
                        Icon::Critical, std::string(TitoloMessaggi)});
        AbilitaFunzioni();
        return false;
    }
    p_.vista.Posizione(FormattaTempo(0));
    p_.vista.Titolo(EtichettaVersione() + " - " + p_.informazioni.Titolo);
    return true;
}

bool Riproduzione::FileDelBrano(const std::string& basePath) {
    const char* mancante = nullptr;
    if (!FindFile(PathFromUtf8(basePath + ".LYK"))) {
        mancante = "Can't load the selected song: LYK file is missing!";
    } else if (!FindFile(PathFromUtf8(basePath + ".MID"))) {
        mancante = "Can't load the selected song: MID file missing!";
    } else {
        return true;
    }
    p_.msgBox.Show({mancante + std::string("\r\n"
                                           "To properly load a Karaoke file you need to put the "
                                           "LYK and MID file in the same directory."),
                    Icon::Exclamation, std::string(TitoloMessaggi)});
    p_.eventi.SetPointer(Pointer::Normal);
    return false;
}

bool Riproduzione::LeggiParole(const std::string& basePath) {
    const ComandiLettura comandi{[this] { p_.vista.Disabilita(VistaKaraoke::Comando::VisInfo); },
                                 [this] { AbilitaFunzioni(); }};
    return LeggiKaraoke(basePath, p_.timeline, p_.informazioni, p_.msgBox, comandi);
}

std::optional<Error> Riproduzione::ApriSequencer(const std::string& basePath) {
    p_.sequencer.SetFileName(basePath + ".MID");
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
    disegno_.Pulisci();
    impaginazione_.FontAutomatico();
    RisincronizzaParole();
}

void Riproduzione::Riadatta() {
    if (!p_.sequencer.FileName().empty()) {
        (void)impaginazione_.AdattaFont();
        RisincronizzaParole();
    }
}

void Riproduzione::ApplicaConfig() {
    impaginazione_.ApplicaConfig();
    AbilitaFunzioni();
}

void Riproduzione::RisincronizzaParole() {
    sincronia_.Risincronizza(p_.sequencer.Position());
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
    p_.vista.Disabilita(VistaKaraoke::Comando::SoundStop);
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
    sincronia_.ApplicaDovuto(p_.sequencer.Position());
    p_.vista.AnimaLogo(true);
    AbilitaFunzioni();
}

void Riproduzione::MMControl1_Done(MciNotify codice) {
    if (codice != MciNotify::Aborted) {
        p_.sequencer.Command(MciCommand::Prev);
    }
    AbilitaFunzioni();
}

}  // namespace sonnel
