#pragma once

#include "player/Cantante.h"

#include <QAction>
#include <QMenu>
#include <QObject>
#include <QWidget>
#include <functional>
#include <vector>

namespace sonnel {

/// The singer's commands in the main window with their shortcuts: a context menu (right click, Menu
/// key, Shift+F10), and Space, which plays and pauses.
class MenuCanto final : public QObject {
  public:
    struct Parti {
        Cantante& cantante;
        std::function<void()> cambiato;         ///< called after each command
        std::function<void()> suonaOPausa;      ///< Space
        std::vector<const QWidget*> conSpazio;  ///< Space works while one of these has the focus
        QList<QAction*> altre;                  ///< further commands for the end of the menu
    };
    /// `finestra` owns the new object.
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
