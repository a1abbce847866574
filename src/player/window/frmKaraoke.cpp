#include "player/window/frmKaraoke.h"

#include "platform/Numbers.h"
#include "platform/ScopeExit.h"
#include "platform/qt/FileDrop.h"
#include "player/Calibratura.h"
#include "player/window/ControlloVolume.h"
#include "player/window/frmMenuCanto.h"

#include <QApplication>
#include <cmath>
#include <utility>

namespace sonnel {
namespace {

constexpr int IntervalloLogo = 500;  // ms, before the first frame
constexpr int IntervalloCursore = 500;

}  // namespace

frmKaraoke::frmKaraoke(const Parti& parti, Avvio avvio)
    : p_(parti),
      avvio_(std::move(avvio)),
      twipsPerPixel_(p_.schermo.TwipsPerPixel()),
      area_(new QWidget(this)),
      striscia_(new QWidget(area_)),
      Parole(twipsPerPixel_, area_),
      impaginazione_(p_.config, p_.timeline, Parole, *this, p_.msgBox),
      disegno_(p_.config, Parole, *this, impaginazione_),
      cantante_({p_.registro, p_.sequencer, p_.timeline}, avvio_.canto),
      riproduzione_(PartiRiproduzione()) {
    setWindowIcon(QIcon(":/sonnel.svg"));
    setCentralWidget(area_);
    area_->installEventFilter(this);
    Parole.setAccessibleName("Lyrics");
    Parole.onClick = [this] { Parole_Click(); };
    // Gets the focus, so that no button has it: one that is disabled would pass it on.
    Parole.setFocusPolicy(Qt::ClickFocus);
    Parole.setFocus();
    CreaMenu();
    CreaBarra();
    CreaSchermoIntero();
    CreaFinestraParole();
    CreaCoda();
    CreaMenuCanto();
    new FileDrop(
        *this, [this] { return isEnabled() && !riproduzione_.InRiproduzione(); },
        [this](const auto& file) { riproduzione_.FileLoad(BranoDaFile(file.front())); });
    tmrLogo.setObjectName("tmrLogo");
    tmrLogo.setInterval(IntervalloLogo);
    tmrSlider.setInterval(IntervalloCursore);
    connect(&tmrLogo, &QTimer::timeout, this, &frmKaraoke::tmrLogo_Timer);
    connect(&tmrSlider, &QTimer::timeout, this, &frmKaraoke::tmrSlider_Timer);
    setMinimumWidth(static_cast<int>(std::ceil(LarghezzaMinima / twipsPerPixel_)));
}

Riproduzione::Parti frmKaraoke::PartiRiproduzione() {
    return {p_.config, p_.timeline, p_.informazioni, p_.sequencer, impaginazione_,
            disegno_,  *this,       cantante_,       p_.msgBox,    p_.eventi};
}

void frmKaraoke::CreaSchermoIntero() {
    intero_ = new SchermoIntero(*this, *striscia_, [this] {
        DisponiFinestra();
        riproduzione_.Riadatta();
    });
}

void frmKaraoke::CreaFinestraParole() {
    constexpr double millisecondiPerDecimo = 100;
    const auto tempo = [this] {
        return cantante_.PosizioneParole(p_.sequencer.Position()) / millisecondiPerDecimo +
               p_.config.Compensazione;
    };
    const auto suona = [this] { return riproduzione_.InRiproduzione(); };
    const auto annuncio = [this]() -> const std::optional<Annuncio>& { return turni_->Corrente(); };
    cantanti_ = std::make_unique<FinestraParole>(
        FinestraParole::Parti{{p_.timeline, p_.informazioni, p_.config},
                              p_.registro,
                              p_.schermo,
                              tempo,
                              suona,
                              annuncio,
                              [this] { FinestraLasciata(); },
                              this});
    addAction(cantanti_->Azione());
}

void frmKaraoke::CreaCoda() {
    turni_ = new Turni(*this,
                       {p_.coda, p_.registro, p_.sequencer, riproduzione_, p_.finestre, p_.msgBox,
                        p_.config, *area_, *striscia_, *cantanti_, [this] { FinestraLasciata(); }});
    addAction(turni_->Azione());
    addAction(turni_->AzioneFerma());
    legami_.push_back({turni_->AzioneComincia(), &StatoComandi::FileLoad});
}

void frmKaraoke::CreaMenuCanto() {
    const auto cambiato = [this] {
        Canto(cantante_.Descrizione());
        riproduzione_.RisincronizzaParole();
    };
    const auto suonaOPausa = [this] {
        if (riproduzione_.InRiproduzione()) {
            mnuSoundPause_Click();
        } else if (BranoAperto()) {
            mnuSoundPlay_Click();
        }
    };
    new MenuCanto(*this, {cantante_,
                          cambiato,
                          suonaOPausa,
                          {&Parole, sldPosition},
                          {intero_->Azione(), cantanti_->Azione(), cantanti_->AzioneMenu(),
                           turni_->Azione()}});
}

int frmKaraoke::Twips(double pixel) const {
    return RoundHalfEven<int>(pixel * twipsPerPixel_);
}

int frmKaraoke::Pixel(double twips) const {
    return RoundHalfEven<int>(twips / twipsPerPixel_);
}

// Commands

void frmKaraoke::mnuFileLoad_Click() {
    riproduzione_.FileLoad(p_.finestre.ScegliBrano());
}

void frmKaraoke::mnuFileRileggiDB_Click() {
    p_.finestre.RileggiDB();
}

void frmKaraoke::mnufileAggiornaDB_Click() {
    p_.finestre.SincronizzaDB();
}

void frmKaraoke::mnuFileExit_Click() {
    close();
}

void frmKaraoke::mnuVisMixer_Click() {
    MostraControlloVolume(p_.shell, p_.msgBox);
}

void frmKaraoke::mnuVisCalibratura_Click() {
    // No other command may run during the measurement.
    const QPointer<QWidget> attivo = focusWidget();
    setEnabled(false);
    const ScopeExit riabilita([this, attivo] {
        setEnabled(true);
        if (attivo) {
            attivo->setFocus();
        }
    });
    const bool misurato =
        Calibratura({p_.config, Parole, disegno_, impaginazione_, p_.registro, p_.msgBox, p_.eventi,
                     p_.orologio, [this] { riproduzione_.RisincronizzaParole(); }})
            .EseguiCalibratura();
    if (misurato) {
        // The test leaves the configured font behind; fit it to the song again.
        (void)impaginazione_.AdattaFont();
    }
    riproduzione_.RisincronizzaParole();
}

void frmKaraoke::mnuVisInfo_Click() {
    if (!info_) {
        info_ = std::make_unique<frmInfo>(this);
    }
    const InformazioniBrano& brano = p_.informazioni;
    info_->Mostra({brano.Titolo, brano.Autore, brano.KaraokeBy, brano.Versione, brano.Data});
    info_->exec();
}

void frmKaraoke::mnuVisOpzioni_Click() {
    p_.finestre.MostraOpzioni();
    riproduzione_.ApplicaConfig();
    riproduzione_.RisincronizzaParole();
}

void frmKaraoke::mnuHelpWebHome_Click() {
    ApriPagina("https://www.sonnel-player.example/");
}

void frmKaraoke::mnuHelpWebLinks_Click() {
    ApriPagina("https://www.sonnel-player.example/links.html");
}

void frmKaraoke::ApriPagina(std::string_view indirizzo) {
    if (!p_.shell.OpenAddress(indirizzo)) {
        p_.msgBox.Show({"Can't start the default browser!\r\n(no web browser installed?)",
                        Icon::Critical, Buttons::Ok, 1, "Sonnel"});
    }
}

void frmKaraoke::mnuHelpAbout_Click() {
    // While the start-up splash still exists, it is shown again instead and closes by itself.
    if (!splash_) {
        CaricaSplash(frmSplash::Modo::Informazioni);
    }
    splash_->exec();
}

void frmKaraoke::mnuSound_Click() {
    riproduzione_.AbilitaFunzioni();
}

void frmKaraoke::mnuSoundPlay_Click() {
    riproduzione_.SoundPlay();
}

void frmKaraoke::mnuSoundPause_Click() {
    riproduzione_.SoundPause();
}

void frmKaraoke::mnuSoundStop_Click() {
    riproduzione_.SoundStop();
}

void frmKaraoke::Parole_Click() {
    riproduzione_.ParoleClick();
}

void frmKaraoke::sldPosition_Change(int value) {
    riproduzione_.CursoreSpostato(value);
}

void frmKaraoke::tmrSlider_Timer() {
    riproduzione_.AggiornaCursore();
}

/// The queue or the lyrics window is no longer active. When it was closed, the window manager
/// returns the focus to the main window a moment later, so wait for that.
void frmKaraoke::FinestraLasciata() {
    constexpr int pazienza = 200;  // ms
    QTimer::singleShot(pazienza, this, [this] { Form_LostFocus(); });
}

void frmKaraoke::Form_LostFocus() {
    const QWidget* attiva = QApplication::activeWindow();
    const bool nostra = attiva == this || attiva == cantanti_.get() || turni_->Sua(attiva);
    if (!nostra && !cantante_.VaAvanti()) {
        riproduzione_.Sospendi();
    }
}

}  // namespace sonnel
