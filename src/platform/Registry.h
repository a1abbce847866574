#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace sonnel {

enum class RegistryRoot { CurrentUser, LocalMachine };

/// A key: a root and a path whose parts are separated by "\".
struct RegistryKey {
    RegistryRoot root;
    std::string path;
};

using RegistryValue = std::variant<std::string, std::int32_t>;

/// The path of the player's own keys.
inline constexpr std::string_view PlayerPath = "Software\\Corvane\\Sonnel Player";

/// The door to the settings store: values with names under keys. The name "" is a key's default
/// value. What cannot be written or removed stays as it is, without a report.
class Registry {
  public:
    virtual ~Registry() = default;
    /// Nothing when the value is absent or cannot be read.
    virtual std::optional<RegistryValue> Read(const RegistryKey& key, std::string_view name) = 0;
    /// Sets a value, and creates its key when it is missing.
    virtual void Write(const RegistryKey& key, std::string_view name,
                       const RegistryValue& value) = 0;
    /// Creates a key that may stay without values; false when there is no place for it.
    virtual bool Create(const RegistryKey& key) = 0;
    /// Removes a value that has a name; a default value stays.
    virtual void Remove(const RegistryKey& key, std::string_view name) = 0;
};

}  // namespace sonnel
