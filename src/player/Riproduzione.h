#pragma once

#include "platform/MsgBox.h"
#include "platform/SystemEvents.h"
#include "platform/midi/MMControl.h"
#include "player/Cantante.h"
#include "player/DisegnoParole.h"
#include "player/ImpaginazioneParole.h"
#include "player/SincroniaParole.h"
#include "player/VistaKaraoke.h"
#include "settings/Config.h"
#include "song/FileBrano.h"
#include "song/InformazioniBrano.h"
#include "song/Timeline.h"

#include <optional>
#include <string>

namespace sonnel {

/// Loads songs, drives the sequencer and makes the lyrics and the position controls follow it.
class Riproduzione {
  public:
    /// All of it must outlive the playback.
    struct Parti {
        const Config& config;
        Timeline& timeline;
        InformazioniBrano& informazioni;
        MMControl& sequencer;
        ImpaginazioneParole& impaginazione;
        DisegnoParole& disegno;
        VistaKaraoke& vista;
        Cantante& cantante;
        MsgBox& msgBox;
        SystemEvents& eventi;
    };

    explicit Riproduzione(const Parti& parti);
    ~Riproduzione();
    Riproduzione(const Riproduzione&) = delete;
    Riproduzione& operator=(const Riproduzione&) = delete;

    /// The Open command, after the user has chosen a song or, with none, has cancelled.
    void FileLoad(const std::optional<FileBrano>& scelta);
    /// Opens a song and plays it; `tonalita`, if given, overrides the key stored for the song.
    /// Returns false when it cannot be opened; a message box has shown the reason.
    bool SuonaBrano(const FileBrano& brano, std::optional<int> tonalita);
    void SoundPlay();
    void SoundPause();
    void SoundStop();
    /// A click on the lyrics: pause or play.
    void ParoleClick();
    /// To be called when the window loses the focus or is minimised.
    void Sospendi();
    /// The user has moved the slider to so many seconds.
    void CursoreSpostato(std::int32_t secondi);
    /// To be called every 500 ms while playing.
    void AggiornaCursore();

    /// Loads a song into timeline and sequencer. Returns false when that fails; a message box has
    /// shown the reason.
    bool CaricaBrano(const FileBrano& brano);
    [[nodiscard]] bool InRiproduzione() const;
    /// Sets up position controls, font and lyrics for the song just loaded.
    void PreparaBrano();
    /// Fits font and lyrics of the loaded song to the area's new width, without a warning.
    void Riadatta();
    /// Applies changed settings: colours and font of the lyrics area.
    void ApplicaConfig();
    void RisincronizzaParole();
    void AbilitaFunzioni();

    /// Window title of the program, its version included.
    [[nodiscard]] static std::string EtichettaVersione();

  private:
    [[nodiscard]] std::int32_t PosizioneParole();
    [[nodiscard]] bool FilePresenti(const FileBrano& brano);
    [[nodiscard]] bool LeggiParole(const FileBrano& brano);
    [[nodiscard]] std::optional<Error> ApriSequencer(const FileBrano& brano);
    void MMControl1_StatusUpdate();
    void MMControl1_Done(MciNotify codice);

    Parti p_;
    SincroniaParole sincronia_;
};

}  // namespace sonnel
