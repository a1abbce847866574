#include "player/frmKaraoke.h"

#include "platform/Numbers.h"
#include "player/Calibratura.h"
#include "player/RigaComando.h"
#include "settings/Impostazioni.h"
#include "settings/TestoNumero.h"
#include "ui/Titoli.h"
#include "ui/basCommon.h"

#include <QApplication>
#include <QCloseEvent>
#include <cmath>

namespace sonnel {
namespace {

constexpr int LarghezzaMinima = 8300;  // twips
constexpr int IntervalloLogo = 500;    // ms, before the first frame
constexpr int IntervalloCursore = 500;
constexpr std::int16_t SecondiSplash = 3;
constexpr std::int32_t MaiCalibrato = -1;

}  // namespace

frmKaraoke::frmKaraoke(Programma& programma)
    : programma_(programma),
      twipsPerPixel_(programma.schermo.TwipsPerPixel()),
      area_(new QWidget(this)),
      striscia_(new QWidget(area_)),
      Parole(twipsPerPixel_, area_),
      riproduzione_(Parti()) {
    setWindowIcon(QIcon(":/sonnel.svg"));
    setCentralWidget(area_);
    area_->setAutoFillBackground(true);
    area_->installEventFilter(this);
    Parole.setAccessibleName("Lyrics");
    Parole.onClick = [this] { Parole_Click(); };
    // With the focus here no button holds it, which would pass it on when it is put out of use.
    Parole.setFocusPolicy(Qt::ClickFocus);
    Parole.setFocus();
    CreaMenu();
    CreaBarra();
    tmrLogo.setInterval(IntervalloLogo);
    tmrSlider.setInterval(IntervalloCursore);
    connect(&tmrLogo, &QTimer::timeout, this, &frmKaraoke::tmrLogo_Timer);
    connect(&tmrSlider, &QTimer::timeout, this, &frmKaraoke::tmrSlider_Timer);
    setMinimumWidth(static_cast<int>(std::ceil(LarghezzaMinima / twipsPerPixel_)));
}

Riproduzione::Parti frmKaraoke::Parti() {
    return {programma_.config,
            programma_.timeline,
            programma_.informazioni,
            programma_.sequencer,
            Parole,
            *this,
            *this,
            programma_.msgBox,
            programma_.eventi,
            programma_.scelta};
}

int frmKaraoke::Twips(double pixel) const {
    return RoundHalfEven<int>(pixel * twipsPerPixel_);
}

int frmKaraoke::Pixel(double twips) const {
    return RoundHalfEven<int>(twips / twipsPerPixel_);
}

// Start-up and closing

void frmKaraoke::Form_Load() {
    CRebar::TBMakeFlat(*tlbBar, false);
    Rebar.Parent(area_);
    Rebar.Create();
    MostraSplash();
    programma_.eventi.SetPointer(Pointer::Busy);
    programma_.timeline.Azzera();
    ColoreSfondo(0);
    programma_.config = CaricaConfig(programma_.registro, programma_.schermo.Width(),
                                     programma_.openDirPredefinita);
    riproduzione_.ApplicaConfig();
    Titolo(Riproduzione::EtichettaVersione());
    AllargaAlloSchermo();
    CaricaDaRigaComando();
    riproduzione_.AbilitaFunzioni();
    RipristinaPosto();
    programma_.eventi.SetPointer(Pointer::Normal);
    if (programma_.config.Compensazione == MaiCalibrato) {
        mnuVisCalibratura_Click();
    }
}

void frmKaraoke::CaricaDaRigaComando() {
    const std::string riga = SenzaVirgolette(programma_.CmdLine);
    if (riga.empty()) {
        Attendi(SecondiSplash, programma_.orologio, programma_.eventi);
        return;
    }
    if (riproduzione_.CaricaBrano(BranoDaRiga(riga))) {
        riproduzione_.PreparaBrano();
        return;
    }
    programma_.eventi.SetPointer(Pointer::Normal);
    programma_.msgBox.Show({"Wrong parameter: '" + programma_.CmdLine + "'", Icon::Critical,
                            std::string(TitoloMessaggi)});
}

void frmKaraoke::AllargaAlloSchermo() {
    const Schermo& schermo = programma_.schermo;
    resize(Pixel(schermo.Width()), Pixel(programma_.config.WinHeight));
    const sonnel::Posizione posto =
        CentraForm(static_cast<float>(schermo.Width()), static_cast<float>(schermo.Height()),
                   static_cast<float>(Twips(width())), static_cast<float>(Twips(height())));
    move(Pixel(posto.left), Pixel(posto.top));
    DisponiFinestra();
}

void frmKaraoke::MostraSplash() {
    CaricaSplash(frmSplash::Modo::Avvio);
    splash_->show();
    splash_->repaint();
    programma_.eventi.RunPending();
}

void frmKaraoke::CaricaSplash(frmSplash::Modo modo) {
    splash_ = std::make_unique<frmSplash>(modo, modo == frmSplash::Modo::Avvio ? nullptr : this);
    // It may be closing itself: it is destroyed when its own work is done.
    splash_->onUnload = [this] { splash_.release()->deleteLater(); };
}

/// Puts the window where it was closed and shows it.
void frmKaraoke::RipristinaPosto() {
    const Config& config = programma_.config;
    if (splash_) {
        splash_->hide();
    }
    if (config.FullScreen != 0) {
        showMaximized();
        return;
    }
    const int larghezza = area_->width();
    resize(Pixel(config.WinWidth), Pixel(config.WinHeight));
    move(Pixel(config.WinLeft), Pixel(config.WinTop));
    show();
    DisponiFinestra();
    if (area_->width() != larghezza) {
        riproduzione_.Riadatta();
    }
}

void frmKaraoke::Form_Unload() {
    programma_.sequencer.Command(MciCommand::Close);
    SalvaFinestra();
    Rebar.DestroyRebar();
    QApplication::quit();
}

void frmKaraoke::SalvaFinestra() {
    const auto salva = [this](const char* chiave, const std::string& valore) {
        SalvaImpostazione(programma_.registro, "Finestra", chiave, valore);
    };
    if (isMaximized() && !isMinimized()) {
        salva("FullScreen", TestoLogico(true));
        return;
    }
    salva("Top", TestoNumero(static_cast<float>(Twips(y()))));
    salva("Left", TestoNumero(static_cast<float>(Twips(x()))));
    salva("Width", TestoNumero(static_cast<float>(Twips(width()))));
    salva("Height", TestoNumero(static_cast<float>(Twips(height()))));
    salva("FullScreen", TestoLogico(false));
}

void frmKaraoke::closeEvent(QCloseEvent* event) {
    event->accept();
    Form_Unload();
}

// Commands

void frmKaraoke::mnuFileLoad_Click() {
    riproduzione_.FileLoad();
}

void frmKaraoke::mnuFileExit_Click() {
    close();
}

void frmKaraoke::mnuVisCalibratura_Click() {
    Programma& p = programma_;
    Calibratura({p.config, Parole, riproduzione_.Disegno(), riproduzione_.Impaginazione(),
                 p.registro, p.msgBox, p.eventi, p.orologio,
                 [this] { riproduzione_.RisincronizzaParole(); }})
        .EseguiCalibratura();
    riproduzione_.Riadatta();
}

void frmKaraoke::mnuVisInfo_Click() {
    if (!info_) {
        info_ = std::make_unique<frmInfo>(this);
    }
    const InformazioniBrano& brano = programma_.informazioni;
    info_->Mostra({brano.Titolo, brano.Autore, brano.KaraokeBy, brano.Versione, brano.Data});
    info_->exec();
}

void frmKaraoke::mnuHelpWebHome_Click() {
    ApriPagina("https://www.sonnel-player.example/");
}

void frmKaraoke::mnuHelpWebLinks_Click() {
    ApriPagina("https://www.sonnel-player.example/links.html");
}

void frmKaraoke::ApriPagina(std::string_view indirizzo) {
    if (!programma_.shell.OpenAddress(indirizzo)) {
        programma_.msgBox.Show({"Can't start the default browser!\r\n(no web browser installed?)",
                                Icon::Critical, "Sonnel"});
    }
}

void frmKaraoke::mnuHelpAbout_Click() {
    // The start-up splash, while it is still loaded, stays what it is and closes itself.
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

void frmKaraoke::Form_LostFocus() {
    riproduzione_.Sospendi();
}

}  // namespace sonnel
