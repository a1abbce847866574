#pragma once

#include "platform/qt/QtPictureBox.h"
#include "player/CorniceParole.h"
#include "player/Programma.h"
#include "player/Riproduzione.h"
#include "player/VistaKaraoke.h"
#include "ui/CRebar.h"
#include "ui/frmInfo.h"
#include "ui/frmSplash.h"

#include <QAction>
#include <QKeySequence>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QSlider>
#include <QTimer>
#include <QToolBar>
#include <array>
#include <memory>
#include <optional>
#include <string_view>

namespace sonnel {

/// The main window: it shows the lyrics and the position of the song and passes commands on.
class frmKaraoke final : public QMainWindow, public CorniceParole, public VistaKaraoke {
  public:
    explicit frmKaraoke(Programma& programma);

    /// Brings the player up and shows the window.
    void Form_Load();

    void mnuFileLoad_Click();
    void mnuFileRileggiDB_Click() const;
    void mnufileAggiornaDB_Click() const;
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
    /// Runs the menu command of the toolbar button at a 1-based index.
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
    [[nodiscard]] int LarghezzaParole() const override;
    void DisponiParole(int top, int altezza) override;
    void ColoreSfondo(Colour colore) override;

    void Titolo(const std::string& titolo) override;
    void Durata(std::int32_t secondi, const std::string& testo) override;
    void Cursore(std::int32_t secondi) override;
    void Posizione(const std::string& testo) override;
    void AnimaLogo(bool attiva) override;
    void PrimaImmagineLogo() override;
    void Comandi(const StatoComandi& stato) override;
    void Disabilita(VistaKaraoke::Comando comando) override;

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    static constexpr int NumBottoni = 11;
    static constexpr int LarghezzaMinima = 8300;  // twips

    [[nodiscard]] Riproduzione::Parti Parti();
    void CreaMenu();
    void CreaMenuFile();
    void CreaMenuVista();
    void CreaMenuKaraoke();
    void CreaMenuAiuto();
    /// A menu item, an object of that name; without `tasti` it has no shortcut.
    template <typename Gestore>
    QAction* Voce(QMenu* menu, const char* nome, const char* testo, const QKeySequence& tasti,
                  Gestore comando);
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
    void SalvaFinestra();
    [[nodiscard]] int Twips(double pixel) const;
    [[nodiscard]] int Pixel(double twips) const;

    Programma& programma_;
    double twipsPerPixel_;
    QWidget* area_;  ///< everything below the menu bar
    QWidget* striscia_;
    QtPictureBox Parole;
    QToolBar* tlbBar = nullptr;
    QLabel* lblPosition = nullptr;
    QSlider* sldPosition = nullptr;
    QLabel* lblTrackLength = nullptr;
    QLabel* imgLogo = nullptr;
    QTimer tmrLogo{this};
    QTimer tmrSlider;
    CRebar Rebar;  ///< without bands: the strip lies over it, as wide as the window
    std::array<QIcon, 3> ImageList2;
    int immagineLogo_ = 0;
    int contatoreLogo_ = 0;

    QAction* mnuFileLoad = nullptr;
    QAction* mnuVisCalibratura = nullptr;
    QAction* mnuVisInfo = nullptr;
    QAction* mnuSoundPlay = nullptr;
    QAction* mnuSoundPause = nullptr;
    QAction* mnuSoundStop = nullptr;
    std::array<QAction*, NumBottoni> bottoni_{};
    std::optional<StatoComandi> comandi_;  ///< what the commands were last told

    std::unique_ptr<frmSplash> splash_;  ///< while it is loaded
    std::unique_ptr<frmInfo> info_;      ///< from its first use on

    Riproduzione riproduzione_;
};

}  // namespace sonnel
