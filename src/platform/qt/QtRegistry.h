#pragma once

#include "platform/Environment.h"
#include "platform/Registry.h"

#include <QSettings>
#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>

namespace sonnel {

/// The settings store in INI files, one for each root, that can be edited by hand:
///
///     [Font]
///     Nome=Arial
///
/// The player's own path is the top of a file. In other paths "/" takes the place of "\", and a
/// key's default value has the path itself as its name. Names are percent-encoded. All values are
/// texts, so a number reads as its digits.
///
/// Files are replaced as a whole when the event loop turns, once for all that was written until
/// then, and at the end. What another player has stored in the meantime is kept.
class QtRegistry : public Registry {
  public:
    /// A root has no values and stores none when its path is empty, or when its file is there but
    /// cannot be read: such a file stays as it is.
    QtRegistry(const std::filesystem::path& currentUser, const std::filesystem::path& localMachine);

    std::optional<RegistryValue> Read(const RegistryKey& key, std::string_view name) override;
    void Write(const RegistryKey& key, std::string_view name, const RegistryValue& value) override;
    /// Writes nothing: a key is there with its first value.
    bool Create(const RegistryKey& key) override;
    void Remove(const RegistryKey& key, std::string_view name) override;

  private:
    [[nodiscard]] QSettings* FileOf(RegistryRoot root) const;

    std::unique_ptr<QSettings> currentUser_;
    std::unique_ptr<QSettings> localMachine_;
};

/// Where the settings of the user and of the machine are: sonnel/settings.conf in the first
/// configuration directory that the environment names. Empty when it names none.
[[nodiscard]] std::filesystem::path UserSettingsFile(const Environment& environment);
[[nodiscard]] std::filesystem::path MachineSettingsFile(const Environment& environment);

}  // namespace sonnel
