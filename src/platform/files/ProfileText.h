#pragma once

#include "platform/Text.h"

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace sonnel {

/// The text of a profile file: lines key=value under section lines such as [Songs].
///
/// A section line begins with "[", holds no "=", and its first "]" is its last character but for
/// blanks. Any other line is a key up to its first "=" and a value, taken raw, after it; a line
/// without "=" is a key without a value. Lines without meaning are kept where they are: blank
/// ones, those without a key or with a NUL character in it, those before the first section, and
/// those that begin with ";" and hold no "=". Names differ regardless of letter case. Sections of
/// one name are read as one; of several lines for one key the first counts and the others are
/// dropped.
class ProfileText {
  public:
    explicit ProfileText(std::string text);
    ProfileText(const ProfileText&) = delete;
    ProfileText& operator=(const ProfileText&) = delete;
    ProfileText(ProfileText&&) = default;
    ProfileText& operator=(ProfileText&&) = default;
    ~ProfileText() = default;

    /// The key's value ("" when it has none), or nothing when the key is absent. Refers into this
    /// text and is valid until it changes.
    [[nodiscard]] std::optional<std::string_view> Find(std::string_view section,
                                                       std::string_view key) const;
    /// The names of the section's keys in the order of the file.
    [[nodiscard]] std::vector<std::string_view> Keys(std::string_view section) const;

    /// Sets a value in place, or appends key and section where they are missing. Line ends and NUL
    /// characters in any of the three become blanks. An empty key, and a section whose name holds
    /// "]" or "=", changes nothing.
    void Set(std::string_view section, std::string_view key, std::string_view value);
    /// Gives a key that is there this spelling, which differs at most in letter case.
    void Respell(std::string_view section, std::string_view key);
    /// Removes the key; its section stays, even empty.
    void Remove(std::string_view section, std::string_view key);

    /// All lines, each ended by CR LF.
    [[nodiscard]] std::string Text() const;

  private:
    using Places = std::unordered_map<std::string_view, std::size_t, FoldedHash, FoldedEqual>;
    struct Line {
        std::string_view text;
        std::size_t keyLength = 0;  ///< 0: the line has no meaning
        bool removed = false;
    };
    struct Section {
        std::string_view header;  ///< the whole line
        std::vector<Line> lines;
        std::vector<std::string_view> blanksAtEnd;  ///< a new key comes before them
        Places keys;
    };

    static void AddLine(Section& section, std::string_view text);
    [[nodiscard]] const Section* FindSection(std::string_view name) const;
    Section* FindSection(std::string_view name);
    /// `header` stays valid.
    Section& SectionOf(std::string_view header);
    Line* FindLine(std::string_view section, std::string_view key);

    std::string_view Keep(std::string text);

    /// The file's text and lines that came later: all views refer into these, which never change or
    /// move.
    std::deque<std::string> texts_;
    std::vector<std::string_view> preamble_;
    std::vector<Section> sections_;
    Places names_;  ///< of sections
};

}  // namespace sonnel
