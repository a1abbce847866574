#pragma once

#include <QAbstractItemView>
#include <QLineEdit>
#include <QListView>
#include <QString>
#include <functional>

namespace sonnel {

/// The line beside a list of songs in which the user types what to find. Ctrl+F or "/" open it;
/// Escape closes it, and all lines are listed again.
class LineaCerca final : public QLineEdit {
  public:
    /// `cambiata` is called with each new text; with "" when the line is closed.
    LineaCerca(QWidget& finestra, QListView& lista, std::function<void(const QString&)> cambiata);

    void Apri();
    /// Lets "/" open it from this list.
    void Anche(QAbstractItemView& lista) { lista.installEventFilter(this); }
    /// The window calls it too, when it is hidden.
    void Chiudi();

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QListView& lista_;
    std::function<void(const QString&)> cambiata_;
};

}  // namespace sonnel
