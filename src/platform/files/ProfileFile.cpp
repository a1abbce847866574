#include "platform/files/ProfileFile.h"

#include "platform/Text.h"
#include "platform/files/DirectoryLock.h"
#include "platform/files/Files.h"

#include <cerrno>
#include <utility>

namespace sonnel {
namespace {

/// The file's bytes; none when it is missing.
Result<std::string> Bytes(const std::filesystem::path& file) {
    Result<std::string> bytes = ReadFile(file);
    if (!bytes && (bytes.error().number == ENOENT || bytes.error().number == ENOTDIR)) {
        return std::string();
    }
    return bytes ? std::move(bytes) : ReadError(file, bytes.error().number);
}

}  // namespace

ProfileFile::ProfileFile(std::filesystem::path file) : file_(std::move(file)) {}

ProfileFile::Opened ProfileFile::Open() const {
    Result<std::string> bytes = Bytes(file_);
    if (!bytes) {
        return {{}, ProfileText(""), {}};
    }
    ProfileText text(DecodeFileText(*bytes));
    return {*std::move(bytes), std::move(text), {}};
}

std::string ProfileFile::Read(std::string_view section, std::string_view key,
                              std::string_view defaultValue) const {
    if (!batch_) {
        const Opened opened = Open();
        return std::string(opened.text.Find(section, key).value_or(defaultValue));
    }
    return std::string(batch_->text.Find(section, key).value_or(defaultValue));
}

std::vector<std::string> ProfileFile::Keys(std::string_view section) const {
    const std::optional<Opened> opened = batch_ ? std::nullopt : std::optional(Open());
    const ProfileText& text = batch_ ? batch_->text : opened->text;
    const std::vector<std::string_view> keys = text.Keys(section);
    return {keys.begin(), keys.end()};
}

void ProfileFile::Apply(const Change& change, ProfileText& text) {
    switch (change.kind) {
        case Kind::Set:
            text.Set(change.section, change.key, change.value);
            break;
        case Kind::Respell:
            text.Respell(change.section, change.key);
            break;
        case Kind::Remove:
            text.Remove(change.section, change.key);
            break;
    }
}

std::optional<Error> ProfileFile::Make(Change change) {
    Batch batch(*this);
    Apply(change, batch_->text);
    batch_->changes.push_back(std::move(change));
    return batch.Commit();
}

std::optional<Error> ProfileFile::Set(std::string_view section, std::string_view key,
                                      std::string_view value) {
    if (batch_ && batch_->text.Find(section, key) == value) {
        return std::nullopt;
    }
    return Make({Kind::Set, std::string(section), std::string(key), std::string(value)});
}

std::optional<Error> ProfileFile::Respell(std::string_view section, std::string_view key) {
    if (batch_ && !batch_->text.Find(section, key)) {
        return std::nullopt;
    }
    return Make({Kind::Respell, std::string(section), std::string(key), {}});
}

std::optional<Error> ProfileFile::Remove(std::string_view section, std::string_view key) {
    constexpr std::string_view Absent("\0", 1);  // no value holds a NUL character
    if (Read(section, key, Absent) == Absent) {
        return std::nullopt;
    }
    return Make({Kind::Remove, std::string(section), std::string(key), {}});
}

std::optional<Error> ProfileFile::Store(const Opened& opened) const {
    if (opened.changes.empty()) {
        return std::nullopt;
    }
    const DirectoryLock lock(file_.parent_path());
    const Result<std::string> now = Bytes(file_);
    if (!now) {
        return now.error();
    }
    std::string text;
    if (*now == opened.bytes) {
        text = opened.text.Text();
    } else {
        ProfileText changed(DecodeFileText(*now));
        for (const Change& change : opened.changes) {
            Apply(change, changed);
        }
        text = changed.Text();
    }
    const std::string bytes = EncodeFileText(text);
    return bytes != *now ? WriteFileAtomically(file_, bytes) : std::nullopt;
}

ProfileFile::Batch::Batch(ProfileFile& profile) : profile_(profile), outermost_(!profile.batch_) {
    if (outermost_) {
        profile_.batch_ = profile_.Open();
    }
}

ProfileFile::Batch::~Batch() {
    if (outermost_) {
        profile_.batch_.reset();
    }
}

std::optional<Error> ProfileFile::Batch::Commit() {
    if (!outermost_) {
        return std::nullopt;
    }
    std::optional<Error> error = profile_.Store(*profile_.batch_);
    profile_.batch_.reset();
    outermost_ = false;
    return error;
}

}  // namespace sonnel
