#pragma once

#include "platform/Clock.h"
#include "platform/MsgBox.h"
#include "platform/Registry.h"
#include "platform/Screen.h"
#include "platform/Shell.h"
#include "platform/SystemEvents.h"
#include "platform/midi/MMControl.h"
#include "platform/qt/KeepAwake.h"
#include "platform/qt/QtPictureBox.h"
#include "player/Cantante.h"
#include "player/CorniceParole.h"
#include "player/DisegnoParole.h"
#include "player/ImpaginazioneParole.h"
#include "player/Riproduzione.h"
#include "player/VistaKaraoke.h"
#include "player/window/AltreFinestre.h"
#include "player/window/AssociaLyk.h"
#include "player/window/frmParole.h"
#include "player/window/frmSchermoIntero.h"
#include "player/window/frmTurni.h"
#include "ui/CRebar.h"
#include "ui/frmInfo.h"
#include "ui/frmSplash.h"

#include <QAction>
#include <QLabel>
#include <QMainWindow>
#include <QSlider>
#include <QTimer>
#include <QToolBar>
#include <array>
#include <filesystem>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace sonnel {

/// The main window: shows the lyrics and the position of the song and passes commands on.
class frmKaraoke final : public QMainWindow, public CorniceParole, public VistaKaraoke {
  public:
    /// All of it must outlive the window.
    struct Parti {
        Config& config;
        Timeline& timeline;
        InformazioniBrano& informazioni;
        std::mt19937& caso;  ///< seeded at start-up
        Registry& registro;
        MMControl& sequencer;
        MsgBox& msgBox;
        SystemEvents& eventi;
        const Clock& orologio;
        const Screen& schermo;
        Shell& shell;
        AltreFinestre& finestre;
        Coda& coda;
    };
    /// Needed at start-up only.
    struct Avvio {
        std::string
            CmdLine;  ///< the program's arguments as they were received, blanks between them
        std::filesystem::path eseguibile{};  ///< the program's own file
        std::string openDirPredefinita{};    ///< karaoke directory when the settings name none
        ScriviWinIni scriviWinIni;
        std::optional<sonnel::Canto> canto{};  ///< for all songs, instead of what is stored
    };
    frmKaraoke(const Parti& parti, Avvio avvio);

    /// Runs the start-up steps and shows the window.
    void Form_Load();
    /// Whether songs from another start of the program are accepted: until the window is closed.
    [[nodiscard]] bool AccettaBrani() const { return fase_ != Fase::Chiusa; }
    /// Opens such a song by its absolute path, if not "", and brings the window to the front.
    /// During the start-up it only keeps the path for later.
    void RiceviBrano(const std::string& percorso);

    void mnuFileLoad_Click();
    void mnuFileRileggiDB_Click();
    void mnufileAggiornaDB_Click();
    void mnuFileExit_Click();
    void mnuVisMixer_Click();
    void mnuVisCalibratura_Click();
    void mnuVisInfo_Click();
    void mnuVisOpzioni_Click();
    void mnuHelpWebHome_Click();
    void mnuHelpWebLinks_Click();
    void mnuHelpAbout_Click();
    void mnuSound_Click();
    void mnuSoundPlay_Click();
    void mnuSoundPause_Click();
    void mnuSoundStop_Click();
    /// Runs the command of the toolbar button at a 1-based index; a separator has none.
    void tlbBar_ButtonClick(int index);
    void Parole_Click();
    void sldPosition_Change(int value);
    void tmrSlider_Timer();
    void tmrLogo_Timer();
    void Form_Resize();
    void Form_LostFocus();
    void Form_Unload();

    [[nodiscard]] int AltezzaBarra() const override;
    [[nodiscard]] int AltezzaInterna() const override;
    [[nodiscard]] bool ASchermoIntero() const override { return intero_->Attivo(); }
    [[nodiscard]] int LarghezzaParole() const override;
    void DisponiParole(int top, int altezza) override;
    void ColoreSfondo(Colour colore) override;

    void Titolo(const std::string& titolo) override;
    void Durata(std::int32_t secondi, const std::string& testo) override;
    void Cursore(std::int32_t secondi) override;
    void Posizione(const std::string& testo) override;
    void Canto(const std::string& testo) override;
    void AnimaLogo(bool attiva) override;
    void PrimaImmagineLogo() override;
    void Comandi(const StatoComandi& stato) override;
    void BranoFinito() override { turni_->BranoFinito(); }
    void Disabilita(bool StatoComandi::*comando) override;

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    static constexpr int LarghezzaMinima = 8300;  // twips

    [[nodiscard]] Riproduzione::Parti PartiRiproduzione();
    void CreaMenuCanto();
    void CreaSchermoIntero();
    void CreaFinestraParole();
    void CreaCoda();
    void FinestraLasciata();
    void CreaMenu();
    void CreaBarra();
    QWidget* CreaPosizione();
    void MostraLogo(int immagine);
    void ApriPagina(std::string_view indirizzo);
    void DisponiFinestra();

    void CreaRebar();
    void MostraSplash();
    void CaricaSplash(frmSplash::Modo modo);
    void SeminaCaso();
    void CaricaImpostazioni();
    void AllargaAlloSchermo();
    void CaricaDaRigaComando(const std::string& riga);
    void RipristinaPosto();
    void MostraFinestra();
    void FineAvvio();
    void SalvaFinestra();
    [[nodiscard]] bool BranoAperto() const { return !p_.sequencer.FileName().empty(); }
    [[nodiscard]] int Twips(double pixel) const;
    [[nodiscard]] int Pixel(double twips) const;

    Parti p_;
    Avvio avvio_;
    double twipsPerPixel_;
    QWidget* area_;  ///< everything below the menu bar
    QWidget* striscia_;
    SchermoIntero* intero_ = nullptr;
    std::unique_ptr<FinestraParole> cantanti_;  ///< the singers' window
    Turni* turni_ = nullptr;
    Colour sfondo_ = 0;  ///< of the space around the strip and the lyrics
    QtPictureBox Parole;
    QToolBar* tlbBar = nullptr;
    QLabel* lblPosition = nullptr;
    QLabel* lblCanto = nullptr;
    QSlider* sldPosition = nullptr;
    QLabel* lblTrackLength = nullptr;
    QLabel* imgLogo = nullptr;
    QTimer tmrLogo{this};
    KeepAwake sveglia_;
    QTimer tmrSlider;
    CRebar Rebar;  ///< has no bands: the strip covers it, because that is as wide as the window
    std::array<QIcon, 3> ImageList2;
    int immagineLogo_ = 0;
    int contatoreLogo_ = 0;

    /// A menu item or a button and the state that enables it.
    struct Legame {
        QAction* azione;
        bool StatoComandi::*stato;
    };
    std::vector<Legame> legami_;
    std::optional<StatoComandi> comandi_;  ///< the states applied last

    enum class Fase { Avvio, Pronta, Chiusa };
    Fase fase_ = Fase::Avvio;
    std::vector<std::string> ricevuti_;  ///< paths received during the start-up

    std::unique_ptr<frmSplash> splash_;  ///< while it is loaded
    std::unique_ptr<frmInfo> info_;      ///< from its first use on

    ImpaginazioneParole impaginazione_;
    DisegnoParole disegno_;
    Cantante cantante_;
    Riproduzione riproduzione_;
};

}  // namespace sonnel
