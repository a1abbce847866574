#include "song/FileBrano.h"

#include "platform/Paths.h"
#include "platform/files/Files.h"

#include <utility>

namespace sonnel {

FileBrano TrovaFileBrano(std::string base) {
    FileBrano brano{std::move(base), std::nullopt, std::nullopt};
    brano.lyk = FindFile(PathFromUtf8(brano.base + ".LYK"));
    brano.mid = FindFile(PathFromUtf8(brano.base + ".MID"));
    return brano;
}

}  // namespace sonnel
