#pragma once

#include "library/Brani.h"
#include "platform/EventiSistema.h"
#include "platform/MsgBox.h"
#include "platform/Orologio.h"
#include "platform/Registro.h"
#include "platform/Schermo.h"
#include "platform/Shell.h"
#include "platform/midi/MMControl.h"
#include "player/AssociaLyk.h"
#include "player/Riproduzione.h"
#include "settings/Config.h"
#include "song/InformazioniBrano.h"
#include "song/Timeline.h"

#include <filesystem>
#include <functional>
#include <random>
#include <string>

namespace sonnel {

/// What start-up and the main window's commands ask of the library and of the options.
struct Agganci {
    std::function<void()> CaricaIndice = [] {};
    std::function<void()> RileggiDB = [] {};
    std::function<void()> SincronizzaDB = [] {};
    std::function<void()> caricaSelezione = [] {};  ///< makes the selection window, unseen
    std::function<void()> mostraOpzioni = [] {};    ///< returns when the options are closed
};

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
    std::string CmdLine;  ///< the program's arguments as they were received, blanks between them
    ScriviWinIni scriviWinIni = [](auto, auto, auto) {};
    std::filesystem::path eseguibile{};  ///< the program's own file
    std::string openDirPredefinita;      ///< karaoke directory when the settings name none
    SceltaBrano scelta{};
    Agganci agganci{};

    Config config{};
    Timeline timeline{};
    InformazioniBrano informazioni{};
    TabellaBrani brani{};
    std::mt19937 caso{};  ///< seeded at start-up
};

}  // namespace sonnel
