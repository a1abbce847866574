#include "platform/FileRegistry.h"

#include "platform/RegistryText.h"
#include "platform/files/Files.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>
#include <vector>

namespace sonnel {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t NumberSize = 4;

/// What the file says; a missing file says nothing.
Result<RegistryText> Load(const fs::path& file) {
    const Result<std::string> content = ReadFile(file);
    if (content) {
        return RegistryText(*content);
    }
    const int number = content.error().number;
    return number == ENOENT || number == ENOTDIR ? Result<RegistryText>(RegistryText(""))
                                                 : content.error();
}

int Store(const fs::path& file, const RegistryText& text) {
    std::error_code error;
    fs::create_directories(file.parent_path(), error);
    const std::optional<Error> failure = WriteFileAtomically(file, text.Text());
    return failure ? failure->number : 0;
}

/// The path without separators at its ends.
std::string_view Normal(std::string_view path) {
    const std::size_t start = std::min(path.find_first_not_of('\\'), path.size());
    path.remove_prefix(start);
    return path.substr(0, path.find_last_not_of('\\') + 1);
}

bool IsKeyPath(std::string_view path) {
    return std::none_of(path.begin(), path.end(), [](char character) {
        return static_cast<unsigned char>(character) < 0x20U;
    });
}

fs::path InConfiguration(const fs::path& directory) {
    return directory / "sonnel" / "settings.conf";
}

}  // namespace

FileRegistry::FileRegistry(fs::path currentUser, fs::path localMachine)
    : currentUser_(std::move(currentUser)), localMachine_(std::move(localMachine)) {}

const fs::path& FileRegistry::FileOf(RegistryRoot root) const {
    return root == RegistryRoot::CurrentUser ? currentUser_ : localMachine_;
}

RegistryKey FileRegistry::Remember(RegistryRoot root, std::string_view path) {
    ++lastKey_;
    open_[lastKey_] = {root, std::string(path)};
    return lastKey_;
}

int FileRegistry::OpenKey(RegistryRoot root, std::string_view path, RegistryKey& key) {
    path = Normal(path);
    const Result<RegistryText> text = Load(FileOf(root));
    if (!text) {
        return text.error().number;
    }
    if (!text->HasKey(path)) {
        return ENOENT;
    }
    key = Remember(root, path);
    return 0;
}

int FileRegistry::CreateKey(RegistryRoot root, std::string_view path, RegistryKey& key) {
    path = Normal(path);
    if (!IsKeyPath(path)) {
        return EINVAL;
    }
    Result<RegistryText> text = Load(FileOf(root));
    if (!text) {
        return text.error().number;
    }
    if (!text->HasKey(path)) {
        text->AddKey(path);
        if (const int status = Store(FileOf(root), *text); status != 0) {
            return status;
        }
    }
    key = Remember(root, path);
    return 0;
}

int FileRegistry::QueryValue(RegistryKey key, std::string_view name, RegistryType& type,
                             std::string& data) {
    const auto place = open_.find(key);
    if (place == open_.end()) {
        return EBADF;
    }
    const Result<RegistryText> text = Load(FileOf(place->second.root));
    if (!text) {
        return text.error().number;
    }
    const RegistryText::Value* const value = text->Find(place->second.path, name);
    if (value == nullptr) {
        return ENOENT;
    }
    type = value->type;
    data = value->data;
    return 0;
}

int FileRegistry::SetValue(RegistryKey key, std::string_view name, RegistryType type,
                           std::string_view data) {
    const auto place = open_.find(key);
    if (place == open_.end()) {
        return EBADF;
    }
    if (type == RegistryType::Number && data.size() != NumberSize) {
        return EINVAL;
    }
    const fs::path& file = FileOf(place->second.root);
    Result<RegistryText> text = Load(file);
    if (!text) {
        return text.error().number;
    }
    text->Set(place->second.path, name, {type, std::string(data)});
    return Store(file, *text);
}

void FileRegistry::CloseKey(RegistryKey key) {
    open_.erase(key);
}

fs::path UserSettingsFile(const Environment& environment) {
    if (const auto directory = NamedDirectory(environment, "XDG_CONFIG_HOME")) {
        return InConfiguration(*directory);
    }
    if (const auto directory = NamedDirectory(environment, "APPDATA")) {
        return InConfiguration(*directory);
    }
    if (const auto home = NamedDirectory(environment, "HOME")) {
        return InConfiguration(*home / ".config");
    }
    return {};
}

fs::path MachineSettingsFile(const Environment& environment) {
    constexpr const char* Usual = "/etc/xdg";
    const std::vector<fs::path> directories =
        NamedDirectories(environment, "XDG_CONFIG_DIRS", Usual);
    for (const fs::path& directory : directories) {
        std::error_code ignored;
        if (fs::exists(InConfiguration(directory), ignored)) {
            return InConfiguration(directory);
        }
    }
    return InConfiguration(directories.empty() ? Usual : directories.front());
}

}  // namespace sonnel
