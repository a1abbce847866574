#include "player/window/PostoFinestra.h"

#include <algorithm>
#include <cstdint>

namespace sonnel {
namespace {

constexpr int AltezzaMinima = 1440;
constexpr int AltezzaTitolo = 450;    // the part that the mouse can grab
constexpr int BordiCornice = 120;     // of a usual frame, left and right together
constexpr int AltezzaCornice = 600;   // title and lower edge
constexpr int LarghezzaPresa = 1440;  // this much of the title must be on a screen

/// The length of the overlap of two ranges, negative when they are apart. 64 bits, because a stored
/// place can be any int.
std::int64_t Comune(std::int64_t inizio, std::int64_t lunghezza, std::int64_t altro,
                    std::int64_t lunghezzaAltro) {
    return std::min(inizio + lunghezza, altro + lunghezzaAltro) - std::max(inizio, altro);
}

bool SiPrende(const Rectangle& finestra, const Rectangle& schermo) {
    return Comune(finestra.left, finestra.width, schermo.left, schermo.width) >= LarghezzaPresa &&
           Comune(finestra.top, AltezzaTitolo, schermo.top, schermo.height) >= AltezzaTitolo / 2;
}

/// Limits a length; the minimum counts more than the screen.
int MisuraAmmessa(int valore, int minimo, int massimo) {
    return std::max(minimo, std::min(valore, massimo));
}

}  // namespace

Rectangle PostoVisibile(const Rectangle& voluto, int larghezzaMinima,
                        const std::vector<Rectangle>& schermi) {
    Rectangle posto = voluto;
    posto.width = std::max(posto.width, larghezzaMinima);
    posto.height = std::max(posto.height, AltezzaMinima);
    if (schermi.empty()) {
        return posto;
    }
    auto schermo = std::find_if(schermi.begin(), schermi.end(),
                                [&](const Rectangle& s) { return SiPrende(posto, s); });
    if (schermo == schermi.end()) {
        schermo = schermi.begin();
        posto.left = schermo->left;
        posto.top = schermo->top;
    }
    posto.width = MisuraAmmessa(posto.width, larghezzaMinima, schermo->width - BordiCornice);
    posto.height = MisuraAmmessa(posto.height, AltezzaMinima, schermo->height - AltezzaCornice);
    return posto;
}

}  // namespace sonnel
