#pragma once

#include "platform/MsgBox.h"
#include "platform/PictureBox.h"
#include "platform/Registry.h"
#include "settings/Config.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace sonnel {

/// What confirmed options change in the rest of the player.
struct PartiOpzioni {
    Config& config;
    Registry& registro;
    MsgBox& msgBox;
    /// Whether there is an index in a karaoke directory. The other functions take the directory
    /// from `config`.
    std::function<bool(const std::string& openDir)> esisteIndice;
    std::function<void()> creaIndice;
    std::function<void()> aggiornaIndice;
    std::function<void()> caricaIndice;
    std::function<void()> scaricaSelezione;  ///< unloads the song selection window
};

/// The OK of the options: makes `copia` the program's settings, stores them and loads the library
/// of their directory, making its index when there is none. Asks before a new index is made; false,
/// and nothing is changed, when the answer is No.
bool ConfermaOpzioni(const PartiOpzioni& parti, Config copia);

/// The karaoke directory that a file chosen in it stands for; ends in a separator.
[[nodiscard]] std::string DirectoryScelta(const std::filesystem::path& file);

/// Bounds of the compensation that can be chosen, tenths of a second.
inline constexpr std::int32_t CompensazioneMinima = -100;
inline constexpr std::int32_t CompensazioneMassima = 100;

/// The sizes a font comes in between 8 and 64 points, ascending and distinct. Leaves the picture
/// box with another font.
[[nodiscard]] std::vector<float> DimensioniFont(PictureBox& parole, const std::string& nome);

/// Draws the sample of font and colours on a picture box of a width in twips.
void DisegnaCampione(PictureBox& parole, int larghezza, const Config& copia);

}  // namespace sonnel
