#include "player/DisegnoParole.h"

#include "platform/Numbers.h"
#include "platform/Text.h"
#include "song/Timeline.h"

namespace sonnel {
namespace {

constexpr int CaratteriFineRiga = 2;
constexpr int DistanzaOmbra = 30;  // twips, right of and below the text

/// The first n characters of a line that count as sung: no blanks and no CR at their end.
std::string_view ParteCantata(std::string_view riga, std::int32_t n) {
    std::string_view parte = FirstCodePoints(riga, static_cast<std::size_t>(n));
    while (parte.ends_with(' ')) {
        parte.remove_suffix(1);
    }
    while (parte.ends_with('\r')) {
        parte.remove_suffix(1);
    }
    return parte;
}

}  // namespace

DisegnoParole::DisegnoParole(const Config& config, PictureBox& parole, const CorniceParole& cornice,
                             ImpaginazioneParole& impaginazione)
    : config_(config), parole_(parole), cornice_(cornice), impaginazione_(impaginazione) {}

void DisegnoParole::MostraPagina(std::string_view testo) {
    parole_.SetBackColor(config_.ColoreSfondo);
    parole_.Clear();
    pagina_.PaginaCorrente = SenzaFineRighe(testo);
    DividiRighe(pagina_.PaginaCorrente);
    impaginazione_.ResizeParole(pagina_.NumRighe);
    ColoraPagina(static_cast<std::int32_t>(CodePoints(pagina_.PaginaCorrente)),
                 config_.ColoreTesto);
}

void DisegnoParole::DividiRighe(std::string_view testo) {
    pagina_.NumRighe = 0;
    for (std::size_t i = 0; i < pagina_.Righe.size(); ++i) {
        const bool ultima = i + 1 == pagina_.Righe.size();
        const std::size_t fine = ultima ? std::string_view::npos : testo.find(FineRiga);
        const std::string_view riga = testo.substr(0, fine);
        pagina_.Righe[i] = riga;
        pagina_.RigaX[i] =
            RoundHalfEven<int>((cornice_.LarghezzaParole() - parole_.Measure(riga).width) / 2);
        ++pagina_.NumRighe;
        if (fine == std::string_view::npos) {
            return;
        }
        testo.remove_prefix(fine + FineRiga.size());
    }
}

void DisegnoParole::ColoraPagina(std::int32_t n, Colour colore) {
    const double passo = parole_.Measure("T").height;
    for (std::size_t j = 0; j < static_cast<std::size_t>(pagina_.NumRighe) && n >= 1; ++j) {
        const std::string& riga = pagina_.Righe[j];
        const int x = pagina_.RigaX[j];
        const int y = RoundHalfEven<int>(static_cast<double>(j) * passo);
        const auto conFine = static_cast<std::int32_t>(CodePoints(riga)) + CaratteriFineRiga;
        if (n <= conFine) {
            ScriviTesto(x, y, colore, ParteCantata(riga, n));
            return;
        }
        ScriviTesto(x, y, colore, riga);
        n -= conFine;
    }
}

void DisegnoParole::ScriviTesto(int x, int y, Colour colore, std::string_view testo) {
    if (colore == config_.ColoreTesto && config_.Ombra) {
        StampaTesto(x + DistanzaOmbra, y + DistanzaOmbra, config_.ColoreOmbra, testo);
    }
    StampaTesto(x, y, colore, testo);
}

void DisegnoParole::StampaTesto(int x, int y, Colour colore, std::string_view testo) {
    parole_.SetForeColor(colore);
    parole_.Print(x, y, testo);
}

}  // namespace sonnel
