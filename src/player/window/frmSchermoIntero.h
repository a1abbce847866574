#pragma once

#include <QAction>
#include <QDeadlineTimer>
#include <QMainWindow>
#include <QObject>
#include <QTimer>
#include <functional>

namespace sonnel {

/// The full screen of the main window: F11 and its action switch it, Escape leaves it. Menu bar and
/// toolbar are hidden and only shown while the mouse is at the upper edge.
class SchermoIntero final : public QObject {
  public:
    /// `adatta` fits the lyrics to the window's new size.
    SchermoIntero(QMainWindow& finestra, QWidget& striscia, std::function<void()> adatta);

    [[nodiscard]] bool Attivo() const { return attivo_; }
    /// Switches the full screen; for menus.
    [[nodiscard]] QAction* Azione() { return azione_; }
    /// Hides the window and gives it back the place and state from before the full screen.
    void Termina();

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void Passa(bool intero);
    void MostraBarre(bool mostra);
    void GuardaMouse();

    QMainWindow& finestra_;
    QWidget& striscia_;
    std::function<void()> adatta_;
    QAction* azione_;
    QAction* esci_;
    QTimer guardia_;
    QDeadlineTimer ritorno_{0};  ///< until then a window manager may restore the size from before
    bool attivo_ = false;
    bool barre_ = true;
    Qt::WindowStates statoPrima_;
    QRect ordinario_;  ///< without its frame
    QPoint postoPrima_;
    QSize misuraPrima_;
};

}  // namespace sonnel
