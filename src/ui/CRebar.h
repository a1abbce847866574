#pragma once

#include <QColor>
#include <QPixmap>
#include <QPointer>
#include <QString>
#include <QToolBar>
#include <QVariant>
#include <QWidget>
#include <cstdint>
#include <optional>
#include <vector>

namespace sonnel {

/// The toolbar band host of a window: makes toolbars flat, and holds bands, each with one child
/// window, in a strip at the window's top.
class CRebar {
  public:
    /// Toolbar styles that TBMakeFlat adds, kept in the toolbar's property "tbStyle".
    static constexpr std::uint32_t StileFlat = 0x800;
    static constexpr std::uint32_t StileList = 0x1000;
    static constexpr std::uint32_t StileTrasparente = 0x8000;
    static constexpr std::uint32_t StileSenzaDivisore = 0x40;
    /// Band styles: child edge, fixed bitmap, gripper always and 0x200; the second one also starts
    /// a new row.
    static constexpr std::uint32_t StileBanda = 0x2A4;
    static constexpr std::uint32_t StileBandaACapo = 0x2A5;

    /// How much narrower than its window the strip is, in pixels.
    static constexpr int Margine = 8;

    CRebar() = default;
    ~CRebar() = default;
    CRebar(const CRebar&) = delete;
    CRebar& operator=(const CRebar&) = delete;

    /// Makes a toolbar flat; with `tbList` texts are beside the images.
    static void TBMakeFlat(QToolBar& tb, bool tbList);
    /// Appends a band. `childWin` may be null. With `newRow` 1 the band stays in the row of the
    /// previous one. The child is at least as wide as it is now, or `mWidth` times the twips of a
    /// pixel when that is given and not zero (pixels).
    void AddBands(const QString& bandText, std::int16_t bandName, QWidget* childWin,
                  std::int32_t newRow, std::optional<double> mWidth = std::nullopt);
    /// Id of the band at a zero-based position; an invalid variant when the argument is no number
    /// or names no band.
    [[nodiscard]] QVariant GetBandId(const QVariant& id) const;
    /// Sets every band to the system's colours.
    void SetBandColors();
    /// Makes the parent the owner of the bands' windows again and deletes the strip. Handle() is
    /// unchanged.
    void DestroyRebar();
    [[nodiscard]] QVariant GetRebarWindow() const { return static_cast<qint32>(handle_); }
    void RemoveBands(int bandPosition);
    /// Sizes the strip to the width of a window, less the margin.
    void Resize(const QWidget& frm);
    /// Pixels; nothing while there is no strip.
    void Move(int left, int top, int width, int height);
    [[nodiscard]] std::int32_t hwnd() const { return handle_; }
    /// Creates the strip; true when there is one afterwards.
    QVariant Create();
    void Parent(QWidget* rebarWindow) { parent_ = rebarWindow; }
    [[nodiscard]] QWidget* Parent() const { return parent_; }
    /// Background of the bands added from now on.
    void ImageForRebar(const QPixmap& img) { image_ = img; }
    /// The window that gets a layout request when the strip's height changes.
    void SetMainParent(QWidget& obj) { notified_ = &obj; }

  private:
    struct Banda {
        QString testo;
        std::int16_t id = 0;
        std::uint32_t stile = 0;
        QColor primoPiano;
        QColor sfondo;
        QPixmap immagine;
        QPointer<QWidget> figlio;
        QPointer<QWidget> cornice;
        int larghezzaMinima = 0;  ///< pixels
        int altezzaMinima = 0;    ///< pixels
    };

    void Disponi();
    void Colora(Banda& banda) const;

    std::int32_t handle_ = 0;
    QPointer<QWidget> parent_;
    QPointer<QWidget> strip_;
    QPointer<QWidget> notified_;
    QPixmap image_;
    std::vector<Banda> bande_;
};

}  // namespace sonnel
