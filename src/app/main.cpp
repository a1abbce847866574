#include "app/Finestre.h"
#include "platform/Paths.h"
#include "platform/audio/AudioDriver.h"
#include "platform/audio/DefaultOutput.h"
#include "platform/audio/FluidSynthesizer.h"
#include "platform/audio/SoundFont.h"
#include "platform/files/ProfileFile.h"
#include "platform/qt/QtCommonDialog.h"
#include "platform/qt/QtRegistry.h"
#include "platform/qt/QtShell.h"
#include "platform/qt/QtSystem.h"
#include "player/window/OpzioniRiga.h"
#include "settings/Impostazioni.h"
#include "ui/Titoli.h"

#include <QApplication>
#include <QFileInfo>
#include <QTimer>
#include <iostream>
#include <system_error>

namespace {

using namespace sonnel;

/// Default karaoke directory; the user's data directory for the player is made on the way.
std::string DefaultKaraokeDirectory() {
    const QString program = QCoreApplication::applicationDirPath();
    const std::filesystem::path directory = DirectoryKaraoke(
        PathFromUtf8(program.toStdString()), QFileInfo(program).isWritable(), ProcessEnvironment);
    std::error_code ignored;  // the library reports a directory that is missing
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

}  // namespace

int main(int argc, char** argv) {
    if (const auto risposta = RispostaRiga({argv + 1, argv + argc})) {
        std::cout << *risposta << std::flush;
        return std::cout ? 0 : 1;
    }
    const QApplication application(argc, argv);
    QCoreApplication::setApplicationName("sonnel");
    QGuiApplication::setApplicationDisplayName("");
    QGuiApplication::setDesktopFileName("sonnel");

    const Result<OpzioniRiga> riga = LeggiOpzioni({argv + 1, argv + argc});
    if (!riga) {
        std::cerr << "sonnel: " << riga.error().text << "\n";
        return 2;
    }

    QtRegistry registro(UserSettingsFile(ProcessEnvironment),
                        MachineSettingsFile(ProcessEnvironment));
    const auto setting = [&registro](const char* name) {
        return LeggiImpostazione(registro, "Opzioni", name, "");
    };
    FluidSynthesizer synthesiser([&setting] {
        return FindSoundFont(setting("SoundFont"), ProcessEnvironment,
                             SoundFontDirectories(ProcessEnvironment));
    });
    const QtClock clock;
    DefaultOutput output(ChooseAudioDriver(setting("AudioDriver"), ProcessEnvironment), clock);
    QtTimer timer;
    MMControl sequencer(synthesiser, output, timer, clock);
    QtMsgBox msgBox;
    QtSystemEvents events;
    const QtScreen screen;
    QtShell shell;
    QtCommonDialog dialog;

    ProfileFile winIni(UserSettingsFile(ProcessEnvironment).replace_filename("win.ini"));

    Finestre finestre(
        {registro, sequencer, msgBox, events, clock, screen, shell, dialog},
        {.CmdLine = riga->brano,
         .eseguibile = PathFromUtf8(QCoreApplication::applicationFilePath().toStdString()),
         .openDirPredefinita = DefaultKaraokeDirectory(),
         .scriviWinIni = [&winIni](auto section, auto key,
                                   auto value) { WriteIni(winIni, section, key, value); },
         .canto = riga->canto});
    frmKaraoke& window = finestre.Principale();
    // Within the event loop, so that the window can be closed while it still comes up.
    QTimer start;
    start.setSingleShot(true);
    QObject::connect(&start, &QTimer::timeout, &window, &frmKaraoke::Form_Load);
    start.start(0);
    return QApplication::exec();
}
