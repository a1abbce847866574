#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>

#ifdef SONNEL_UTF8PROC
#include <utf8proc.h>
#endif

namespace sonnel {
namespace {

/// One character of a text: its code point and how many bytes it takes.
struct Character {
    char32_t codePoint = 0;
    std::size_t length = 1;
    bool valid = true;
};

/// How many bytes the lead byte announces, and the smallest code point that needs so many.
struct Sequence {
    std::size_t length;
    char32_t bits;
    char32_t smallest;
};

std::optional<Sequence> SequenceOf(unsigned char lead) {
    if (lead >= 0xC2 && lead <= 0xDF) {
        return Sequence{2, lead & 0x1FU, 0x80};
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        return Sequence{3, lead & 0x0FU, 0x800};
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        return Sequence{4, lead & 0x07U, 0x10000};
    }
    return std::nullopt;
}

bool IsScalar(char32_t codePoint) {
    return codePoint <= 0x10FFFF && (codePoint < 0xD800 || codePoint > 0xDFFF);
}

/// The first character of a text that is not empty.
Character FirstCharacter(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    if (lead < 0x80) {
        return {lead, 1, true};
    }
    const Character broken{lead, 1, false};
    const std::optional<Sequence> sequence = SequenceOf(lead);
    if (!sequence || text.size() < sequence->length) {
        return broken;
    }
    char32_t codePoint = sequence->bits;
    for (const char byte : text.substr(1, sequence->length - 1)) {
        const auto next = static_cast<unsigned char>(byte);
        if ((next & 0xC0U) != 0x80U) {
            return broken;
        }
        codePoint = codePoint << 6U | (next & 0x3FU);
    }
    if (codePoint < sequence->smallest || !IsScalar(codePoint)) {
        return broken;
    }
    return {codePoint, sequence->length, true};
}

void AppendUtf8(std::string& text, char32_t codePoint) {
    const auto tail = [&](unsigned shift) {
        text += static_cast<char>(0x80U | (codePoint >> shift & 0x3FU));
    };
    if (codePoint < 0x80) {
        text += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        text += static_cast<char>(0xC0U | codePoint >> 6U);
        tail(0);
    } else if (codePoint < 0x10000) {
        text += static_cast<char>(0xE0U | codePoint >> 12U);
        tail(6);
        tail(0);
    } else {
        text += static_cast<char>(0xF0U | codePoint >> 18U);
        tail(12);
        tail(6);
        tail(0);
    }
}

bool IsAscii(char byte) {
    return static_cast<unsigned char>(byte) < 0x80;
}

std::size_t AsciiPrefix(std::string_view text) {
    constexpr std::uint64_t HighBits = 0x8080808080808080;
    std::size_t length = 0;
    // Most texts are ASCII: eight bytes at a time.
    for (std::uint64_t bytes = 0; text.size() - length >= sizeof bytes; length += sizeof bytes) {
        std::memcpy(&bytes, text.data() + length, sizeof bytes);
        if ((bytes & HighBits) != 0) {
            break;
        }
    }
    while (length < text.size() && IsAscii(text[length])) {
        ++length;
    }
    return length;
}

/// What Windows-1252 holds in the bytes 80 to 9F.
constexpr std::array<char32_t, 32> Windows1252High{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

std::optional<char> Windows1252Byte(char32_t codePoint) {
    if (codePoint < 0x80 || (codePoint >= 0xA0 && codePoint <= 0xFF)) {
        return static_cast<char>(codePoint);
    }
    const auto* const found = std::find(Windows1252High.begin(), Windows1252High.end(), codePoint);
    if (found == Windows1252High.end()) {
        return std::nullopt;
    }
    return static_cast<char>(0x80 + (found - Windows1252High.begin()));
}

char SmallAscii(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
}

char32_t SmallLetter(char32_t codePoint) {
#ifdef SONNEL_UTF8PROC
    return static_cast<char32_t>(utf8proc_tolower(static_cast<utf8proc_int32_t>(codePoint)));
#else
    return codePoint;
#endif
}

}  // namespace

std::size_t CodePoints(std::string_view text) {
    std::size_t count = 0;
    while (!text.empty()) {
        text.remove_prefix(FirstCharacter(text).length);
        ++count;
    }
    return count;
}

std::string_view FirstCodePoints(std::string_view text, std::size_t count) {
    if (text.size() <= count) {
        return text;
    }
    std::size_t length = 0;
    for (; count > 0 && length < text.size(); --count) {
        length += FirstCharacter(text.substr(length)).length;
    }
    return text.substr(0, length);
}

bool IsValidUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const Character character = FirstCharacter(bytes);
        if (!character.valid) {
            return false;
        }
        bytes.remove_prefix(character.length);
    }
    return true;
}

