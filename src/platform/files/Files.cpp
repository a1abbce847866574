#include "platform/files/Files.h"

#include "platform/SystemError.h"
#include "platform/Text.h"
#include "platform/files/Directory.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>
#include <tuple>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace sonnel {
namespace fs = std::filesystem;
namespace {

constexpr std::size_t ReadBlock = std::size_t{64} * 1024;

std::string WithLetters(const std::string& text, char first, char last, int distance) {
    std::string changed = text;
    for (char& letter : changed) {
        if (letter >= first && letter <= last) {
            letter = static_cast<char>(letter + distance);
        }
    }
    return changed;
}

/// The path with its extension in upper and in lower case.
std::array<fs::path, 2> UsualSpellings(const fs::path& path) {
    const std::string extension = Utf8FromPath(path.extension());
    std::array<fs::path, 2> spellings{path, path};
    spellings[0].replace_extension(PathFromUtf8(WithLetters(extension, 'a', 'z', 'A' - 'a')));
    spellings[1].replace_extension(PathFromUtf8(WithLetters(extension, 'A', 'Z', 'a' - 'A')));
    return spellings;
}

bool IsRegularFile(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(path, error);
}

/// The best regular file in the path's directory whose name differs at most in letter case.
std::optional<fs::path> FindInAnyCase(const fs::path& path) {
    const fs::path directory = path.parent_path();
    const fs::path stem = path.stem();
    const std::string wanted = Utf8FileName(path);
    const auto rank = [&](const fs::path& name) {
        return std::make_tuple(name.stem() != stem, name.native());
    };
    std::optional<fs::path> best;
    (void)ListDirectory(directory, [&](std::string_view name, EntryKind kind) {
        if (kind == EntryKind::File && FoldedEqual()(name, wanted)) {
            const fs::path found = PathFromUtf8(name);
            best = best && rank(*best) < rank(found) ? *best : found;
        }
    });
    return best ? std::optional(directory / *best) : std::nullopt;
}

}  // namespace

Error ReadError(const fs::path& path, int number) {
    return {number,
            "Can't read the file " + Utf8FromPath(path) + ": " + SystemError(number).text + "."};
}

Error WriteError(const fs::path& path, int number) {
    return {number,
            "Can't write the file " + Utf8FromPath(path) + ": " + SystemError(number).text + "."};
}

std::optional<fs::path> FindFile(const fs::path& path) {
    if (HasNul(path)) {
        return std::nullopt;
    }
    if (IsRegularFile(path)) {
        return path;
    }
    // Trying the usual spellings avoids reading a directory of thousands of songs for each song.
    for (const fs::path& spelling : UsualSpellings(path)) {
        if (IsRegularFile(spelling)) {
            return spelling;
        }
    }
    return FindInAnyCase(path);
}

Result<FileReader> FileReader::Open(const fs::path& path) {
    if (HasNul(path)) {
        return SystemError(EINVAL);
    }
    errno = 0;
#ifdef _WIN32
    FileReader reader(_wfopen(path.c_str(), L"rb"));
    if (reader.file_ == nullptr) {
        return SystemError(LastError());
    }
#else
    // A pipe would wait for its writer; a file does not care.
    const int handle = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    FileReader reader(handle >= 0 ? fdopen(handle, "rb") : nullptr);
    struct stat status {};
    if (reader.file_ == nullptr || fstat(handle, &status) != 0) {
        return SystemError(LastError());
    }
    if (!S_ISREG(status.st_mode)) {
        return SystemError(S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
    }
    if (status.st_size > 0) {
        reader.left_ = static_cast<std::size_t>(status.st_size);
    }
#endif
    // Callers read in blocks; a second buffer would only copy them.
    (void)std::setvbuf(reader.file_.get(), nullptr, _IONBF, 0);
    return reader;
}

std::optional<Error> FileReader::Read(std::string& content, std::size_t size) {
    const std::size_t before = content.size();
    const std::size_t wanted = std::min(size, left_);
    content.resize(before + wanted);
    errno = 0;
    const std::size_t got = std::fread(content.data() + before, 1, wanted, file_.get());
    left_ -= got;
    const int error = std::ferror(file_.get()) != 0 ? LastError() : 0;
    content.resize(before + got);
    return error != 0 ? std::optional(SystemError(error)) : std::nullopt;
}

std::optional<Error> FileReader::ReadAll(std::string& content) {
    for (;;) {
        const std::size_t before = content.size();
        const std::size_t size = left_ <= MaxFileSize ? left_ : ReadBlock;
        if (std::optional<Error> error = Read(content, size)) {
            return error;
        }
        if (content.size() == before) {
            return std::nullopt;
        }
        if (content.size() > MaxFileSize) {
            return SystemError(EFBIG);
        }
    }
}

Result<std::string> ReadFile(const fs::path& path) {
    Result<FileReader> file = FileReader::Open(path);
    if (!file) {
        return file.error();
    }
    std::string content;
    if (std::optional<Error> error = file->ReadAll(content)) {
        return *error;
    }
    return content;
}

}  // namespace sonnel
