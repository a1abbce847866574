#include "platform/RegistryText.h"

#include "platform/Text.h"
#include "platform/files/LineReader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <system_error>
#include <utility>

namespace sonnel {
namespace {

constexpr std::string_view NumberMark = "number:";
constexpr std::string_view BinaryMark = "binary:";
constexpr std::string_view DefaultName = "@";
constexpr std::string_view Blanks = " \t";
constexpr std::string_view HexDigits = "0123456789ABCDEF";

/// What stands after the backslash for a character that cannot stand in a line as it is.
constexpr std::array<std::pair<char, char>, 5> Escapes{std::pair{'\n', 'n'}, std::pair{'\r', 'r'},
                                                       std::pair{'\0', '0'}, std::pair{' ', 's'},
                                                       std::pair{'\t', 't'}};

std::string_view Trim(std::string_view text) {
    const std::size_t start = text.find_first_not_of(Blanks);
    if (start == std::string_view::npos) {
        return {};
    }
    return text.substr(start, text.find_last_not_of(Blanks) + 1 - start);
}

/// The text as it stands in a line; each character of `special` gets a backslash too.
std::string Escape(std::string_view text, std::string_view special) {
    std::string line;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char character = text[at];
        // Blanks are trimmed at the ends only.
        const bool plainBlank =
            Blanks.find(character) != std::string_view::npos && at > 0 && at + 1 < text.size();
        const auto* const escape =
            std::find_if(Escapes.begin(), Escapes.end(),
                         [&](const auto& entry) { return entry.first == character; });
        if (escape != Escapes.end() && !plainBlank) {
            line.append("\\").append(1, escape->second);
            continue;
        }
        if (character == '\\' || special.find(character) != std::string_view::npos) {
            line += '\\';
        }
        line += character;
    }
    return line;
}

char Unescaped(char letter) {
    const auto* const escape = std::find_if(
        Escapes.begin(), Escapes.end(), [&](const auto& entry) { return entry.second == letter; });
    return escape != Escapes.end() ? escape->first : letter;
}

std::string Unescape(std::string_view line) {
    std::string text;
    for (std::size_t at = 0; at < line.size(); ++at) {
        const bool escaped = line[at] == '\\' && at + 1 < line.size();
        text += escaped ? Unescaped(line[++at]) : line[at];
    }
    return text;
}

std::string EscapeName(std::string_view name) {
    if (name.empty()) {
        return std::string(DefaultName);
    }
    std::string line = Escape(name, "=");
    if (std::string_view("@;#[").find(line.front()) != std::string_view::npos) {
        line.insert(0, "\\");
    }
    return line;
}

std::optional<std::string> ParseNumber(std::string_view text) {
    text = Trim(text);
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [read, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc{} || read != end || number < INT32_MIN || number > UINT32_MAX) {
        return std::nullopt;
    }
    std::string data;
    for (unsigned shift = 0; shift < 32; shift += 8) {
        data += static_cast<char>(static_cast<std::uint64_t>(number) >> shift & 0xFFU);
    }
    return data;
}

std::string NumberText(std::string_view data) {
    std::uint32_t number = 0;
    for (std::size_t at = data.size(); at > 0; --at) {
        number = number << 8U | static_cast<unsigned char>(data[at - 1]);
    }
    return std::to_string(number);
}

std::optional<std::string> ParseBinary(std::string_view text) {
    std::string data;
    for (text = Trim(text); !text.empty(); text = Trim(text.substr(2))) {
        if (text.size() < 2) {
            return std::nullopt;
        }
        unsigned byte = 0;
        const char* const end = text.data() + 2;
        if (std::from_chars(text.data(), end, byte, 16).ptr != end) {
            return std::nullopt;
        }
        data += static_cast<char>(byte);
    }
    return data;
}

std::string BinaryText(std::string_view data) {
    std::string text;
    for (const char byte : data) {
        const auto bits = static_cast<unsigned char>(byte);
        text.append(text.empty() ? "" : " ").append(1, HexDigits[bits >> 4U]);
        text += HexDigits[bits & 0xFU];
    }
    return text;
}

std::string ValueText(const RegistryText::Value& value) {
    switch (value.type) {
        case RegistryType::Number:
            return std::string(NumberMark) + NumberText(value.data);
        case RegistryType::Binary:
            return std::string(BinaryMark) + BinaryText(value.data);
        case RegistryType::String:
            break;
    }
    const bool marked = value.data.starts_with(NumberMark) || value.data.starts_with(BinaryMark);
    return Escape(value.data, marked ? ":" : "");
}

std::optional<RegistryText::Value> ParseValue(std::string_view text) {
    const auto as = [](RegistryType type, std::optional<std::string> data) {
        return data ? std::optional(RegistryText::Value{type, *std::move(data)}) : std::nullopt;
    };
    if (text.starts_with(NumberMark)) {
        return as(RegistryType::Number, ParseNumber(text.substr(NumberMark.size())));
    }
    if (text.starts_with(BinaryMark)) {
        return as(RegistryType::Binary, ParseBinary(text.substr(BinaryMark.size())));
    }
    return as(RegistryType::String, Unescape(text));
}

/// Where a character stands that no backslash precedes.
std::size_t FindUnescaped(std::string_view text, char wanted) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == wanted) {
            return at;
        }
        at += text[at] == '\\' ? 1 : 0;
    }
    return std::string_view::npos;
}

}  // namespace

