#pragma once

#include "player/Cantante.h"

#include <QAction>
#include <QMenu>
#include <QObject>
#include <QWidget>
#include <functional>
#include <vector>

namespace sonnel {

/// The singer's commands in the main window: the menu that a right click, the Menu key or Shift+F10
/// opens, their shortcuts, and Space, which plays and pauses.
class MenuCanto final : public QObject {
  public:
    struct Parti {
        Cantante& cantante;
        std::function<void()> cambiato;         ///< a command has been carried out
        std::function<void()> suonaOPausa;      ///< Space
        std::vector<const QWidget*> conSpazio;  ///< what has the focus when Space is pressed
        QList<QAction*> altre;                  ///< commands of others, at the end of the menu
    };
    /// It belongs to the window.
    MenuCanto(QWidget& finestra, Parti parti);

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void CreaVoci();
    void Aggiorna();

    QWidget& finestra_;
    Parti p_;
    QMenu menu_;
    QMenu* melodia_ = nullptr;
    QList<QAction*> melodie_;  ///< by melody
    QAction* estensione_ = nullptr;
};

}  // namespace sonnel
