#pragma once

#include "platform/Registry.h"
#include "platform/midi/MMControl.h"
#include "player/Canto.h"
#include "song/CanaleMelodia.h"
#include "song/FileBrano.h"
#include "song/Timeline.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace sonnel {

/// Key, tempo, melody and timing of the song that is open. What the user changes acts at once and
/// is remembered: the timing for each sound output, the rest for each song.
class Cantante {
  public:
    /// What it uses; all of it outlives it.
    struct Parti {
        Registry& registro;
        MMControl& sequencer;
        const Timeline& timeline;
    };
    /// `imposto`: counts for every song instead of what is remembered for it.
    explicit Cantante(const Parti& parti, std::optional<Canto> imposto = {});

    /// A song was opened, its words are in the timeline and its music in the sequencer.
    void NuovoBrano(const FileBrano& brano);

    /// The key of the song that is open, in semitones; not remembered.
    void ImponiTonalita(int semitoni);
    void CambiaTonalita(int semitoni);
    void CambiaTempo(int percento);
    void CambiaMelodia(Performance::Melody melodia);
    /// Normal, soft, off, and normal again.
    void ProssimaMelodia();
    /// Words come earlier by so many ms, later when it is negative.
    void CambiaAnticipo(int ms);
    /// Back to the song's own.
    void Azzera();

    /// Whether a song goes on when the window loses the focus. Remembered.
    [[nodiscard]] bool VaAvanti() const { return vaAvanti_; }
    void CambiaVaAvanti(bool vaAvanti);

    [[nodiscard]] const Canto& Corrente() const { return canto_; }
    [[nodiscard]] bool BranoAperto() const { return !p_.sequencer.FileName().empty(); }
    /// The tune of the song that is open, when one can be found; looked for at the first call.
    [[nodiscard]] const std::optional<CanaleMelodia>& Melodia();
    /// What is not the song's own; "" when all is.
    [[nodiscard]] std::string Descrizione() const { return DescriviCanto(canto_, anticipo_); }
    /// The place of the song, in ms, whose words are due when `posizione` is heard.
    [[nodiscard]] std::int32_t PosizioneParole(std::int32_t posizione) const;

  private:
    template <class Valore>
    void Cambia(Valore Canto::*parte, Valore valore);
    void Ricorda();
    void Esegui();

    Parti p_;
    std::optional<Canto> imposto_;
    std::string brano_;  ///< base path of the song opened last
    std::optional<std::filesystem::path> mid_;
    std::string uscita_;  ///< name of the sound output
    Canto canto_;
    Canto ricordato_;   ///< what was not imposed
    int anticipo_ = 0;  ///< ms
    bool vaAvanti_;
    std::optional<CanaleMelodia> melodia_;
    bool melodiaCercata_ = false;
};

}  // namespace sonnel
