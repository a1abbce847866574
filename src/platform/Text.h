#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace sonnel {

/// Program text is UTF-8; these count and cut it by code points. A byte that is no part of a valid
/// sequence counts as one character of its own.
[[nodiscard]] std::size_t CodePoints(std::string_view text);
/// The first `count` code points of a text, all of it when it is shorter.
[[nodiscard]] std::string_view FirstCodePoints(std::string_view text, std::size_t count);

[[nodiscard]] bool IsValidUtf8(std::string_view bytes);

/// Windows-1252 to UTF-8. The five bytes the code page leaves open (81, 8D, 8F, 90, 9D) map to the
/// code points of the same number, so every byte survives a round trip.
[[nodiscard]] std::string FromWindows1252(std::string_view bytes);
/// UTF-8 to Windows-1252, or nothing when the text holds a character the code page lacks.
[[nodiscard]] std::optional<std::string> ToWindows1252(std::string_view text);

/// The byte order mark at the beginning of files that are UTF-8.
inline constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";

/// The bytes of a song or index file as UTF-8 text: after a UTF-8 byte order mark (which is
/// dropped) they are UTF-8 already, otherwise Windows-1252.
[[nodiscard]] std::string DecodeFileText(std::string_view bytes);
/// The opposite: Windows-1252 where that holds every character, else UTF-8 after its mark.
[[nodiscard]] std::string EncodeFileText(std::string_view text);

/// A text whose encoding is unknown: UTF-8 when its bytes are that, otherwise Windows-1252.
[[nodiscard]] std::string DecodeUnmarkedText(std::string_view bytes);

/// A text for one line of a file: each line end's CR and LF and each NUL in it becomes a blank.
[[nodiscard]] std::string OneLine(std::string_view text);

/// A key under which texts that differ only in letter case are equal: each code point becomes its
/// small letter (without utf8proc only ASCII ones do), and invalid bytes stay as they are.
[[nodiscard]] std::string FoldCase(std::string_view text);

/// A text as it is searched: letter case and marks such as accents do not count, "ß" is "ss".
/// Without utf8proc only ASCII letters are folded.
[[nodiscard]] std::string FoldForSearch(std::string_view text);

/// For containers whose keys are equal when their FoldCase is: nothing is built for a key of ASCII.
struct FoldedHash {
    [[nodiscard]] std::size_t operator()(std::string_view text) const;
};
struct FoldedEqual {
    [[nodiscard]] bool operator()(std::string_view one, std::string_view other) const;
};

/// What failed and why as one sentence: `reason`, which may be a sentence of its own, goes on after
/// a colon.
[[nodiscard]] std::string WithReason(std::string failure, std::string_view reason);

}  // namespace sonnel
