#include "player/window/ControlloVolume.h"

#include <string>
#include <utility>

namespace sonnel {
namespace {

void Avverti(MsgBox& msgBox, std::string testo) {
    msgBox.Show({std::move(testo), Icon::Exclamation});
}

}  // namespace

void MostraControlloVolume(Shell& shell, MsgBox& msgBox) {
    if (!shell.FindMixer() && !shell.StartMixer()) {
        Avverti(msgBox, "An error occured when trying to run the Volume contol (" +
                            shell.MixerProgram() +
                            ")! If the program is stored in a different directory or has a "
                            "different name correct the problem and retry, or run volume Control "
                            "manually.");
        return;
    }
    // A mixer that was just started may have no window yet; it then opens in front.
    if (const auto finestra = shell.FindMixer(); finestra && !shell.Activate(*finestra)) {
        Avverti(msgBox, "Warning! An error occured trying to activate the Volume Control \"" +
                            finestra->title +
                            "\"! Maybe the program has a different title, so you should run "
                            "volume Control manually.");
    }
}

}  // namespace sonnel
