#include "platform/Numbers.h"

#include <charconv>
#include <system_error>

namespace sonnel {

std::int64_t ReadRounded(std::string_view text) {
    const std::size_t start = text.find_first_not_of(" \t");
    if (start == std::string_view::npos) {
        return 0;
    }
    text.remove_prefix(start);
    if (text.front() == '+' && text.substr(1, 1) != "-") {
        text.remove_prefix(1);
    }
    std::int64_t number = 0;
    const char* const stop = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), stop, number);
    const char* const point = end == text.data() && text.front() == '-' ? end + 1 : end;
    if (error != std::errc::result_out_of_range && point != stop && *point == '.') {
        double decimals = 0;
        std::from_chars(text.data(), stop, decimals, std::chars_format::fixed);
        return RoundHalfEven<std::int64_t>(decimals);
    }
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
