#include "platform/files/LineReader.h"

namespace sonnel {

std::optional<std::string_view> LineReader::Next() {
    if (done_) {
        return std::nullopt;
    }
    // Looking for one character is much faster than for one of several.
    const std::size_t end =
        ends_.size() == 1 ? rest_.find(ends_.front()) : rest_.find_first_of(ends_);
    const std::string_view line = rest_.substr(0, end);
    if (end == std::string_view::npos) {
        done_ = true;
        return line;
    }
    rest_.remove_prefix(rest_.substr(end, 2) == "\r\n" ? end + 2 : end + 1);
    done_ = rest_.empty();
    return line;
}

}  // namespace sonnel
