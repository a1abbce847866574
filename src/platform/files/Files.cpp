#include "platform/files/Files.h"

#include "platform/SystemError.h"
#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>
#include <tuple>

namespace sonnel {
namespace fs = std::filesystem;
namespace {

constexpr std::size_t ReadBlock = std::size_t{64} * 1024;

std::FILE* OpenForReading(const fs::path& path) {
#ifdef _WIN32
    std::FILE* const file = _wfopen(path.c_str(), L"rb");
#else
    std::FILE* const file = std::fopen(path.c_str(), "rbe");
#endif
    if (file != nullptr) {
        // Callers read in blocks; a second buffer would only copy them.
        (void)std::setvbuf(file, nullptr, _IONBF, 0);
    }
    return file;
}

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
    const std::string key = FoldCase(Utf8FromPath(path.filename()));
    const auto rank = [&](const fs::path& name) {
        return std::make_tuple(name.stem() != stem, name.native());
    };
    std::optional<fs::path> best;
    std::error_code error;
    fs::directory_iterator entry(directory.empty() ? fs::path(".") : directory, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        fs::path name = entry->path().filename();
        std::error_code unknown;
        if (FoldCase(Utf8FromPath(name)) == key && entry->is_regular_file(unknown) &&
            (!best || rank(name) < rank(*best))) {
            best = std::move(name);
        }
    }
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
    // Opening a pipe would wait for its writer, so the kind is looked at first.
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found) {
        return SystemError(error ? error.value() : ENOENT);
    }
    if (error) {
        return SystemError(error.value());
    }
    if (!fs::is_regular_file(status)) {
        return SystemError(fs::is_directory(status) ? EISDIR : EINVAL);
    }
    errno = 0;
    std::FILE* const file = OpenForReading(path);
    return file != nullptr ? Result<FileReader>(FileReader(file)) : SystemError(LastError());
}

std::optional<Error> FileReader::Read(std::string& content, std::size_t size) {
    const std::size_t before = content.size();
    content.resize(before + size);
    errno = 0;
    const std::size_t got = std::fread(content.data() + before, 1, size, file_.get());
    const int error = std::ferror(file_.get()) != 0 ? LastError() : 0;
    content.resize(before + got);
    return error != 0 ? std::optional(SystemError(error)) : std::nullopt;
}

std::optional<Error> FileReader::ReadAll(std::string& content) {
    for (;;) {
        const std::size_t before = content.size();
        if (std::optional<Error> error = Read(content, ReadBlock)) {
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
