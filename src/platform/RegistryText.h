#pragma once

#include "platform/Registry.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sonnel {

/// The text of a settings file: its lines, with those that make keys and values understood. How it
/// looks is told at FileRegistry.
class RegistryText {
  public:
    struct Value {
        RegistryType type = RegistryType::String;
        std::string data;
    };

    explicit RegistryText(std::string_view text);

    /// Whether the key or one below it is there. The path "" is the root, which always is.
    [[nodiscard]] bool HasKey(std::string_view path) const;
    [[nodiscard]] const Value* Find(std::string_view path, std::string_view name) const;
    void AddKey(std::string_view path);
    /// Sets a value, making its key when it is missing.
    void Set(std::string_view path, std::string_view name, Value value);
    [[nodiscard]] std::string Text() const;

  private:
    struct Line {
        std::string text;
        std::string name;            ///< with letter case folded
        std::optional<Value> value;  ///< nothing: the line makes no value
    };
    struct Section {
        std::optional<std::string> path;  ///< with letter case folded; nothing: before any key
        std::string header;
        std::vector<Line> lines;
    };

    struct LinePlace {
        std::size_t section;
        std::size_t line;
    };

    static Line ParseLine(std::string_view text);
    [[nodiscard]] std::optional<LinePlace> FindLine(std::string_view path,
                                                    std::string_view name) const;
    Section& SectionOf(std::string_view path);

    std::vector<Section> sections_;
};

}  // namespace sonnel
