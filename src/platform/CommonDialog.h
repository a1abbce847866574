#pragma once

#include "platform/PictureBox.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace sonnel {

/// What a file dialog asks for.
struct FileRequest {
    std::string title;
    std::string extension;  ///< without the dot; added to a name that has none
    std::string name;       ///< filled in at the start: a file's name or a pattern ("*.lyk")
    /// Where it starts. Empty for where the last file was chosen in a dialog that named none, at
    /// first the process's current directory.
    std::filesystem::path directory;
    bool mustExist = true;  ///< only files that are there
    bool several = false;
    /// Kinds of files to choose from, such as "MIDI file (*.mid)"; none for those of `extension`.
    std::vector<std::string> filters{};
    std::vector<std::string> further{};  ///< kinds to choose from after those
    bool anyName = false;                ///< also files whose names are not UTF-8
};

/// The door to the window system's dialogs for files and colours.
class CommonDialog {
  public:
    virtual ~CommonDialog() = default;
    /// The files chosen; none when the user cancels.
    virtual std::vector<std::filesystem::path> ChooseFiles(const FileRequest& request) = 0;
    /// The colour chosen, nothing when the user cancels.
    virtual std::optional<Colour> ChooseColour(const std::string& title, Colour initial) = 0;
};

}  // namespace sonnel