RegistryText::RegistryText(std::string_view text) : sections_(1) {
    if (text.starts_with(Utf8Mark)) {
        text.remove_prefix(Utf8Mark.size());
    }
    if (text.empty()) {
        return;
    }
    LineReader reader(text, LineEnds::AlsoLf);
    while (const auto line = reader.Next()) {
        const std::string_view trimmed = Trim(*line);
        if (trimmed.size() >= 2 && trimmed.front() == '[' && trimmed.back() == ']') {
            const std::string_view path = trimmed.substr(1, trimmed.size() - 2);
            sections_.push_back({FoldCase(path), std::string(*line), {}});
        } else {
            sections_.back().lines.push_back(ParseLine(*line));
        }
    }
}

RegistryText::Line RegistryText::ParseLine(std::string_view text) {
    Line line{std::string(text), {}, {}};
    const std::size_t equals = FindUnescaped(text, '=');
    const std::string_view name = Trim(text.substr(0, equals));
    const bool comment = name.starts_with(';') || name.starts_with('#');
    if (equals == std::string_view::npos || name.empty() || comment) {
        return line;
    }
    line.name = name == DefaultName ? std::string() : FoldCase(Unescape(name));
    line.value = ParseValue(Trim(text.substr(equals + 1)));
    return line;
}

bool RegistryText::HasKey(std::string_view path) const {
    const std::string key = FoldCase(path);
    return key.empty() ||
           std::any_of(sections_.begin(), sections_.end(), [&](const Section& section) {
               return section.path &&
                      (*section.path == key || section.path->starts_with(key + "\\"));
           });
}

std::optional<RegistryText::LinePlace> RegistryText::FindLine(std::string_view path,
                                                              std::string_view name) const {
    const std::string key = FoldCase(path);
    const std::string wanted = FoldCase(name);
    std::optional<LinePlace> found;
    for (std::size_t section = 0; section < sections_.size(); ++section) {
        if (sections_[section].path != key) {
            continue;
        }
        const std::vector<Line>& lines = sections_[section].lines;
        for (std::size_t line = 0; line < lines.size(); ++line) {
            if (lines[line].value && lines[line].name == wanted) {
                found = {section, line};
            }
        }
    }
    return found;
}

const RegistryText::Value* RegistryText::Find(std::string_view path, std::string_view name) const {
    const std::optional<LinePlace> place = FindLine(path, name);
    return place ? &*sections_[place->section].lines[place->line].value : nullptr;
}

void RegistryText::AddKey(std::string_view path) {
    if (!HasKey(path)) {
        SectionOf(path);
    }
}

RegistryText::Section& RegistryText::SectionOf(std::string_view path) {
    const std::string key = FoldCase(path);
    const auto found = std::find_if(sections_.begin(), sections_.end(),
                                    [&](const Section& section) { return section.path == key; });
    if (found != sections_.end()) {
        return *found;
    }
    Section& last = sections_.back();
    const bool empty = !last.path && last.lines.empty();
    if (!empty && (last.lines.empty() || !Trim(last.lines.back().text).empty())) {
        last.lines.emplace_back();
    }
    return sections_.emplace_back(Section{key, "[" + std::string(path) + "]", {}});
}

void RegistryText::Set(std::string_view path, std::string_view name, Value value) {
    Line line{EscapeName(name) + "=" + ValueText(value), FoldCase(name), std::move(value)};
    if (const std::optional<LinePlace> old = FindLine(path, name)) {
        sections_[old->section].lines[old->line] = std::move(line);
        return;
    }
    std::vector<Line>& lines = SectionOf(path).lines;
    const auto lastUsed = std::find_if(lines.rbegin(), lines.rend(), [](const Line& candidate) {
        return !Trim(candidate.text).empty();
    });
    lines.insert(lastUsed.base(), std::move(line));
}

std::string RegistryText::Text() const {
    std::string text;
    for (const Section& section : sections_) {
        if (section.path) {
            text.append(section.header).append("\n");
        }
        for (const Line& line : section.lines) {
            text.append(line.text).append("\n");
        }
    }
    return text;
}

}  // namespace sonnel
