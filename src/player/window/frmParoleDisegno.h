#pragma once

#include "player/Scena.h"
#include "settings/Config.h"
#include "song/InformazioniBrano.h"
#include "song/Timeline.h"

#include <QFont>
#include <QPainter>
#include <QPixmap>
#include <QRegion>
#include <QTextLayout>
#include <memory>
#include <vector>

namespace sonnel {

/// Lays out and paints what the singers' screen shows, in the largest letters at which every page
/// of the song fits with the dots above it and the next line below it.
class DisegnoScena {
  public:
    /// All of it must outlive this object.
    struct Parti {
        const Timeline& timeline;
        const InformazioniBrano& informazioni;
        const Config& config;
    };
    explicit DisegnoScena(const Parti& parti) : p_(parti) {}

    /// Prepares for another song or other settings; call `Adatta` afterwards.
    void Misura();
    /// Fits everything to the window's size in pixels.
    void Adatta(QSize finestra);
    /// Sets the scene. Returns the region of the window that must be repainted.
    [[nodiscard]] QRegion Mostra(const Scena& scena);
    /// Paints this part of the window.
    void Dipingi(QPainter& pittore, const QRegion& parte);

  private:
    /// The horizontal range of a character, left to right or right to left. A combining character
    /// has an empty range.
    struct Tratto {
        double inizio;
        double fine;
    };
    struct Riga {
        std::unique_ptr<QTextLayout> testo;
        double sinistra;
        double destra;
        std::vector<Tratto> caratteri;
    };
    [[nodiscard]] Riga Componi(const QString& testo) const;
    void ComponiPagina();
    [[nodiscard]] QRegion Cantato(double da, double a) const;
    void DisegnaPagina(double pixel);
    void Scrivi(QPainter& pittore, const std::vector<Riga>& righe, Colour colore,
                double sposta) const;
    void DisegnaTitolo(QPainter& pittore) const;
    void DisegnaPunti(QPainter& pittore) const;
    [[nodiscard]] QFont CheEntra(const QRect& zona, const QString& testo, int altezza) const;
    [[nodiscard]] QRect Striscia(int sopra) const { return {0, sopra, finestra_.width(), passo_}; }
    [[nodiscard]] QRect ZonaPunti() const;
    [[nodiscard]] QRect ZonaProssima() const;

    Parti p_;
    Scena scena_;
    QSize finestra_;
    QFont carattere_;
    double larga_ = 1;  ///< the widest line, at the size that is tried
    int righe_ = 1;     ///< most lines of a page
    int passo_ = 1;     ///< height of a line, in pixels like what follows
    int spazio_ = 0;    ///< between the page and what is above and below it
    int prima_ = 0;     ///< top of the first line
    std::vector<Riga> pagina_;
    QPixmap daCantare_;  ///< the page before it is sung; null until it is painted
    QPixmap cantata_;    ///< and after
    QPixmap prossima_;   ///< the next line
};

}  // namespace sonnel
