// The main window's start-up and the end of the program.

#include "platform/Numbers.h"
#include "platform/qt/PaintNow.h"
#include "player/window/AssociaLyk.h"
#include "player/window/PostoFinestra.h"
#include "player/window/RigaComando.h"
#include "player/window/frmKaraoke.h"
#include "settings/Impostazioni.h"
#include "settings/TestoNumero.h"
#include "ui/PuntatoreOccupato.h"
#include "ui/basCommon.h"
#include "ui/frmCentraForm.h"

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
    PuntatoreOccupato occupato(p_.eventi, Pointer::Normal);
    AssociaLyk(p_.registro, p_.shell, avvio_.eseguibile, avvio_.scriviWinIni);
    const std::string riga = SenzaVirgolette(avvio_.CmdLine);
    ColoreSfondo(0);
    CaricaImpostazioni();
    riproduzione_.ApplicaConfig();
    Titolo(Riproduzione::EtichettaVersione());
    AllargaAlloSchermo();
    CaricaDaRigaComando(riga);
    riproduzione_.AbilitaFunzioni();
    RipristinaPosto();
    MostraFinestra();
    occupato.Ripristina();
    if (p_.config.Compensazione == MaiCalibrato) {
        mnuVisCalibratura_Click();
    }
    p_.finestre.CaricaLibreria();
    if (p_.config.Autoplay && BranoAperto()) {
        mnuSoundPlay_Click();
    }
    FineAvvio();
}

void frmKaraoke::CreaRebar() {
    CRebar::TBMakeFlat(*tlbBar, false);
    Rebar.Parent(area_);
    Rebar.Create();
}

void frmKaraoke::MostraSplash() {
    CaricaSplash(frmSplash::Modo::Avvio);
    CentraForm(*splash_, p_.schermo);
    splash_->show();
    PaintNow(*splash_);
}

void frmKaraoke::CaricaSplash(frmSplash::Modo modo) {
    splash_ = std::make_unique<frmSplash>(modo, modo == frmSplash::Modo::Avvio ? nullptr : this);
    // Deleted later, because the splash calls this from its own functions.
    splash_->onUnload = [this] { splash_.release()->deleteLater(); };
}

void frmKaraoke::SeminaCaso() {
    constexpr double Millesimi = 1000;
    p_.caso.seed(static_cast<std::mt19937::result_type>(p_.orologio.TimeOfDay() * Millesimi));
}

void frmKaraoke::CaricaImpostazioni() {
    p_.config = CaricaConfig(p_.registro, p_.schermo.Width(), avvio_.openDirPredefinita);
}

void frmKaraoke::AllargaAlloSchermo() {
    const Screen& schermo = p_.schermo;
    resize(Pixel(schermo.Width()), Pixel(std::min(p_.config.WinHeight, schermo.Height())));
    CentraForm(*this, schermo);
    DisponiFinestra();
}

void frmKaraoke::CaricaDaRigaComando(const std::string& riga) {
    if (riga.empty()) {
        Attendi(SecondiSplash, p_.orologio, p_.eventi);
        return;
    }
    if (riproduzione_.CaricaBrano(BranoNominato(riga))) {
        riproduzione_.PreparaBrano();
        return;
    }
    p_.eventi.SetPointer(Pointer::Normal);
    p_.msgBox.Show({"Wrong parameter: '" + avvio_.CmdLine + "'", Icon::Critical});
}

/// Puts the window where it was closed; a maximised one gets that place when it is restored. A song
/// loaded already was fitted to the screen's width, which only a maximised window has, so the font
/// is fitted again.
void frmKaraoke::RipristinaPosto() {
    const Config& config = p_.config;
    if (isMinimized() && !config.FullScreen) {
        return;
    }
    const Rectangle posto =
        PostoVisibile({config.WinLeft, config.WinTop, config.WinWidth, config.WinHeight},
                      LarghezzaMinima, p_.schermo.Screens());
    resize(Pixel(posto.width), Pixel(posto.height));
    move(Pixel(posto.left), Pixel(posto.top));
    if (config.FullScreen) {
        setWindowState(Qt::WindowMaximized);
    } else if (BranoAperto()) {
        DisponiFinestra();
        impaginazione_.RiadattaFont();
        riproduzione_.RisincronizzaParole();
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
    // While the library is rebuilt the window must not close.
    event->setAccepted(isEnabled());
    if (isEnabled()) {
        Form_Unload();
    }
}

void frmKaraoke::Form_Unload() {
    fase_ = Fase::Chiusa;
    p_.sequencer.Command(MciCommand::Close);
    intero_->Termina();
    cantanti_->close();
    SalvaFinestra();
    Rebar.DestroyRebar();
    QApplication::quit();
}

void frmKaraoke::SalvaFinestra() {
    const auto salva = [this](const char* chiave, const std::string& valore) {
        SalvaImpostazione(p_.registro, "Finestra", chiave, valore);
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
