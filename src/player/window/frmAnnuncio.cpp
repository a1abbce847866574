#include "player/window/frmAnnuncio.h"

#include "platform/qt/QtColour.h"

#include <QEvent>
#include <algorithm>
#include <array>
#include <utility>

namespace sonnel {
namespace {

constexpr double Margine = 0.05;      // of the area's width, at either side
constexpr double Riempito = 0.72;     // part of a line's height that its letters fill
constexpr double MinimaParte = 0.45;  // how far letters shrink before a text is cut
constexpr double Sbiadito = 0.85;

/// A line of the announcement; its place and height as parts of the area's height.
struct Riga {
    double sopra;
    double alta;
    QString testo;
    Colour colore;
    double forza = 1;  ///< opacity
};

void DisegnaRiga(QPainter& pittore, const QRectF& area, const Riga& riga, QFont carattere) {
    const QRectF posto(area.left() + area.width() * Margine,
                       area.top() + area.height() * riga.sopra, area.width() * (1 - 2 * Margine),
                       area.height() * riga.alta);
    const double voluto = posto.height() * Riempito;
    carattere.setPixelSize(std::max(1, static_cast<int>(voluto)));
    while (carattere.pixelSize() > std::max(1.0, voluto * MinimaParte) &&
           QFontMetricsF(carattere).horizontalAdvance(riga.testo) > posto.width()) {
        carattere.setPixelSize(carattere.pixelSize() - 1);
    }
    pittore.setFont(carattere);
    pittore.setPen(ToQColor(riga.colore));
    pittore.setOpacity(riga.forza);
    pittore.drawText(
        posto, Qt::AlignCenter,
        QFontMetricsF(carattere).elidedText(riga.testo, Qt::ElideRight, posto.width()));
}

QString Testo(const std::string& testo) {
    return QString::fromStdString(testo);
}

}  // namespace

void DisegnaAnnuncio(QPainter& pittore, const QRectF& area, const Annuncio& annuncio,
                     const Config& config) {
    const auto seguente = [&annuncio](std::size_t quale) {
        return quale < annuncio.seguenti.size() ? Testo(annuncio.seguenti[quale]) : QString();
    };
    const Colour testo = config.ColoreTesto;
    const Colour vivo = config.ColoreSelezione;
    const QString attesa =
        annuncio.secondi > 0 ? QString("Begins in %1 s").arg(annuncio.secondi) : QString();
    const std::array righe{Riga{0.05, 0.10, "Next song", testo, Sbiadito},
                           Riga{0.16, 0.20, Testo(annuncio.turno.titolo), testo},
                           Riga{0.35, 0.11, Testo(annuncio.turno.autore), testo, Sbiadito},
                           Riga{0.47, 0.19, Testo(annuncio.turno.cantante), vivo},
                           Riga{0.66, 0.10, attesa, testo},
                           Riga{0.80, 0.08, seguente(0), testo, Sbiadito},
                           Riga{0.88, 0.08, seguente(1), testo, Sbiadito}};
    QFont carattere(Testo(config.FontName));
    carattere.setBold(config.FontBold);
    pittore.save();
    pittore.fillRect(area, ToQColor(config.ColoreSfondo));
    for (const Riga& riga : righe) {
        DisegnaRiga(pittore, area, riga, carattere);
    }
    pittore.restore();
}

CartaAnnuncio::CartaAnnuncio(QWidget& area, QWidget& barra, const Config& config,
                             std::function<const std::optional<Annuncio>&()> annuncio)
    : QWidget(&area), barra_(barra), config_(config), annuncio_(std::move(annuncio)) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName("The next song");
    hide();
    barra.raise();
    area.installEventFilter(this);
}

void CartaAnnuncio::Aggiorna(bool mostra) {
    setGeometry(parentWidget()->rect());
    setVisible(mostra && annuncio_());
    update();
}

void CartaAnnuncio::paintEvent(QPaintEvent* /*event*/) {
    if (const auto& annuncio = annuncio_()) {
        QPainter pittore(this);
        pittore.fillRect(rect(), ToQColor(config_.ColoreSfondo));
        const int sopra = barra_.isVisible() ? barra_.geometry().bottom() + 1 : 0;
        DisegnaAnnuncio(pittore, rect().adjusted(0, sopra, 0, 0), *annuncio, config_);
    }
}

bool CartaAnnuncio::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::Resize) {
        setGeometry(parentWidget()->rect());
    }
    return QWidget::eventFilter(object, event);
}

}  // namespace sonnel
