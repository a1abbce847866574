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

/// Key, tempo, melody and timing of the open song. A change takes effect at once and is stored: the
/// timing for each sound output, the rest for each song.
class Cantante {
  public:
    /// All of it must outlive this object.
    struct Parti {
        Registry& registro;
        MMControl& sequencer;
        const Timeline& timeline;
    };
    /// `imposto` applies to every song instead of what is stored for it.
    explicit Cantante(const Parti& parti, std::optional<Canto> imposto = {});

    /// To be called when a song has been opened in timeline and sequencer.
    void NuovoBrano(const FileBrano& brano);

    /// Sets the key of the open song without storing it.
    void ImponiTonalita(int semitoni);
    void CambiaTonalita(int semitoni);
    void CambiaTempo(int percento);
    void CambiaMelodia(Performance::Melody melodia);
    /// Normal, soft, off, and normal again.
    void ProssimaMelodia();
    /// Makes the words come earlier by so many ms; later when negative.
    void CambiaAnticipo(int ms);
    /// Back to the original key, tempo, melody and timing.
    void Azzera();

    /// Whether a song goes on when the window loses the focus. Stored.
    [[nodiscard]] bool VaAvanti() const { return vaAvanti_; }
    void CambiaVaAvanti(bool vaAvanti);

    [[nodiscard]] const Canto& Corrente() const { return canto_; }
    [[nodiscard]] bool BranoAperto() const { return !p_.sequencer.FileName().empty(); }
    /// The tune of the open song, if one can be found; the first call searches for it.
    [[nodiscard]] const std::optional<CanaleMelodia>& Melodia();
    /// The changes as a text for the user; "" when there are none.
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
    Canto ricordato_;   ///< what is stored for the song
    int anticipo_ = 0;  ///< ms
    bool vaAvanti_;
    std::optional<CanaleMelodia> melodia_;
    bool melodiaCercata_ = false;
};

}  // namespace sonnel
