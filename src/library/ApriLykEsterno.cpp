#include "library/ApriLykEsterno.h"

#include "platform/Files.h"
#include "ui/Titoli.h"

namespace sonnel {

std::optional<std::string> ApriLykEsterno(CommonDialog& dialoghi, MsgBox& msgBox) {
    const auto scelti = dialoghi.ChooseFiles(
        {.title = "Open a LYK file", .extension = "lyk", .name = "*.lyk", .directory = {}});
    if (scelti.empty()) {
        return std::nullopt;
    }
    const std::string base = WithoutExtension(Utf8FromPath(scelti.front()));
    if (!FindFile(PathFromUtf8(base + ".mid"))) {
        msgBox.Show(
            {"Can't load the selected song: MID file missing!\r\n"
             "To properly load a Karaoke file you need to put the LYK and MID file in the "
             "same directory.",
             Icon::Exclamation, std::string(TitoloMessaggi)});
        return std::nullopt;
    }
    return std::string(PrefissoFile) + base;
}

}  // namespace sonnel
