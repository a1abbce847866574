#include "player/ImpaginazioneParole.h"

#include "platform/Numbers.h"
#include "player/CarattereMassimo.h"

#include <algorithm>
#include <utility>

namespace sonnel {
namespace {

constexpr double PuntiInPiu = 8;
constexpr double PuntiMinimi = 8;
constexpr double PuntiPiccoli = 10;
constexpr int MargineRiga = 25;  // twips below each line, for descenders and the shadow

const Message AvvisoRigheLunghe{
    "Warning! The selected song contains one or more long text lines! The words will be displayed "
    "using a very small font."
    "\r\n\r\n"
    "To have a regular karaoke, please edit the LYK and avoid having too long text lines.",
    Icon::Information, Buttons::Ok, 1, "Sonnel Karaoke"};

}  // namespace

double AltezzaRighe(PictureBox& parole, int righe) {
    return (parole.Measure("T").height + MargineRiga) * righe;
}

ImpaginazioneParole::ImpaginazioneParole(const Config& config, const Timeline& timeline,
                                         PictureBox& parole, CorniceParole& cornice, MsgBox& msgBox)
    : config_(config), timeline_(timeline), parole_(parole), cornice_(cornice), msgBox_(msgBox) {}

void ImpaginazioneParole::ApplicaConfig() {
    parole_.SetForeColor(config_.ColoreTesto);
    cornice_.ColoreSfondo(config_.ColoreSfondo);
    parole_.SetBackColor(config_.ColoreSfondo);
    FontSpec font = parole_.Font();
    font.name = config_.FontName;
    if (!config_.AutoFont) {
        font.size = config_.FontSize;
    }
    font.bold = config_.FontBold;
    parole_.SetFont(font);
}

void ImpaginazioneParole::FontAutomatico() {
    avvisato_ = false;
    RiadattaFont();
}

void ImpaginazioneParole::RiadattaFont() {
    if (AdattaFont() && !std::exchange(avvisato_, true)) {
        msgBox_.Show(AvvisoRigheLunghe);
    }
}

bool ImpaginazioneParole::AdattaFont() {
    if (!config_.AutoFont) {
        return false;
    }
    if (cornice_.ASchermoIntero()) {
        CarattereMassimo(parole_, timeline_, cornice_.LarghezzaParole(), cornice_.AltezzaInterna());
        return false;
    }
    FontSpec font = parole_.Font();
    font.size = config_.FontSize + PuntiInPiu;
    parole_.SetFont(font);
    bool piccolo = false;
    for (std::int16_t i = 1; i <= timeline_.NumEventi(); ++i) {
        const Evento& evento = timeline_.Eventi(i);
        if (evento.Tipo == TipoEvento::Pagina) {
            RiduciFont(evento);
            piccolo = piccolo || parole_.Font().size <= PuntiPiccoli;
        }
    }
    return piccolo;
}

void ImpaginazioneParole::RiduciFont(const Evento& pagina) {
    FontSpec font = parole_.Font();
    double richiesta = font.size;
    while (font.size > PuntiMinimi && richiesta > PuntiMinimi &&
           parole_.Measure(pagina.Testo).width > cornice_.LarghezzaParole()) {
        // A font with few sizes may set a larger one than was asked for.
        richiesta = std::max(std::min(font.size, richiesta) - 1, PuntiMinimi);
        font.size = richiesta;
        parole_.SetFont(font);
        font = parole_.Font();
    }
}

void ImpaginazioneParole::ResizeParole(std::int16_t& righe) {
    righe = std::max<std::int16_t>(righe, 1);
    const double altezza = AltezzaRighe(parole_, righe);
    const int barra = cornice_.AltezzaBarra();
    const int top = RoundHalfEven<int>(barra + (cornice_.AltezzaInterna() - barra - altezza) / 2);
    cornice_.DisponiParole(std::max(top, barra), RoundHalfEven<int>(altezza));
}

}  // namespace sonnel
