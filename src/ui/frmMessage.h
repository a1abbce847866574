#pragma once

#include "platform/Screen.h"
#include "ui/basMessage.h"

#include <QDialog>
#include <QLabel>
#include <QPushButton>

namespace sonnel {

/// Asks the user to wait while a long operation runs. It is already painted when MostraMessaggio
/// returns, and lies over the active window.
class frmMessage final : public QDialog, public FinestraMessaggio {
  public:
    explicit frmMessage(const Screen& schermo);

    void MostraMessaggio(const std::string& testo, bool mostraAnnulla) override;
    void ChiudiMessaggio() override;
    [[nodiscard]] bool Annullato() const override { return annullato_; }

    void cmdCancel_Click();
    /// Escape and the close button of the frame do not close it: they act as Cancel if there is
    /// one.
    void reject() override;

  private:
    void Carica();
    void Centra(int altezza);

    const Screen& schermo_;
    QLabel* pnlMessage;
    QPushButton* cmdCancel;
    bool annullato_ = false;
};

}  // namespace sonnel
