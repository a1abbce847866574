#pragma once

#include <QAbstractItemView>
#include <QLineEdit>
#include <QListView>
#include <QString>
#include <functional>

namespace sonnel {

/// The line beside a list of songs in which the user types what to find. Ctrl+F or "/" open it;
/// Escape closes it, which finds everything again.
class LineaCerca final : public QLineEdit {
  public:
    /// `cambiata` gets each text; "" when the line is closed.
    LineaCerca(QWidget& finestra, QListView& lista, std::function<void(const QString&)> cambiata);

    void Apri();
    /// "/" opens it from this list too.
    void Anche(QAbstractItemView& lista) { lista.installEventFilter(this); }
    /// Also for the window to call when it is hidden.
    void Chiudi();

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QListView& lista_;
    std::function<void(const QString&)> cambiata_;
};

}  // namespace sonnel
