#pragma once

#include "platform/Environment.h"
#include "platform/Registry.h"

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

namespace sonnel {

/// The settings store in text files, one for each root, that can be edited by hand:
///
///     ; a comment
///     [Software\Corvane\Sonnel Player\Font]
///     Nome=Arial
///     Flags=number:65536
///     Data=binary:00 FF
///     @=the key's default value
///
/// Blanks around names and values do not count. "\" in a name or value begins an escape: "\\" is
/// itself, "\n", "\r" and "\0" are LF, CR and NUL, "\s" and "\t" a blank and a tab, and any other
/// character stands for itself. Lines that say nothing of this kind, comments too, are ignored and
/// kept when the file is written. Of several lines for one value the last one counts.
///
/// Nothing is held in memory: every operation sees what is on disk, so two players do not undo each
/// other's settings. A file that is missing or cannot be read has no keys. Statuses are the
/// system's error numbers; a file that is there but cannot be read is never written.
class FileRegistry : public Registry {
  public:
    FileRegistry(std::filesystem::path currentUser, std::filesystem::path localMachine);

    int OpenKey(RegistryRoot root, std::string_view path, RegistryKey& key) override;
    int CreateKey(RegistryRoot root, std::string_view path, RegistryKey& key) override;
    int QueryValue(RegistryKey key, std::string_view name, RegistryType& type,
                   std::string& data) override;
    int SetValue(RegistryKey key, std::string_view name, RegistryType type,
                 std::string_view data) override;
    void CloseKey(RegistryKey key) override;

  private:
    struct Place {
        RegistryRoot root;
        std::string path;
    };

    [[nodiscard]] const std::filesystem::path& FileOf(RegistryRoot root) const;
    [[nodiscard]] RegistryKey Remember(RegistryRoot root, std::string_view path);

    std::filesystem::path currentUser_;
    std::filesystem::path localMachine_;
    std::map<RegistryKey, Place> open_;
    RegistryKey lastKey_ = 0;
};

/// Where the settings of the user and of the machine are: sonnel/settings.conf in the first
/// configuration directory that the environment names. Empty when it names none.
[[nodiscard]] std::filesystem::path UserSettingsFile(const Environment& environment);
[[nodiscard]] std::filesystem::path MachineSettingsFile(const Environment& environment);

}  // namespace sonnel
