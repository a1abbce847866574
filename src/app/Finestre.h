#pragma once

#include "library/CaricaIndice.h"
#include "library/frmSelectSong.h"
#include "platform/CommonDialog.h"
#include "player/Programma.h"
#include "settings/Opzioni.h"
#include "ui/frmMessage.h"

#include <QWidget>
#include <memory>
#include <string>

namespace sonnel {

/// The windows that the main window's commands open, and what they share: the library. The song
/// selection window is made at its first use and then kept, hidden between uses.
class Finestre {
  public:
    /// Binds the commands of the program to these windows. The main window lies below them and
    /// takes no input while the library is rebuilt. All of it outlives them.
    Finestre(Programma& programma, CommonDialog& dialoghi, QWidget& principale);

  private:
    [[nodiscard]] frmSelectSong& Selezione();
    [[nodiscard]] std::string ScegliBrano();
    void AggiornaIndiceDaMenu();
    void MostraOpzioni();
    [[nodiscard]] PartiOpzioni Opzioni();

    Programma& programma_;
    CommonDialog& dialoghi_;
    QWidget& principale_;
    Libreria libreria_;
    frmMessage messaggio_;
    std::unique_ptr<frmSelectSong> selezione_;
};

}  // namespace sonnel
