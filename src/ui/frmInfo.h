#pragma once

#include "platform/qt/FitScreen.h"

#include <QDialog>
#include <string>

namespace sonnel {

/// Shows what the loaded song's file says about it.
class frmInfo : public QDialog {
  public:
    explicit frmInfo(QWidget* parent = nullptr);

    /// The texts of the labels, with every "&" doubled.
    struct Testi {
        std::string titolo;
        std::string autore;
        std::string karaokeBy;
        std::string versione;
        std::string data;
    };
    void Mostra(const Testi& testi);
    void cmdChiudi_Click();

  private:
    QWidget* CreaCornici();

    WrappedText* lblTitolo;
    WrappedText* lblAutore;
    WrappedText* lblKaraokeBy;
    WrappedText* lblVersione;
    WrappedText* lblData;
};

}  // namespace sonnel
