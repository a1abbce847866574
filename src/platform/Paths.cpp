#include "platform/Paths.h"

#include "platform/Text.h"

#include <algorithm>

namespace sonnel {
namespace fs = std::filesystem;

fs::path PathFromUtf8(std::string_view text) {
#ifdef _WIN32
    return {std::u8string(text.begin(), text.end())};
#else
    return {text};
#endif
}

std::string Utf8FromPath(const fs::path& path) {
#ifdef _WIN32
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
#else
    return path.native();
#endif
}

std::string Utf8FileName(const fs::path& path) {
#ifdef _WIN32
    return Utf8FromPath(path.filename());
#else
    // A path of its own for the name takes longer than all that is done with it.
    return path.native().substr(path.native().rfind('/') + 1);
#endif
}

std::string WithoutExtension(std::string_view path) {
    constexpr std::size_t Extension = 4;
    const std::size_t length = CodePoints(path);
    return std::string(FirstCodePoints(path, length - std::min(length, Extension)));
}

bool HasNul(const fs::path& path) {
    return path.native().find(fs::path::value_type{}) != fs::path::string_type::npos;
}

bool IsPlainName(std::string_view name) {
#ifdef _WIN32
    constexpr std::string_view Forbidden("/\\:\0", 4);
#else
    constexpr std::string_view Forbidden("/\0", 2);
#endif
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of(Forbidden) == std::string_view::npos;
}

}  // namespace sonnel
