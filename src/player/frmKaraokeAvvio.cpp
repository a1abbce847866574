// How the main window comes up and how it ends the program.

#include "platform/Numbers.h"
#include "platform/qt/PaintNow.h"
#include "player/AssociaLyk.h"
#include "player/PostoFinestra.h"
#include "player/RigaComando.h"
#include "player/frmKaraoke.h"
#include "settings/Impostazioni.h"
#include "settings/TestoNumero.h"
#include "ui/Titoli.h"
#include "ui/basCommon.h"

#include <QApplication>
#include <QCloseEvent>
#include <algorithm>

namespace sonnel {
namespace {

constexpr std::int16_t SecondiSplash = 3;
constexpr std::int32_t MaiCalibrato = -1;

}  // namespace

void frmKaraoke::Form_Load() {
    CreaRebar();
    MostraSplash();
    SeminaCaso();
    programma_.eventi.SetPointer(Pointer::Busy);
    AssociaLyk(programma_.registro, programma_.shell, programma_.eseguibile,
               programma_.scriviWinIni);
    const std::string riga = SenzaVirgolette(programma_.CmdLine);
    ColoreSfondo(0);
    CaricaImpostazioni();
    riproduzione_.ApplicaConfig();
    Titolo(Riproduzione::EtichettaVersione());
    AllargaAlloSchermo();
    CaricaDaRigaComando(riga);
    riproduzione_.AbilitaFunzioni();
    RipristinaPosto();
    MostraFinestra();
    programma_.eventi.SetPointer(Pointer::Normal);
    if (programma_.config.Compensazione == MaiCalibrato) {
        mnuVisCalibratura_Click();
    }
    programma_.agganci.CaricaIndice();
    programma_.agganci.caricaSelezione();
}

void frmKaraoke::CreaRebar() {
    CRebar::TBMakeFlat(*tlbBar, false);
    Rebar.Parent(area_);
    Rebar.Create();
}

void frmKaraoke::MostraSplash() {
    CaricaSplash(frmSplash::Modo::Avvio);
    splash_->show();
    PaintNow(*splash_);
}

void frmKaraoke::CaricaSplash(frmSplash::Modo modo) {
    splash_ = std::make_unique<frmSplash>(modo, modo == frmSplash::Modo::Avvio ? nullptr : this);
    // It may be closing itself: it is destroyed when its own work is done.
    splash_->onUnload = [this] { splash_.release()->deleteLater(); };
}

void frmKaraoke::SeminaCaso() {
    constexpr double Millesimi = 1000;
    programma_.caso.seed(
        static_cast<std::mt19937::result_type>(programma_.orologio.TimeOfDay() * Millesimi));
}

void frmKaraoke::CaricaImpostazioni() {
    programma_.config = CaricaConfig(programma_.registro, programma_.schermo.Width(),
                                     programma_.openDirPredefinita);
}

void frmKaraoke::AllargaAlloSchermo() {
    const Schermo& schermo = programma_.schermo;
    resize(Pixel(schermo.Width()), Pixel(std::min(programma_.config.WinHeight, schermo.Height())));
    const sonnel::Posizione posto =
        CentraForm(static_cast<float>(schermo.Width()), static_cast<float>(schermo.Height()),
                   static_cast<float>(Twips(width())), static_cast<float>(Twips(height())));
    move(Pixel(posto.left), Pixel(posto.top));
    DisponiFinestra();
}

void frmKaraoke::CaricaDaRigaComando(const std::string& riga) {
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

/// Puts the window where it was closed; a maximised one gets that place when it is restored.
void frmKaraoke::RipristinaPosto() {
    const Config& config = programma_.config;
    if (isMinimized() && config.FullScreen == 0) {
        return;
    }
    const Rettangolo posto =
        PostoVisibile({config.WinLeft, config.WinTop, config.WinWidth, config.WinHeight},
                      LarghezzaMinima, programma_.schermo.Schermi());
    resize(Pixel(posto.width), Pixel(posto.height));
    move(Pixel(posto.left), Pixel(posto.top));
    if (config.FullScreen != 0) {
        setWindowState(Qt::WindowMaximized);
    }
}

void frmKaraoke::MostraFinestra() {
    if (splash_) {
        splash_->hide();
    }
    show();
    DisponiFinestra();
    PaintNow(*this);
}

void frmKaraoke::closeEvent(QCloseEvent* event) {
    // While the library is rebuilt the window takes no input, its frame's either.
    event->setAccepted(isEnabled());
    if (isEnabled()) {
        Form_Unload();
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

}  // namespace sonnel
