#include "platform/files/ProfileText.h"

#include "platform/files/LineReader.h"

#include <algorithm>
#include <utility>

namespace sonnel {
namespace {

constexpr std::string_view Blanks = " \t";
constexpr std::string_view LineEnd = "\r\n";

bool IsBlank(std::string_view line) {
    return line.find_first_not_of(Blanks) == std::string_view::npos;
}

/// The name in a section line, nothing for other lines.
std::optional<std::string_view> SectionName(std::string_view line) {
    if (!line.starts_with('[') || line.find('=') != std::string_view::npos) {
        return std::nullopt;
    }
    const std::size_t close = line.find(']');
    if (close == std::string_view::npos || !IsBlank(line.substr(close + 1))) {
        return std::nullopt;
    }
    return line.substr(1, close - 1);
}

std::size_t KeyLength(std::string_view line) {
    const std::size_t equals = line.find('=');
    if (line.substr(0, equals).find('\0') != std::string_view::npos) {
        return 0;
    }
    if (equals != std::string_view::npos) {
        return equals;
    }
    return line.starts_with(';') ? 0 : line.size();
}

}  // namespace

ProfileText::ProfileText(std::string file) {
    if (file.empty()) {
        return;
    }
    const std::string_view text = Keep(std::move(file));
    // The current section by its number: the sections move when one is added.
    std::optional<std::size_t> current;
    // A file without a single CR was written by another editor.
    const bool unix = text.find('\r') == std::string_view::npos;
    LineReader lines(text, unix ? LineEnds::AlsoLf : LineEnds::CrOnly);
    while (const std::optional<std::string_view> line = lines.Next()) {
        if (SectionName(*line)) {
            current = static_cast<std::size_t>(&SectionOf(*line) - sections_.data());
        } else if (current) {
            AddLine(sections_[*current], *line);
        } else {
            preamble_.emplace_back(*line);
        }
    }
}

void ProfileText::AddLine(Section& section, std::string_view text) {
    if (IsBlank(text)) {
        section.blanksAtEnd.emplace_back(text);
        return;
    }
    const std::size_t keyLength = KeyLength(text);
    if (keyLength > 0 && !section.keys
                              .try_emplace(text.substr(0, keyLength),
                                           section.lines.size() + section.blanksAtEnd.size())
                              .second) {
        return;
    }
    for (const std::string_view blank : section.blanksAtEnd) {
        section.lines.push_back({blank});
    }
    section.blanksAtEnd.clear();
    section.lines.push_back({text, keyLength});
}

std::string_view ProfileText::Keep(std::string text) {
    return texts_.emplace_back(std::move(text));
}

const ProfileText::Section* ProfileText::FindSection(std::string_view name) const {
    const auto found = names_.find(name);
    return found != names_.end() ? &sections_[found->second] : nullptr;
}

ProfileText::Section* ProfileText::FindSection(std::string_view name) {
    const auto found = names_.find(name);
    return found != names_.end() ? &sections_[found->second] : nullptr;
}

ProfileText::Section& ProfileText::SectionOf(std::string_view header) {
    const auto [place, added] = names_.try_emplace(*SectionName(header), sections_.size());
    if (added) {
        sections_.push_back({header, {}, {}, {}});
    }
    return sections_[place->second];
}

ProfileText::Line* ProfileText::FindLine(std::string_view section, std::string_view key) {
    Section* const place = FindSection(section);
    if (place == nullptr) {
        return nullptr;
    }
    const auto found = place->keys.find(key);
    return found != place->keys.end() ? &place->lines[found->second] : nullptr;
}

std::optional<std::string_view> ProfileText::Find(std::string_view section,
                                                  std::string_view key) const {
    const Section* const place = FindSection(section);
    if (place == nullptr) {
        return std::nullopt;
    }
    const auto found = place->keys.find(key);
    if (found == place->keys.end()) {
        return std::nullopt;
    }
    const Line& line = place->lines[found->second];
    return line.text.substr(std::min(line.keyLength + 1, line.text.size()));
}

std::vector<std::string_view> ProfileText::Keys(std::string_view section) const {
    std::vector<std::string_view> keys;
    if (const Section* const place = FindSection(section)) {
        keys.reserve(place->keys.size());
        for (const Line& line : place->lines) {
            if (line.keyLength > 0 && !line.removed) {
                keys.push_back(line.text.substr(0, line.keyLength));
            }
        }
    }
    return keys;
}

void ProfileText::Set(std::string_view section, std::string_view key, std::string_view value) {
    const std::string header = "[" + OneLine(section) + "]";
    const std::optional<std::string_view> name = SectionName(header);
    if (key.empty() || name != std::string_view(header).substr(1, header.size() - 2)) {
        return;
    }
    std::string text = OneLine(key);
    if (Line* const line = FindLine(*name, text)) {
        text.assign(line->text.substr(0, line->keyLength)).append("=").append(OneLine(value));
        line->text = Keep(std::move(text));
        return;
    }
    // A new line is read as it will be from the file: a key with "=" in it ends there.
    Section* const known = FindSection(*name);
    Section& place = known != nullptr ? *known : SectionOf(Keep(header));
    std::vector<std::string_view> blanks = std::exchange(place.blanksAtEnd, {});
    AddLine(place, Keep(text.append("=").append(OneLine(value))));
    place.blanksAtEnd = std::move(blanks);
}

void ProfileText::Respell(std::string_view section, std::string_view key) {
    if (Line* const line = FindLine(section, key)) {
        line->text = Keep(std::string(key).append(line->text.substr(line->keyLength)));
        line->keyLength = key.size();
    }
}

void ProfileText::Remove(std::string_view section, std::string_view key) {
    if (Line* const line = FindLine(section, key)) {
        // Only marked, so that removing many keys does not move the rest for each of them.
        line->removed = true;
        FindSection(section)->keys.erase(key);
    }
}

std::string ProfileText::Text() const {
    std::string text;
    const auto add = [&](std::string_view line) { text.append(line).append(LineEnd); };
    std::for_each(preamble_.begin(), preamble_.end(), add);
    for (const Section& section : sections_) {
        add(section.header);
        for (const Line& line : section.lines) {
            if (!line.removed) {
                add(line.text);
            }
        }
        std::for_each(section.blanksAtEnd.begin(), section.blanksAtEnd.end(), add);
    }
    return text;
}

}  // namespace sonnel