std::string FromWindows1252(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 8);
    while (!bytes.empty()) {
        const std::size_t plain = AsciiPrefix(bytes);
        text += bytes.substr(0, plain);
        bytes.remove_prefix(plain);
        if (!bytes.empty()) {
            const auto byte = static_cast<unsigned char>(bytes.front());
            AppendUtf8(text, byte < 0xA0 ? Windows1252High.at(byte - 0x80U) : byte);
            bytes.remove_prefix(1);
        }
    }
    return text;
}

std::optional<std::string> ToWindows1252(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    while (!text.empty()) {
        const std::size_t plain = AsciiPrefix(text);
        bytes += text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty()) {
            break;
        }
        const Character character = FirstCharacter(text);
        const std::optional<char> byte =
            character.valid ? Windows1252Byte(character.codePoint) : std::nullopt;
        if (!byte) {
            return std::nullopt;
        }
        bytes += *byte;
        text.remove_prefix(character.length);
    }
    return bytes;
}

std::string DecodeFileText(std::string_view bytes) {
    if (bytes.starts_with(Utf8Mark)) {
        return std::string(bytes.substr(Utf8Mark.size()));
    }
    return FromWindows1252(bytes);
}

std::string EncodeFileText(std::string_view text) {
    std::optional<std::string> bytes = ToWindows1252(text);
    // A text whose bytes begin like the mark would come back as something else.
    if (bytes && !bytes->starts_with(Utf8Mark)) {
        return *std::move(bytes);
    }
    return std::string(Utf8Mark).append(text);
}

std::string DecodeUnmarkedText(std::string_view bytes) {
    return IsValidUtf8(bytes) ? std::string(bytes) : FromWindows1252(bytes);
}

std::string OneLine(std::string_view text) {
    std::string line(text);
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\r' || c == '\n' || c == '\0'; }, ' ');
    return line;
}

std::string FoldCase(std::string_view text) {
    std::string key;
    key.reserve(text.size());
    while (!text.empty()) {
        const std::size_t plain = AsciiPrefix(text);
        key += text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty()) {
            break;
        }
        const Character character = FirstCharacter(text);
        if (character.valid) {
            AppendUtf8(key, SmallLetter(character.codePoint));
        } else {
            key += text.front();
        }
        text.remove_prefix(character.length);
    }
    std::transform(key.begin(), key.end(), key.begin(), SmallAscii);
    return key;
}

std::string FoldForSearch(std::string_view text) {
    if (AsciiPrefix(text) == text.size()) {
        return FoldCase(text);
    }
#ifdef SONNEL_UTF8PROC
    utf8proc_uint8_t* folded = nullptr;
    const auto options =
        static_cast<utf8proc_option_t>(UTF8PROC_DECOMPOSE | UTF8PROC_COMPAT | UTF8PROC_CASEFOLD |
                                       UTF8PROC_STRIPMARK | UTF8PROC_STABLE);
    const utf8proc_ssize_t length =
        utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                     static_cast<utf8proc_ssize_t>(text.size()), &folded, options);
    if (length >= 0) {
        const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owner(folded, &std::free);
        return {reinterpret_cast<const char*>(folded), static_cast<std::size_t>(length)};
    }
#endif
    return FoldCase(text);
}

std::size_t FoldedHash::operator()(std::string_view text) const {
    const std::string folded = AsciiPrefix(text) < text.size() ? FoldCase(text) : std::string();
    std::uint64_t hash = 0xCBF29CE484222325;  // FNV-1a
    for (const char letter : folded.empty() ? text : folded) {
        hash = (hash ^ static_cast<unsigned char>(SmallAscii(letter))) * 0x100000001B3;
    }
    return hash;
}

bool FoldedEqual::operator()(std::string_view one, std::string_view other) const {
    if (AsciiPrefix(one) == one.size() && AsciiPrefix(other) == other.size()) {
        return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                          [](char a, char b) { return SmallAscii(a) == SmallAscii(b); });
    }
    return FoldCase(one) == FoldCase(other);
}

std::string WithReason(std::string failure, std::string_view reason) {
    const std::size_t start = failure.append(": ").size();
    failure.append(reason);
    if (failure.size() > start && failure[start] >= 'A' && failure[start] <= 'Z') {
        failure[start] = static_cast<char>(failure[start] - 'A' + 'a');
    }
    return failure.ends_with('.') ? failure : failure + ".";
}

}  // namespace sonnel
