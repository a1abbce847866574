#include "player/window/frmParoleDisegno.h"

#include "platform/qt/QtColour.h"

#include <QTextBoundaryFinder>
#include <algorithm>
#include <cmath>
#include <utility>

namespace sonnel {
namespace {

constexpr int Provato = 100;      // pixels: the size at which lines are measured
constexpr double Margine = 0.92;  // part of the width and the height that the lyrics may fill
constexpr double Interlinea = 1.1;
constexpr int RigheInPiu = 2;    // for the dots above the page and the next line below it
constexpr double Ombra = 0.025;  // of the letters' height
constexpr double Sbiadito = 0.65;

QString Testo(const std::string& testo) {
    return QString::fromStdString(testo);
}

/// A text of the song information with the doubled "&" made single again.
QString Semplice(const std::string& testo) {
    return Testo(testo).replace("&&", "&");
}

int Pixel(double lunghezza) {
    return static_cast<int>(std::lround(lunghezza));
}

}  // namespace

void DisegnoScena::Misura() {
    carattere_ = QFont(Testo(p_.config.FontName));
    carattere_.setBold(p_.config.FontBold);
    carattere_.setHintingPreference(QFont::PreferNoHinting);
    carattere_.setPixelSize(Provato);
    const QFontMetricsF misure(carattere_);
    larga_ = 1;
    righe_ = 1;
    for (std::int32_t i = 1; i <= p_.timeline.NumEventi(); ++i) {
        const Evento& evento = p_.timeline.Eventi(static_cast<std::int16_t>(i));
        if (evento.Tipo != TipoEvento::Pagina) {
            continue;
        }
        const auto pagina = RigheDiPagina(evento.Testo);
        righe_ = std::max(righe_, static_cast<int>(pagina.size()));
        for (const std::string& riga : pagina) {
            larga_ = std::max(larga_, misure.horizontalAdvance(Testo(riga)));
        }
    }
}

void DisegnoScena::Adatta(QSize finestra) {
    finestra_ = finestra;
    carattere_.setPixelSize(Provato);
    const double riga = QFontMetricsF(carattere_).height() * Interlinea / Provato;
    const double altezza = finestra.height() * Margine;
    const double grande = std::min(Provato * finestra.width() * Margine / larga_,
                                   altezza / ((righe_ + RigheInPiu) * riga));
    carattere_.setPixelSize(std::max(1, static_cast<int>(grande)));
    passo_ = std::max(1, static_cast<int>(carattere_.pixelSize() * riga));
    const int libero = static_cast<int>(altezza) - (righe_ + RigheInPiu) * passo_;
    spazio_ = std::clamp(libero / 2, 0, passo_ / 2);
    ComponiPagina();
}

QRegion DisegnoScena::Mostra(const Scena& scena) {
    if (scena == scena_) {
        return {};
    }
    const Scena prima = std::exchange(scena_, scena);
    if (prima.righe != scena.righe || prima.titolo != scena.titolo ||
        prima.prossima != scena.prossima) {
        ComponiPagina();
        return QRect(QPoint(), finestra_);
    }
    QRegion parte =
        Cantato(std::min(prima.cantati, scena.cantati), std::max(prima.cantati, scena.cantati));
    if (prima.annuncia != scena.annuncia) {
        parte += ZonaProssima();
    }
    if (prima.punti != scena.punti) {
        parte += ZonaPunti();
    }
    return parte;
}

void DisegnoScena::ComponiPagina() {
    pagina_.clear();
    for (const std::string& riga : scena_.righe) {
        pagina_.push_back(Componi(Testo(riga)));
    }
    prima_ = (finestra_.height() - static_cast<int>(pagina_.size()) * passo_) / 2;
    daCantare_ = cantata_ = QPixmap();
}

/// The place of each character in a centred line. The whole line is laid out at once, because
/// letters change their form beside others and lines may run from right to left.
DisegnoScena::Riga DisegnoScena::Componi(const QString& testo) const {
    auto composto = std::make_unique<QTextLayout>(testo, carattere_);
    QTextOption opzioni(Qt::AlignLeft | Qt::AlignAbsolute);
    opzioni.setWrapMode(QTextOption::NoWrap);
    composto->setTextOption(opzioni);
    composto->beginLayout();
    QTextLine linea = composto->createLine();
    if (!linea.isValid()) {
        composto->endLayout();
        return {std::move(composto), 0, 0, {}};
    }
    linea.setLineWidth(linea.naturalTextWidth());
    composto->endLayout();
    const double larghezza = linea.naturalTextWidth();
    const double sinistra = (finestra_.width() - larghezza) / 2;
    Riga riga{std::move(composto), sinistra, sinistra + larghezza, {}};
    QTextBoundaryFinder lettere(QTextBoundaryFinder::Grapheme, testo);
    for (int i = 0; i < testo.size(); ++i) {
        if (testo[i].isLowSurrogate()) {
            continue;
        }
        lettere.setPosition(i);
        if (!lettere.isAtBoundary() && !riga.caratteri.empty()) {
            riga.caratteri.push_back({riga.caratteri.back().fine, riga.caratteri.back().fine});
            continue;
        }
        riga.caratteri.push_back({sinistra + linea.cursorToX(i, QTextLine::Leading),
                                  sinistra + linea.cursorToX(i, QTextLine::Trailing)});
    }
    return riga;
}

/// The region with the characters `da` to `a` of the page, widened at the ends of a line because
/// letters can overhang there.
QRegion DisegnoScena::Cantato(double da, double a) const {
    QRegion parte;
    double primo = 0;
    for (std::size_t i = 0; i < pagina_.size(); ++i) {
        const Riga& riga = pagina_[i];
        const QRect striscia = Striscia(prima_ + static_cast<int>(i) * passo_);
        for (const Tratto& carattere : riga.caratteri) {
            const double lunga = carattere.fine - carattere.inizio;
            const double inizio = carattere.inizio + lunga * std::clamp(da - primo, 0.0, 1.0);
            const double fine = carattere.inizio + lunga * std::clamp(a - primo, 0.0, 1.0);
            primo += 1;
            if (inizio == fine) {
                continue;
            }
            const auto [sinistra, destra] = std::minmax(inizio, fine);
            parte += QRect(QPoint(sinistra > riga.sinistra ? Pixel(sinistra) : 0, striscia.top()),
                           QPoint(destra < riga.destra ? Pixel(destra) - 1 : striscia.right(),
                                  striscia.bottom()));
        }
        primo += static_cast<double>(FineRiga.size());
    }
    return parte;
}

void DisegnoScena::Dipingi(QPainter& pittore, const QRegion& parte) {
    pittore.fillRect(QRect(QPoint(), finestra_), ToQColor(p_.config.ColoreSfondo));
    pittore.setRenderHint(QPainter::Antialiasing);
    if (!pagina_.empty() && !scena_.titolo) {
        if (daCantare_.isNull() ||
            daCantare_.devicePixelRatio() != pittore.device()->devicePixelRatioF()) {
            DisegnaPagina(pittore.device()->devicePixelRatioF());
        }
        pittore.drawPixmap(0, prima_, daCantare_);
        pittore.setClipRegion(Cantato(0, scena_.cantati));
        pittore.drawPixmap(0, prima_, cantata_);
        pittore.setClipping(false);
    }
    if (scena_.titolo) {
        DisegnaTitolo(pittore);
    }
    if (scena_.annuncia) {
        pittore.drawPixmap(ZonaProssima().topLeft(), prossima_);
    }
    if (scena_.punti > 0 && parte.intersects(ZonaPunti())) {
        DisegnaPunti(pittore);
    }
}

/// Paints the page into two pictures, unsung and sung, from which each moment is copied; also the
/// next line, before it is needed.
void DisegnoScena::DisegnaPagina(double pixel) {
    const auto tela = [&](std::size_t righe) {
        const QSizeF misura(finestra_.width(), static_cast<double>(righe) * passo_);
        QPixmap vuota((misura * pixel).toSize());
        vuota.setDevicePixelRatio(pixel);
        vuota.fill(ToQColor(p_.config.ColoreSfondo));
        return vuota;
    };
    daCantare_ = tela(pagina_.size());
    {
        QPainter pittore(&daCantare_);
        if (p_.config.Ombra) {
            Scrivi(pittore, pagina_, p_.config.ColoreOmbra, carattere_.pixelSize() * Ombra);
        }
        Scrivi(pittore, pagina_, p_.config.ColoreTesto, 0);
    }
    cantata_ = daCantare_;
    QPainter sopra(&cantata_);
    Scrivi(sopra, pagina_, p_.config.ColoreSelezione, 0);
    prossima_ = tela(1);
    QPainter sotto(&prossima_);
    sotto.setOpacity(Sbiadito);
    std::vector<Riga> riga;
    riga.push_back(Componi(Testo(scena_.prossima)));
    Scrivi(sotto, riga, p_.config.ColoreTesto, 0);
}

void DisegnoScena::Scrivi(QPainter& pittore, const std::vector<Riga>& righe, Colour colore,
                          double sposta) const {
    pittore.setPen(ToQColor(colore));
    for (std::size_t i = 0; i < righe.size(); ++i) {
        const Riga& riga = righe[i];
        riga.testo->draw(&pittore,
                         QPointF(riga.sinistra + sposta, static_cast<double>(i) * passo_ + sposta));
    }
}

/// The largest font up to `altezza` pixels in which the whole text fits: in one line or, if that
/// needs much smaller letters, in several.
QFont DisegnoScena::CheEntra(const QRect& zona, const QString& testo, int altezza) const {
    constexpr double piuPiccolo = 0.95;
    constexpr double inUnaRiga = 0.6;  // of `altezza`
    QFont font = carattere_;
    const auto entra = [&](int pixel, int come) {
        font.setPixelSize(pixel);
        const QSize occupa = QFontMetrics(font).boundingRect(zona, come, testo).size();
        return occupa.width() <= zona.width() && occupa.height() <= zona.height();
    };
    for (const auto& [minima, come] :
         {std::pair{altezza * inUnaRiga, 0}, {1.0, int{Qt::TextWordWrap}}}) {
        for (int pixel = altezza; pixel > minima; pixel = static_cast<int>(pixel * piuPiccolo)) {
            if (entra(pixel, come)) {
                return font;
            }
        }
    }
    font.setPixelSize(1);
    return font;
}

void DisegnoScena::DisegnaTitolo(QPainter& pittore) const {
    constexpr double fineTitolo = 0.5;
    constexpr double inizioAutore = 0.55;
    constexpr double fineAutore = 0.8;
    const int alta = finestra_.height();
    const int margine = Pixel(finestra_.width() * (1 - Margine) / 2);
    const auto scrivi = [&](double da, double a, int come, const std::string& testo, int altezza) {
        const QRect zona(QPoint(margine, Pixel(alta * da)),
                         QPoint(finestra_.width() - margine, Pixel(alta * a)));
        pittore.setFont(CheEntra(zona, Semplice(testo), std::max(1, altezza)));
        pittore.drawText(zona, Qt::AlignHCenter | Qt::TextWordWrap | come, Semplice(testo));
    };
    pittore.setPen(ToQColor(p_.config.ColoreTesto));
    scrivi(1 - Margine, fineTitolo, Qt::AlignBottom, p_.informazioni.Titolo, alta / 7);
    scrivi(inizioAutore, fineAutore, Qt::AlignTop, p_.informazioni.Autore, alta / 14);
}

void DisegnoScena::DisegnaPunti(QPainter& pittore) const {
    constexpr int quanti = 3;
    constexpr double spento = 0.25;
    const QRectF zona = ZonaPunti();
    const double raggio = passo_ / 8.0;
    pittore.setBrush(ToQColor(p_.config.ColoreSelezione));
    pittore.setPen(Qt::NoPen);
    for (int i = 0; i < quanti; ++i) {
        pittore.setOpacity(i < scena_.punti ? 1 : spento);
        pittore.drawEllipse(zona.center() + QPointF((i - 1) * 5 * raggio, 0), raggio, raggio);
    }
}

/// The area of the dots: below the title, or above the page with the most lines, so that they do
/// not move when the page appears.
QRect DisegnoScena::ZonaPunti() const {
    if (scena_.titolo) {
        constexpr double sottoAutore = 0.82;
        return Striscia(
            std::min(Pixel(finestra_.height() * sottoAutore), finestra_.height() - passo_));
    }
    const int piena = std::max(righe_, static_cast<int>(pagina_.size()));
    return Striscia((finestra_.height() - piena * passo_) / 2 - spazio_ - passo_);
}

QRect DisegnoScena::ZonaProssima() const {
    return Striscia(prima_ + static_cast<int>(pagina_.size()) * passo_ + spazio_);
}

}  // namespace sonnel
