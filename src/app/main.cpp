#include "platform/FileRegistro.h"
#include "platform/Files.h"
#include "platform/audio/AudioDriver.h"
#include "platform/audio/FluidSintetizzatore.h"
#include "platform/audio/SoundFont.h"
#include "platform/audio/UscitaPredefinita.h"
#include "platform/qt/QtShell.h"
#include "platform/qt/QtSystem.h"
#include "player/Programma.h"
#include "player/frmKaraoke.h"
#include "settings/DirectoryKaraoke.h"
#include "settings/Impostazioni.h"
#include "ui/Titoli.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <system_error>

namespace {

using namespace sonnel;

/// The text after the program's name, byte by byte; the window system has taken its own options.
std::string CommandLine(int argc, char** argv) {
    std::string line;
    for (int i = 1; i < argc; ++i) {
        line += (i > 1 ? " " : "") + std::string(argv[i]);
    }
    return line;
}

/// Default karaoke directory; the user's data directory for the player is made on the way.
std::string DefaultKaraokeDirectory() {
    const QString program = QCoreApplication::applicationDirPath();
    const std::filesystem::path directory = DirectoryKaraoke(
        PathFromUtf8(program.toStdString()), QFileInfo(program).isWritable(), ProcessEnvironment);
    std::error_code ignored;  // a directory that cannot be made is reported by who needs it
    std::filesystem::create_directories(directory.parent_path().parent_path(), ignored);
    return Utf8FromPath(directory);
}

/// Lets the user choose a song's LYK file.
std::string ChooseSong(const Config& config) {
    const QString file = QFileDialog::getOpenFileName(QApplication::activeWindow(), "Open",
                                                      QString::fromStdString(config.OpenDir),
                                                      "Karaoke songs (*.lyk *.LYK);;All files (*)");
    const QFileInfo info(file);
    return file.isEmpty() ? "" : "F=" + (info.path() + "/" + info.completeBaseName()).toStdString();
}

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QCoreApplication::setApplicationName("sonnel");
    QGuiApplication::setApplicationDisplayName("");
    QGuiApplication::setDesktopFileName("sonnel");

    FileRegistro registro(UserSettingsFile(ProcessEnvironment),
                          MachineSettingsFile(ProcessEnvironment));
    const auto setting = [&registro](const char* name) {
        return LeggiImpostazione(registro, "Opzioni", name, "");
    };
    FluidSintetizzatore synthesiser([&setting] {
        return FindSoundFont(setting("SoundFont"), ProcessEnvironment,
                             SoundFontDirectories(ProcessEnvironment));
    });
    UscitaPredefinita output(ChooseAudioDriver(setting("AudioDriver"), ProcessEnvironment));
    QtTemporizzatore timer;
    const QtOrologio clock;
    MMControl sequencer(synthesiser, output, timer, clock);
    QtMsgBox msgBox;
    QtEventiSistema events;
    const QtSchermo screen;
    QtShell shell;

    Programma programma{.registro = registro,
                        .sequencer = sequencer,
                        .msgBox = msgBox,
                        .eventi = events,
                        .orologio = clock,
                        .schermo = screen,
                        .shell = shell,
                        .CmdLine = CommandLine(argc, argv),
                        .openDirPredefinita = DefaultKaraokeDirectory(),
                        .scelta = {},
                        .config = {},
                        .timeline = {},
                        .informazioni = {}};
    programma.scelta.scegli = [&programma] { return ChooseSong(programma.config); };
    programma.scelta.nomeFile = [](std::int32_t) { return std::string(); };

    frmKaraoke window(programma);
    window.Form_Load();
    return QApplication::exec();
}
