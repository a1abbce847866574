#pragma once

#include <optional>
#include <string_view>

namespace sonnel {

/// Walks the lines of a text. CR LF ends a line and so does a lone CR; a lone LF stays in its line.
/// A text that ends with a line end has no further line after it; a text of no characters has one
/// empty line.
class LineReader {
  public:
    explicit LineReader(std::string_view text) : rest_(text) {}
    /// The next line without its end, or nothing after the last one. Refers into the text.
    std::optional<std::string_view> Next();

  private:
    std::string_view rest_;
    bool done_ = false;
};

}  // namespace sonnel
