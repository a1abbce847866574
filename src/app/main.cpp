#include "app/Finestre.h"
#include "platform/Environment.h"
#include "platform/Paths.h"
#include "platform/ScopeExit.h"
#include "platform/audio/AudioDriver.h"
#include "platform/audio/DefaultOutput.h"
#include "platform/audio/FluidSynthesizer.h"
#include "platform/audio/SoundFont.h"
#include "platform/files/ProfileFile.h"
#include "platform/qt/OnePlayer.h"
#include "platform/qt/QtCommonDialog.h"
#include "platform/qt/QtRegistry.h"
#include "platform/qt/QtShell.h"
#include "platform/qt/QtSystem.h"
#include "player/window/OpzioniRiga.h"
#include "player/window/RigaComando.h"
#include "settings/Impostazioni.h"
#include "ui/Titoli.h"

#include <QApplication>
#include <QFileInfo>
#include <QTimer>
#include <iostream>
#include <optional>
#include <system_error>
#include <utility>

namespace {

using namespace sonnel;

/// Default karaoke directory; the player's data directory of the user is created if missing.
std::string DefaultKaraokeDirectory() {
    const QString program = QCoreApplication::applicationDirPath();
    const std::filesystem::path directory = DirectoryKaraoke(
        PathFromUtf8(program.toStdString()), QFileInfo(program).isWritable(), ProcessEnvironment);
    std::error_code ignored;  // if the directory is missing, the library reports it
    std::filesystem::create_directories(directory.parent_path().parent_path(), ignored);
    return Utf8FromPath(directory);
}

/// Writes a key of a file and makes its directory when it is missing. A failure is ignored.
void WriteIni(ProfileFile& file, std::string_view section, std::string_view key,
              std::string_view value) {
    if (!file.Path().is_absolute()) {
        return;  // this user has no configuration directory
    }
    std::error_code ignored;
    std::filesystem::create_directories(file.Path().parent_path(), ignored);
    (void)file.Set(section, key, value);
}

/// Parses the command line; on an error prints a sentence and returns nothing.
std::optional<OpzioniRiga> Options(int argc, char** argv) {
    Result<OpzioniRiga> riga = LeggiOpzioni({argv + 1, argv + argc});
    if (!riga) {
        std::cerr << "sonnel: " << riga.error().text << "\n";
        return std::nullopt;
    }
    return *std::move(riga);
}

/// Whether a running player has taken the song on this command line. If none is running, this
/// player will take songs from later starts.
bool HandedOver(OnePlayer& player, const OpzioniRiga& riga, const std::string& activationToken) {
    if (!riga.uno) {
        return player.HandOver(std::nullopt);
    }
    if (!player.HasPlace()) {
        std::cerr << "sonnel: --one finds no other player: the directory "
                  << Utf8FromPath(player.Directory()) << " cannot be made.\n";
    }
    return player.HandOver(HandedSong{PercorsoAssoluto(riga.brano), activationToken});
}

/// Lets the main window receive songs from later starts while the result exists.
[[nodiscard]] auto Connect(OnePlayer& player, frmKaraoke& window) {
    player.accepts = [&window] { return window.AccettaBrani(); };
    player.onSong = [&window](const std::string& path) { window.RiceviBrano(path); };
    return ScopeExit([&player] { player.accepts = nullptr; });  // without it no song is taken
}

/// Builds the real platform, opens the windows and runs the event loop.
int Run(OnePlayer& player, const OpzioniRiga& riga) {
    QtRegistry registro(UserSettingsFile(ProcessEnvironment),
                        MachineSettingsFile(ProcessEnvironment));
    const auto setting = [&registro](const char* name) {
        return LeggiImpostazione(registro, "Opzioni", name, "");
    };
    FluidSynthesizer synthesizer([&setting] {
        return FindSoundFont(setting("SoundFont"), ProcessEnvironment,
                             SoundFontDirectories(ProcessEnvironment));
    });
    const QtClock clock;
    DefaultOutput output(ChooseAudioDriver(setting("AudioDriver"), ProcessEnvironment), clock);
    QtTimer timer;
    MMControl sequencer(synthesizer, output, timer, clock);
    QtMsgBox msgBox;
    QtSystemEvents events;
    const QtScreen screen;
    QtShell shell;
    QtCommonDialog dialog;

    ProfileFile winIni(UserSettingsFile(ProcessEnvironment).replace_filename("win.ini"));

    Finestre finestre(
        {registro, sequencer, msgBox, events, clock, screen, shell, dialog},
        {.CmdLine = riga.brano,
         .eseguibile = PathFromUtf8(QCoreApplication::applicationFilePath().toStdString()),
         .openDirPredefinita = DefaultKaraokeDirectory(),
         .scriviWinIni = [&winIni](auto section, auto key,
                                   auto value) { WriteIni(winIni, section, key, value); },
         .canto = riga.canto},
        UserDataDirectory(ProcessEnvironment) / "sonnel" / "queue");
    frmKaraoke& window = finestre.Principale();
    const auto songs = Connect(player, window);
    // Within the event loop, so that the window can be closed during the start-up.
    QTimer start;
    start.setSingleShot(true);
    QObject::connect(&start, &QTimer::timeout, &window, &frmKaraoke::Form_Load);
    start.start(0);
    return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
    if (const auto risposta = RispostaRiga({argv + 1, argv + argc})) {
        std::cout << *risposta << std::flush;
        return std::cout ? 0 : 1;
    }
    // Parsed before Qt starts, so that help works without a display, and again below without Qt's
    // own arguments.
    if (!Options(argc, argv)) {
        return 2;
    }
    const std::string activationToken = ActivationToken(ProcessEnvironment);
    const QApplication application(argc, argv);
    QCoreApplication::setApplicationName("sonnel");
    QGuiApplication::setApplicationDisplayName("");
    QGuiApplication::setDesktopFileName("sonnel");

    const std::optional<OpzioniRiga> riga = Options(argc, argv);
    if (!riga) {
        return 2;
    }
    OnePlayer player(MeetingPlace(ProcessEnvironment));
    return HandedOver(player, *riga, activationToken) ? 0 : Run(player, *riga);
}
