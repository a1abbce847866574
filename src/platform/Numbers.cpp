#include "platform/Numbers.h"

#include <charconv>
#include <system_error>

namespace sonnel {

std::int64_t ReadNumberPrefix(std::string_view text) {
    const std::size_t start = text.find_first_not_of(" \t");
    if (start == std::string_view::npos) {
        return 0;
    }
    text.remove_prefix(start);
    if (text.front() == '+' && text.substr(1, 1) != "-") {
        text.remove_prefix(1);
    }
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc::result_out_of_range) {
        return text.front() == '-' ? std::numeric_limits<std::int64_t>::min()
                                   : std::numeric_limits<std::int64_t>::max();
    }
    return number;
}

std::string ZeroPadded(std::int64_t number, std::size_t digits) {
    std::string text = std::to_string(number);
    text.insert(0, digits - std::min(digits, text.size()), '0');
    return text;
}

}  // namespace sonnel
