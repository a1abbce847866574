#pragma once

#include "platform/Result.h"
#include "platform/files/ProfileText.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sonnel {

/// A profile file: sections of key=value lines, such as the library's index. How its text is read
/// is described at ProfileText. On disk it is Windows-1252, or UTF-8 after its byte order mark.
///
/// Nothing is held in memory outside a batch: every operation sees what is on disk. A file that is
/// missing or cannot be read has no sections. A write makes the file when it is missing, replaces
/// it as a whole or leaves it as it was, and then returns why; a file that is there but cannot be
/// read is never written. Writers in other processes that use this class lose nothing.
class ProfileFile {
  public:
    explicit ProfileFile(std::filesystem::path file);

    [[nodiscard]] const std::filesystem::path& Path() const { return file_; }

    /// The key's value, or `defaultValue` when the key is absent.
    [[nodiscard]] std::string Read(std::string_view section, std::string_view key,
                                   std::string_view defaultValue) const;
    /// The names of the section's keys in the order of the file.
    [[nodiscard]] std::vector<std::string> Keys(std::string_view section) const;

    /// Each of these is ProfileText's operation of its name. One that changes nothing counts as
    /// not made.
    std::optional<Error> Set(std::string_view section, std::string_view key,
                             std::string_view value);
    std::optional<Error> Respell(std::string_view section, std::string_view key);
    std::optional<Error> Remove(std::string_view section, std::string_view key);

    /// While one is open the file is read once, at its beginning, and all operations work on what
    /// was read: a read sees the last write, and no write fails. A batch within a batch is a part
    /// of it: the outermost one decides.
    class Batch {
      public:
        explicit Batch(ProfileFile& profile);
        Batch(const Batch&) = delete;
        Batch& operator=(const Batch&) = delete;
        /// Without a Commit before, everything written since the beginning is forgotten.
        ~Batch();

        /// Puts all writes on disk at once. When the file has been changed by others meanwhile,
        /// the writes are made on what they left. On failure the file is as it was.
        std::optional<Error> Commit();

      private:
        ProfileFile& profile_;
        bool outermost_;
    };

  private:
    enum class Kind { Set, Respell, Remove };
    struct Change {
        Kind kind;
        std::string section;
        std::string key;
        std::string value;
    };
    struct Opened {
        std::string bytes;  ///< the file's, as it was read
        ProfileText text;
        std::vector<Change> changes;
    };

    [[nodiscard]] Opened Open() const;
    static void Apply(const Change& change, ProfileText& text);
    std::optional<Error> Make(Change change);
    [[nodiscard]] std::optional<Error> Store(const Opened& opened) const;

    std::filesystem::path file_;
    std::optional<Opened> batch_;
};

}  // namespace sonnel
