#pragma once

#include "library/Brani.h"
#include "platform/EventiSistema.h"
#include "platform/MsgBox.h"
#include "platform/Orologio.h"
#include "platform/Registro.h"
#include "platform/Schermo.h"
#include "platform/Shell.h"
#include "platform/midi/MMControl.h"
#include "player/Riproduzione.h"
#include "settings/Config.h"
#include "song/InformazioniBrano.h"
#include "song/Timeline.h"

#include <string>

namespace sonnel {

/// What the whole program shares: its state and the doors it stands on. One record, built before
/// the main window and handed to every window by reference.
struct Programma {
    Registro& registro;
    MMControl& sequencer;
    MsgBox& msgBox;
    EventiSistema& eventi;
    const Orologio& orologio;
    const Schermo& schermo;
    Shell& shell;
    std::string CmdLine;             ///< the text after the program's name, as it was received
    std::string openDirPredefinita;  ///< karaoke directory when the settings name none
    SceltaBrano scelta;

    Config config;
    Timeline timeline;
    InformazioniBrano informazioni;
    TabellaBrani brani{};
};

}  // namespace sonnel
