#include "platform/qt/QtShell.h"

#include "platform/Environment.h"
#include "platform/qt/X11Windows.h"
#include "platform/qt/XdgFileType.h"

#include <QDesktopServices>
#include <QProcess>
#include <QStandardPaths>
#include <QStringList>
#include <QUrl>
#include <algorithm>
#include <array>
#include <vector>

namespace sonnel {
namespace {

struct Mixer {
    const char* program;
    const char* argument;  ///< nullptr: none
    /// Whether a window of the program is a mixer. One that shows something else as well is started
    /// again instead: it keeps to one window and turns it to the mixer.
    bool nothingElse;
};

constexpr std::array<Mixer, 5> Mixers{{{"pavucontrol", nullptr, true},
                                       {"pavucontrol-qt", nullptr, true},
                                       {"kmix", nullptr, true},
                                       {"mate-volume-control", nullptr, true},
                                       {"gnome-control-center", "sound", false}}};

QString Executable(const Mixer& mixer) {
    return QStandardPaths::findExecutable(mixer.program);
}

bool Start(const Mixer& mixer) {
    const QString executable = Executable(mixer);
    const QStringList arguments = mixer.argument ? QStringList{mixer.argument} : QStringList{};
    return !executable.isEmpty() && QProcess::startDetached(executable, arguments);
}

}  // namespace

bool QtShell::OpenAddress(std::string_view address) {
    const auto size = static_cast<qsizetype>(address.size());
    return QDesktopServices::openUrl(QUrl(QString::fromUtf8(address.data(), size)));
}

void QtShell::RegisterFileType(const std::filesystem::path& program) {
    const std::filesystem::path data = UserDataDirectory(ProcessEnvironment);
    if (!data.empty() && InstallXdgFileType(LykFileType(), program, data)) {
        UpdateXdgCaches(data);
    }
}

std::optional<OpenWindow> QtShell::FindMixer() {
    std::vector<std::string> programs;
    for (const Mixer& mixer : Mixers) {
        if (mixer.nothingElse) {
            programs.emplace_back(mixer.program);
        }
    }
    return FindX11Window(programs);
}

bool QtShell::StartMixer() {
    return std::any_of(Mixers.begin(), Mixers.end(), Start);
}

std::string QtShell::MixerProgram() const {
    const auto* const installed = std::find_if(
        Mixers.begin(), Mixers.end(), [](const Mixer& m) { return !Executable(m).isEmpty(); });
    return (installed == Mixers.end() ? Mixers.front() : *installed).program;
}

bool QtShell::Activate(const OpenWindow& window) {
    return ActivateX11Window(window.id);
}

}  // namespace sonnel
