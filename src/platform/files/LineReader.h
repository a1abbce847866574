#pragma once

#include <optional>
#include <string_view>

namespace sonnel {

/// What ends a line beside CR LF and a lone CR.
enum class LineEnds {
    CrOnly,  ///< nothing: a lone LF stays in its line, as in song and index files
    AlsoLf,  ///< a lone LF too, as in files written by other editors
};

/// Walks the lines of a text. A text that ends with a line end has no further line after it; a text
/// of no characters has one empty line.
class LineReader {
  public:
    explicit LineReader(std::string_view text, LineEnds ends = LineEnds::CrOnly)
        : rest_(text), ends_(ends == LineEnds::AlsoLf ? "\r\n" : "\r") {}
    /// The next line without its end, or nothing after the last one. Refers into the text.
    std::optional<std::string_view> Next();

  private:
    std::string_view rest_;
    std::string_view ends_;
    bool done_ = false;
};

}  // namespace sonnel
