#include "player/window/frmParole.h"

#include "platform/qt/FitScreen.h"
#include "platform/qt/QtColour.h"
#include "settings/Impostazioni.h"
#include "settings/TestoNumero.h"

#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace sonnel {
namespace {

constexpr const char* Sezione = "LyricsWindow";
constexpr int Battito = 16;        // ms while the song plays
constexpr int BattitoFermo = 200;  // ms while it does not
constexpr double Margine = 0.92;   // of the width and the height that the words may take
constexpr double Interlinea = 1.25;
constexpr int RigheInPiu = 2;  // the dots above the page, the next line below it
constexpr QSize MisuraUsuale(960, 540);
constexpr double Ombra = 0.04;  // of the letters' height
constexpr double Sbiadito = 0.45;

QString Testo(const std::string& testo) {
    return QString::fromStdString(testo);
}

/// A text of the song information, whose "&" are doubled for labels.
QString Semplice(const std::string& testo) {
    return Testo(testo).replace("&&", "&");
}

}  // namespace

/// A part of the scene that the user can switch off.
struct FinestraParole::Interruttore {
    const char* testo;
    const char* chiave;
    bool MostraScena::*parte;
};

FinestraParole::FinestraParole(Parti parti)
    : p_(std::move(parti)), azione_(new QAction("&Lyrics window", this)) {
    setWindowTitle("Sonnel - Lyrics");
    setWindowIcon(QIcon(":/sonnel.svg"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setWindowFlag(Qt::WindowDoesNotAcceptFocus);
    setAccessibleName("Lyrics for the singers");
    azione_->setCheckable(true);
    azione_->setShortcut(Qt::Key_F12);
    connect(azione_, &QAction::toggled, this, &FinestraParole::Apri);
    connect(&battito_, &QTimer::timeout, this, &FinestraParole::Avanza);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, [this](const QScreen* screen) {
        if (isVisible() && isFullScreen() && this->screen() == screen) {
            showNormal();
            resize(MisuraUsuale.boundedTo(RoomOnScreen(*this)));
        }
    });
    CreaMenu();
}

void FinestraParole::CreaMenu() {
    static constexpr std::array<Interruttore, 4> interruttori{
        Interruttore{"&Flowing colour", "Flow", &MostraScena::flusso},
        Interruttore{"&Next line", "NextLine", &MostraScena::prossima},
        Interruttore{"&Count-in", "CountIn", &MostraScena::punti},
        Interruttore{"&Title before the song", "Title", &MostraScena::titolo}};
    for (const Interruttore& uno : interruttori) {
        mostra_.*uno.parte = LeggiImpostazione(p_.registro, Sezione, uno.chiave, "-1") != "0";
        QAction* voce = menu_.addAction(uno.testo);
        voce->setCheckable(true);
        voce->setChecked(mostra_.*uno.parte);
        connect(voce, &QAction::toggled, this, [this, &uno](bool acceso) {
            mostra_.*uno.parte = acceso;
            SalvaImpostazione(p_.registro, Sezione, uno.chiave, TestoLogico(acceso));
        });
    }
    menu_.addSeparator();
    menu_.addAction("Full &screen", this,
                    [this] { setWindowState(windowState() ^ Qt::WindowFullScreen); });
    menu_.addAction("C&lose", this, &QWidget::close);
}

void FinestraParole::Apri(bool apri) {
    if (!apri) {
        battito_.stop();
        hide();
        return;
    }
    const QList<QScreen*> schermi = QGuiApplication::screens();
    const auto altro = std::find_if(schermi.begin(), schermi.end(), [this](const QScreen* uno) {
        return uno != p_.principale->screen();
    });
    Rinnova();
    if (altro != schermi.end()) {
        setGeometry((*altro)->geometry());
        showFullScreen();
    } else {
        resize(MisuraUsuale.boundedTo(RoomOnScreen(*this)));
        show();
    }
    battito_.start(Battito);
}

void FinestraParole::closeEvent(QCloseEvent* event) {
    QWidget::closeEvent(event);
    azione_->setChecked(false);
}

void FinestraParole::Rinnova() {
    if (!azione_->isChecked()) {
        return;
    }
    ScegliCarattere();
    scena_ = ScenaA(p_.timeline, p_.tempo(), mostra_);
    DisegnaPagina();
    update();
}

/// Shows the moment of the song; paints when something has changed.
void FinestraParole::Avanza() {
    const int intervallo = p_.suona() ? Battito : BattitoFermo;
    if (battito_.interval() != intervallo) {
        battito_.setInterval(intervallo);
    }
    Scena adesso = ScenaA(p_.timeline, p_.tempo(), mostra_);
    if (adesso == scena_) {
        return;
    }
    const bool altra = adesso.righe != scena_.righe || adesso.prossima != scena_.prossima ||
                       adesso.punti != scena_.punti || adesso.titolo != scena_.titolo;
    const double prima = std::exchange(scena_, std::move(adesso)).cantati;
    if (altra) {
        DisegnaPagina();
        update();
    } else {
        AggiornaRighe(std::min(prima, scena_.cantati), std::max(prima, scena_.cantati));
    }
}

/// Paints the lines anew that hold these characters of the page.
void FinestraParole::AggiornaRighe(double da, double a) {
    double inizio = 0;
    for (std::size_t i = 0; i < scena_.righe.size(); ++i) {
        const double fine = inizio + static_cast<double>(Testo(scena_.righe[i]).toUcs4().size()) +
                            static_cast<double>(FineRiga.size());
        if (da <= fine && a >= inizio) {
            const double sopra = prima_ + static_cast<double>(i) * passo_;
            update(QRectF(0, sopra, width(), passo_).toAlignedRect());
        }
        inizio = fine;
    }
}

/// The largest letters at which every page of the song fits, with the lines around it.
void FinestraParole::ScegliCarattere() {
    carattere_ = QFont(Testo(p_.config.FontName));
    carattere_.setBold(p_.config.FontBold);
    constexpr int provato = 100;  // pixels
    carattere_.setPixelSize(provato);
    const QFontMetricsF misure(carattere_);
    double larga = 1;
    std::size_t righe = 1;
    for (std::int16_t i = 1; i <= p_.timeline.NumEventi(); ++i) {
        const Evento& evento = p_.timeline.Eventi(i);
        if (evento.Tipo != TipoEvento::Pagina) {
            continue;
        }
        const auto pagina = RigheDiPagina(evento.Testo);
        righe = std::max(righe, pagina.size());
        for (const std::string& riga : pagina) {
            larga = std::max(larga, misure.horizontalAdvance(Testo(riga)));
        }
    }
    const double perLarghezza = provato * width() * Margine / larga;
    const double perAltezza =
        height() * Margine / (static_cast<double>(righe + RigheInPiu) * Interlinea);
    carattere_.setPixelSize(std::max(1, static_cast<int>(std::min(perLarghezza, perAltezza))));
    passo_ = carattere_.pixelSize() * Interlinea;
}

double FinestraParole::Larghezza(const QString& testo, double caratteri) const {
    const QFontMetricsF misure(carattere_);
    const auto tutti = testo.toUcs4();
    const auto interi = static_cast<qsizetype>(
        std::clamp(std::floor(caratteri), 0.0, static_cast<double>(tutti.size())));
    const auto parte = [&](qsizetype quanti) {
        return misure.horizontalAdvance(
            QString::fromUcs4(reinterpret_cast<const char32_t*>(tutti.constData()), quanti));
    };
    const double fino = parte(interi);
    return interi < tutti.size()
               ? fino + (caratteri - static_cast<double>(interi)) * (parte(interi + 1) - fino)
               : fino;
}

QPixmap FinestraParole::Pagina(Colour colore, bool ombra) const {
    QPixmap pagina(size() * devicePixelRatioF());
    pagina.setDevicePixelRatio(devicePixelRatioF());
    pagina.fill(Qt::transparent);
    QPainter pittore(&pagina);
    pittore.setFont(carattere_);
    const QFontMetricsF misure(carattere_);
    for (std::size_t i = 0; i < scena_.righe.size(); ++i) {
        const QString riga = Testo(scena_.righe[i]);
        const QPointF base((width() - misure.horizontalAdvance(riga)) / 2,
                           prima_ + static_cast<double>(i) * passo_ + misure.ascent());
        if (ombra) {
            const double sposta = carattere_.pixelSize() * Ombra;
            pittore.setPen(ToQColor(p_.config.ColoreOmbra));
            pittore.drawText(base + QPointF(sposta, sposta), riga);
        }
        pittore.setPen(ToQColor(colore));
        pittore.drawText(base, riga);
    }
    return pagina;
}

void FinestraParole::DisegnaPagina() {
    prima_ = (height() - static_cast<double>(scena_.righe.size()) * passo_) / 2;
    daCantare_ = Pagina(p_.config.ColoreTesto, p_.config.Ombra);
    cantata_ = Pagina(p_.config.ColoreSelezione, false);
}

void FinestraParole::DisegnaCantati(QPainter& pittore) const {
    const QFontMetricsF misure(carattere_);
    double resto = scena_.cantati;
    for (std::size_t i = 0; i < scena_.righe.size() && resto > 0; ++i) {
        const QString riga = Testo(scena_.righe[i]);
        const double sinistra = (width() - misure.horizontalAdvance(riga)) / 2;
        const QRectF parte(sinistra, prima_ + static_cast<double>(i) * passo_,
                           Larghezza(riga, resto), passo_);
        pittore.setClipRect(parte);
        pittore.drawPixmap(0, 0, cantata_);
        resto -= static_cast<double>(riga.toUcs4().size()) + static_cast<double>(FineRiga.size());
    }
    pittore.setClipping(false);
}

void FinestraParole::DisegnaTitolo(QPainter& pittore) const {
    const QRectF sopra(0, 0, width(), height() / 2.0);
    pittore.drawText(sopra, Qt::AlignHCenter | Qt::AlignBottom | Qt::TextWordWrap,
                     Semplice(p_.informazioni.Titolo));
    QFont piccolo = carattere_;
    piccolo.setPixelSize(std::max(1, carattere_.pixelSize() / 2));
    pittore.setFont(piccolo);
    pittore.drawText(sopra.translated(0, height() / 2.0),
                     Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap,
                     Semplice(p_.informazioni.Autore));
}

void FinestraParole::paintEvent(QPaintEvent* /*event*/) {
    QPainter pittore(this);
    pittore.setRenderHint(QPainter::Antialiasing);
    pittore.fillRect(rect(), ToQColor(p_.config.ColoreSfondo));
    pittore.setFont(carattere_);
    pittore.setPen(ToQColor(p_.config.ColoreTesto));
    if (scena_.titolo) {
        DisegnaTitolo(pittore);
        pittore.setFont(carattere_);
    } else if (!scena_.righe.empty()) {
        pittore.drawPixmap(0, 0, daCantare_);
        DisegnaCantati(pittore);
    }
    if (!scena_.prossima.empty()) {
        pittore.setOpacity(Sbiadito);
        const double sotto = prima_ + static_cast<double>(scena_.righe.size()) * passo_;
        pittore.drawText(QRectF(0, sotto, width(), passo_), Qt::AlignCenter,
                         Testo(scena_.prossima));
        pittore.setOpacity(1);
    }
    const double raggio = passo_ / 8;
    for (int i = 0; i < scena_.punti; ++i) {
        pittore.setBrush(ToQColor(p_.config.ColoreSelezione));
        pittore.setPen(Qt::NoPen);
        const double x = width() / 2.0 + (i - 1) * 5 * raggio;
        pittore.drawEllipse(
            QPointF(x, std::max(2 * raggio, std::min(prima_, height() / 2.0) - passo_ / 2)), raggio,
            raggio);
    }
}

void FinestraParole::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Rinnova();
}

void FinestraParole::contextMenuEvent(QContextMenuEvent* event) {
    menu_.popup(event->globalPos());
}

void FinestraParole::mouseDoubleClickEvent(QMouseEvent* /*event*/) {
    setWindowState(windowState() ^ Qt::WindowFullScreen);
}

}  // namespace sonnel
