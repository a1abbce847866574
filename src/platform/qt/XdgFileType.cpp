#include "platform/qt/XdgFileType.h"

#include "platform/files/Files.h"

#include <QFile>
#include <QProcess>
#include <algorithm>
#include <system_error>

namespace sonnel {
namespace {

namespace fs = std::filesystem;

constexpr const char* Applications = "applications";
constexpr const char* MimeTypes = "mime";
constexpr const char* IconTheme = "icons/hicolor";

std::string Resource(const char* name) {
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
}

/// A value of a desktop entry as its file has it.
std::string EntryValue(std::string_view value) {
    std::string text;
    for (const char character : value) {
        switch (character) {
            case '\\':
                text += "\\\\";
                break;
            case '\n':
                text += "\\n";
                break;
            case '\r':
                text += "\\r";
                break;
            case '\t':
                text += "\\t";
                break;
            default:
                text += character;
        }
    }
    return text;
}

/// One argument of a command line in a desktop entry. Some openers take quotes for a part of the
/// program's name, so they stand only where they have to.
std::string CommandArgument(std::string_view argument) {
    constexpr std::string_view Reserved = " \t\n\"'\\><~|&;$*?#()`";
    constexpr std::string_view Escaped = "\"`$\\";
    std::string text;
    for (const char character : argument) {
        if (Escaped.find(character) != std::string_view::npos) {
            text += '\\';
        }
        text += character == '%' ? "%%" : std::string(1, character);
    }
    const bool plain = argument.find_first_of(Reserved) == std::string_view::npos;
    return plain ? text : '"' + text + '"';
}

/// Whether the desktop entry that is there starts this program: then it may have been edited.
bool Starts(const fs::path& file, const std::string& entry) {
    const Result<std::string> present = ReadFile(file);
    const std::size_t start = entry.find("\nExec=");
    const std::size_t blank = entry.find(" --one %f\n", start);  // ends the program's name
    return present && start != std::string::npos &&
           present->find(entry.substr(start, blank + 1 - start)) != std::string::npos;
}

bool WriteIfDifferent(const fs::path& file, std::string_view content) {
    const Result<std::string> present = ReadFile(file);
    if (present && *present == content) {
        return false;
    }
    std::error_code ignored;  // without its directory the file cannot be written
    fs::create_directories(file.parent_path(), ignored);
    return !WriteFileAtomically(file, content);
}

void Start(const char* program, const fs::path& argument) {
    QProcess process;
    process.setProgram(program);
    process.setArguments({QString::fromStdString(Utf8FromPath(argument))});
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.startDetached();
}

}  // namespace

XdgFileType LykFileType() {
    return {Resource(":/packaging/sonnel.desktop"), Resource(":/packaging/sonnel.xml"),
            Resource(":/sonnel.svg")};
}

std::string WithProgram(std::string_view desktopEntry, const fs::path& program) {
    const std::string path = Utf8FromPath(program);
    std::string text;
    while (!desktopEntry.empty()) {
        const std::string_view line = desktopEntry.substr(0, desktopEntry.find('\n'));
        desktopEntry.remove_prefix(std::min(line.size() + 1, desktopEntry.size()));
        if (line.starts_with("Exec=")) {
            text += "Exec=" + EntryValue(CommandArgument(path)) + " --one %f";
        } else if (line.starts_with("TryExec=")) {
            text += "TryExec=" + EntryValue(path);
        } else {
            text += line;
        }
        text += '\n';
    }
    return text;
}

bool InstallXdgFileType(const XdgFileType& type, const fs::path& program,
                        const fs::path& dataDirectory) {
    const fs::path theme = dataDirectory / IconTheme;
    const fs::path icons = theme / "scalable";
    const fs::path desktopEntry = dataDirectory / Applications / "sonnel.desktop";
    const std::string entry = WithProgram(type.desktopEntry, program);
    bool changed = !Starts(desktopEntry, entry) && WriteIfDifferent(desktopEntry, entry);
    changed |= WriteIfDifferent(dataDirectory / MimeTypes / "packages/sonnel.xml", type.mimeType);
    for (const char* name : {"apps/sonnel.svg", "mimetypes/application-x-sonnel-lyk.svg"}) {
        if (WriteIfDifferent(icons / name, type.icon)) {
            // Desktops look at this time to see that their picture of the theme is out of date.
            std::error_code ignored;
            fs::last_write_time(theme, fs::file_time_type::clock::now(), ignored);
            changed = true;
        }
    }
    return changed;
}

void UpdateXdgCaches(const fs::path& dataDirectory) {
    Start("update-mime-database", dataDirectory / MimeTypes);
    Start("update-desktop-database", dataDirectory / Applications);
}

}  // namespace sonnel
