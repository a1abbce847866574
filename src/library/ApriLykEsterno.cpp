#include "library/ApriLykEsterno.h"

#include "platform/Paths.h"

namespace sonnel {

std::optional<FileBrano> ApriLykEsterno(CommonDialog& dialoghi, MsgBox& msgBox) {
    const auto scelti = dialoghi.ChooseFiles({.title = "Open a LYK file",
                                              .extension = "lyk",
                                              .name = "*.lyk",
                                              .directory = {},
                                              .further = {GenereKaraoke}});
    if (scelti.empty()) {
        return std::nullopt;
    }
    const std::filesystem::path& scelto = scelti.front();
    FileBrano brano = TrovaFileBrano(WithoutExtension(Utf8FromPath(scelto)));
    if (!brano.Completo() && SembraMidi(scelto)) {
        return BranoDaFile(scelto);
    }
    if (!brano.mid) {
        msgBox.Show(
            {"Can't load the selected song: MID file missing!\r\n"
             "To properly load a Karaoke file you need to put the LYK and MID file in the "
             "same directory.",
             Icon::Exclamation});
        return std::nullopt;
    }
    return brano;
}

}  // namespace sonnel
