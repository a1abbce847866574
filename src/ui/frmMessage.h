#pragma once

#include "platform/Screen.h"
#include "ui/basMessage.h"

#include <QDialog>
#include <QLabel>
#include <QPushButton>

namespace sonnel {

/// Asks the user to wait while a long operation runs. It is painted when MostraMessaggio
/// returns, and lies over the window that is in use then.
class frmMessage final : public QDialog, public FinestraMessaggio {
  public:
    explicit frmMessage(const Screen& schermo);

    void MostraMessaggio(const std::string& testo, bool mostraAnnulla) override;
    void ChiudiMessaggio() override;
    [[nodiscard]] bool Annullato() const override { return annullato_; }

    void cmdCancel_Click();
    /// Escape and the frame close nothing: they are Cancel when there is one.
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
