#pragma once

#include "platform/EventiSistema.h"
#include "platform/MsgBox.h"
#include "platform/midi/MMControl.h"
#include "player/DisegnoParole.h"
#include "player/ImpaginazioneParole.h"
#include "player/SincroniaParole.h"
#include "player/VistaKaraoke.h"
#include "settings/Config.h"
#include "song/InformazioniBrano.h"
#include "song/Timeline.h"

#include <functional>
#include <optional>
#include <string>

namespace sonnel {

/// What the Open command needs of the song selection.
struct SceltaBrano {
    /// Lets the user choose; "" for nothing, a position of the song table, or "F=" and a path.
    std::function<std::string()> scegli;
    /// File name of the song at a position of the table, without directory and extension.
    std::function<std::string(std::int32_t posizione)> nomeFile;
};

/// Loads songs, drives the sequencer and makes the lyrics and the position controls follow it.
class Riproduzione {
  public:
    /// What playback stands on; all of it outlives the playback.
    struct Parti {
        const Config& config;
        Timeline& timeline;
        InformazioniBrano& informazioni;
        MMControl& sequencer;
        PictureBox& parole;
        CorniceParole& cornice;
        VistaKaraoke& vista;
        MsgBox& msgBox;
        EventiSistema& eventi;
        const SceltaBrano& scelta;
    };

    explicit Riproduzione(const Parti& parti);

    void FileLoad();
    void SoundPlay();
    void SoundPause();
    void SoundStop();
    /// A click on the lyrics: pause or play.
    void ParoleClick();
    /// The window loses the focus or is minimised.
    void Sospendi();
    /// The user has moved the slider to so many seconds.
    void CursoreSpostato(std::int32_t secondi);
    /// Every 500 ms while playing.
    void AggiornaCursore();

    /// Loads the song of this base path (without extension) into timeline and sequencer; false when
    /// a message box has told why not.
    bool CaricaBrano(const std::string& basePath);
    /// Sets up position controls, font and lyrics for the song just loaded.
    void PreparaBrano();
    /// Fits font and lyrics of the loaded song to the area's new width, without a warning.
    void Riadatta();
    /// The settings have changed: colours and font of the lyrics area.
    void ApplicaConfig();
    void RisincronizzaParole();
    void AbilitaFunzioni();
    void Ridisponi() { disegno_.Ridisponi(); }
    /// The lyrics display, for the calibration.
    [[nodiscard]] DisegnoParole& Disegno() { return disegno_; }
    [[nodiscard]] ImpaginazioneParole& Impaginazione() { return impaginazione_; }

    /// Window title of the program, its version included.
    [[nodiscard]] static std::string EtichettaVersione();

  private:
    [[nodiscard]] bool InRiproduzione() const;
    [[nodiscard]] std::string PercorsoScelto(const std::string& scelta) const;
    [[nodiscard]] bool FileDelBrano(const std::string& basePath);
    [[nodiscard]] bool LeggiParole(const std::string& basePath);
    [[nodiscard]] std::optional<Error> ApriSequencer(const std::string& basePath);
    void MMControl1_StatusUpdate();
    void MMControl1_Done(MciNotify codice);

    Parti p_;
    ImpaginazioneParole impaginazione_;
    DisegnoParole disegno_;
    SincroniaParole sincronia_;
};

}  // namespace sonnel
