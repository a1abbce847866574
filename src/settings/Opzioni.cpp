#include "settings/Opzioni.h"

#include "platform/Numbers.h"
#include "platform/Paths.h"
#include "platform/Text.h"
#include "settings/Impostazioni.h"
#include "settings/TestoNumero.h"
#include "ui/basCommon.h"

#include <string_view>
#include <utility>

namespace sonnel {
namespace {

constexpr int DimensioneMinima = 8;  // points
constexpr int DimensioneMassima = 64;

bool ChiediNuovoIndice(MsgBox& msgBox, const std::string& openDir) {
    constexpr int No = 2;
    return msgBox.Show({"Karaoke index does not exists in " + openDir + "\r\nCreate a new index?",
                        Icon::Exclamation, Buttons::YesNo, No}) == Answer::Yes;
}

void SalvaOpzioni(Registry& registro, const Config& config) {
    const auto salva = [&registro](const char* sezione, const char* chiave,
                                   const std::string& valore) {
        SalvaImpostazione(registro, sezione, chiave, valore);
    };
    salva("Colori", "Testo", TestoNumero(config.ColoreTesto));
    salva("Colori", "Ombreggiatura", TestoNumero(config.ColoreOmbra));
    salva("Colori", "Selezione", TestoNumero(config.ColoreSelezione));
    salva("Colori", "Sfondo", TestoNumero(config.ColoreSfondo));
    salva("Font", "AutoFont", TestoLogico(config.AutoFont));
    salva("Font", "Nome", config.FontName);
    salva("Font", "Dimensione", TestoNumero(config.FontSize));
    salva("Font", "Grassetto", TestoLogico(config.FontBold));
    salva("Opzioni", "Ombra", TestoLogico(config.Ombra));
    salva("Opzioni", "OpenDir", config.OpenDir);
    salva("Opzioni", "Compensazione", TestoNumero(config.Compensazione));
    salva("Opzioni", "Autoplay", TestoLogico(config.Autoplay));
}

/// Draws one text of the sample; twips.
void ScriviCampione(PictureBox& parole, std::int16_t x, std::int16_t y, Colour colore,
                    std::string_view testo) {
    parole.SetForeColor(colore);
    parole.Print(x, y, testo);
}

}  // namespace

bool ConfermaOpzioni(const PartiOpzioni& parti, Config copia) {
    copia.OpenDir = AggiungiBarra(copia.OpenDir);
    if (!parti.esisteIndice(copia.OpenDir) && !ChiediNuovoIndice(parti.msgBox, copia.OpenDir)) {
        return false;
    }
    parti.config = std::move(copia);
    const std::string& openDir = parti.config.OpenDir;
    SalvaOpzioni(parti.registro, parti.config);
    if (!parti.esisteIndice(openDir)) {
        parti.creaIndice();
        // Where nothing could be written, loading reports next that there is no index.
        parti.msgBox.Show({"Index creation completed.", Icon::Information});
    }
    parti.caricaIndice();
    return true;
}

std::vector<float> DimensioniFont(PictureBox& parole, const std::string& nome) {
    std::vector<float> dimensioni;
    for (int punti = DimensioneMinima; punti <= DimensioneMassima; ++punti) {
        parole.SetFont({nome, static_cast<double>(punti), false});
        const auto ottenuta = static_cast<float>(parole.Font().size);
        if (dimensioni.empty() || ottenuta != dimensioni.back()) {
            dimensioni.push_back(ottenuta);
        }
    }
    return dimensioni;
}

void DisegnaCampione(PictureBox& parole, int larghezza, const Config& copia) {
    constexpr std::string_view Testo = "Sample";
    constexpr int Margine = 100;
    constexpr std::int16_t Ombra = 30;
    constexpr std::int16_t Y = 200;
    parole.SetBackColor(copia.ColoreSfondo);
    parole.Clear();
    parole.SetFont({copia.FontName, copia.FontSize, copia.FontBold});
    const double libera = larghezza - Margine - parole.Measure(Testo).width;
    const auto x = RoundHalfEven<std::int16_t>(libera / 2);
    if (copia.Ombra) {
        ScriviCampione(parole, RoundHalfEven<std::int16_t>(x + Ombra), Y + Ombra, copia.ColoreOmbra,
                       Testo);
    }
    ScriviCampione(parole, x, Y, copia.ColoreTesto, Testo);
    ScriviCampione(parole, x, Y, copia.ColoreSelezione,
                   FirstCodePoints(Testo, CodePoints(Testo) / 2));
}

}  // namespace sonnel
