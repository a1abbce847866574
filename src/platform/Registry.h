#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace sonnel {

enum class RegistryRoot { CurrentUser, LocalMachine };
enum class RegistryType : std::uint32_t { String = 1, Binary = 3, Number = 4 };

/// An open key; 0 is no key.
using RegistryKey = std::uint32_t;

/// The door to the settings store: typed values under a root and a key path whose parts are
/// separated by "\". Names compare without regard to case. Every operation returns a status, 0 for
/// success and the platform's number otherwise; a failed operation leaves the store as it was.
class Registry {
  public:
    virtual ~Registry() = default;
    virtual int OpenKey(RegistryRoot root, std::string_view path, RegistryKey& key) = 0;
    /// Creates the key (and its parents) when it is missing, and opens it.
    virtual int CreateKey(RegistryRoot root, std::string_view path, RegistryKey& key) = 0;
    /// Type and data of a value; "" names the key's default value. A string's data are its bytes, a
    /// number's its four bytes, lowest first.
    virtual int QueryValue(RegistryKey key, std::string_view name, RegistryType& type,
                           std::string& data) = 0;
    virtual int SetValue(RegistryKey key, std::string_view name, RegistryType type,
                         std::string_view data) = 0;
    virtual void CloseKey(RegistryKey key) = 0;
};

}  // namespace sonnel
