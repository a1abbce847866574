#pragma once

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QSvgRenderer>
#include <QTimer>
#include <functional>

namespace sonnel {

/// The splash at start-up, which closes itself after five seconds, and the About box, which waits
/// for its button.
class frmSplash : public QDialog {
  public:
    enum class Modo { Avvio, Informazioni };
    explicit frmSplash(Modo modo, QWidget* parent = nullptr);

    void cmdOk_Click();
    void tmrClose_Timer();

    /// Called when the window has closed and can be deleted.
    std::function<void()> onUnload;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void done(int result) override;
    /// Escape and the close button of the frame close the About box, but not the start-up splash.
    void reject() override;

  private:
    QSvgRenderer imgLogo;
    QLabel* lblProductName;
    QLabel* lblVersion;
    QLabel* lblPlatform;
    QPushButton* cmdOk;
    QTimer tmrClose;
};

}  // namespace sonnel
