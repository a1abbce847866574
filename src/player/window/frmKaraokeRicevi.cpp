// Songs that another start of the program hands to the main window.

#include "platform/qt/BringToFront.h"
#include "player/window/RigaComando.h"
#include "player/window/frmKaraoke.h"

#include <QApplication>
#include <utility>

namespace sonnel {

void frmKaraoke::RiceviBrano(const std::string& percorso) {
    if (fase_ != Fase::Pronta) {
        ricevuti_.push_back(percorso);
        return;
    }
    const bool occupata = riproduzione_.InRiproduzione() || !isEnabled() ||
                          QApplication::activeModalWidget() != nullptr;
    if (occupata && !percorso.empty()) {
        turni_->Accoda({BranoNominato(percorso)});
        return;
    }
    BringToFront(*this);
    if (!percorso.empty()) {
        riproduzione_.FileLoad(BranoNominato(percorso));
    }
}

void frmKaraoke::FineAvvio() {
    if (fase_ != Fase::Avvio) {
        return;  // closed in the meantime
    }
    fase_ = Fase::Pronta;
    for (const std::string& percorso : std::exchange(ricevuti_, {})) {
        RiceviBrano(percorso);
    }
}

}  // namespace sonnel
