#include "platform/qt/QtRegistry.h"

#include "platform/Paths.h"
#include "platform/files/Files.h"

#include <QStringList>
#include <QVariant>
#include <cerrno>
#include <cstdint>
#include <string>
#include <system_error>
#include <variant>
#include <vector>

namespace sonnel {
namespace {

namespace fs = std::filesystem;

/// Whether a file can be read, or is still to be made.
bool CanBeUsed(const fs::path& file) {
    const Result<std::string> content = ReadFile(file);
    return content || content.error().number == ENOENT || content.error().number == ENOTDIR;
}

std::unique_ptr<QSettings> Open(const fs::path& file) {
    if (file.empty() || !CanBeUsed(file)) {
        return nullptr;
    }
    return std::make_unique<QSettings>(QString::fromStdString(Utf8FromPath(file)),
                                       QSettings::IniFormat);
}

/// The name of a value in its file.
QString SettingOf(const RegistryKey& key, std::string_view name) {
    const std::string own = std::string(PlayerPath) + '\\';
    std::string path = key.path + '\\';
    path.erase(0, path.starts_with(own) ? own.size() : 0);
    const QByteArray encoded = QByteArray(name.data(), static_cast<qsizetype>(name.size()));
    return QString::fromStdString(path).replace('\\', '/') +
           QString::fromLatin1(encoded.toPercentEncoding());
}

/// A value as it is stored. Bytes that are no UTF-8 text are kept as bytes.
QVariant Stored(const RegistryValue& value) {
    if (const auto* const number = std::get_if<std::int32_t>(&value)) {
        return QString::number(*number);
    }
    const auto& bytes = std::get<std::string>(value);
    const QString text = QString::fromStdString(bytes);
    return text.toStdString() == bytes ? QVariant(text) : QByteArray::fromStdString(bytes);
}

fs::path InConfiguration(const fs::path& directory) {
    return directory / "sonnel" / "settings.conf";
}

}  // namespace

QtRegistry::QtRegistry(const fs::path& currentUser, const fs::path& localMachine)
    : currentUser_(Open(currentUser)), localMachine_(Open(localMachine)) {}

QSettings* QtRegistry::FileOf(RegistryRoot root) const {
    return (root == RegistryRoot::CurrentUser ? currentUser_ : localMachine_).get();
}

std::optional<RegistryValue> QtRegistry::Read(const RegistryKey& key, std::string_view name) {
    QSettings* const file = FileOf(key.root);
    if (file == nullptr) {
        return std::nullopt;
    }
    file->sync();  // reads what has changed on disk
    const QVariant value = file->value(SettingOf(key, name));
    if (value.typeId() == QMetaType::QByteArray) {
        return value.toByteArray().toStdString();
    }
    if (!value.canConvert<QStringList>()) {
        return std::nullopt;
    }
    return value.toStringList().join(", ").toStdString();  // a comma without quotes makes a list
}

void QtRegistry::Write(const RegistryKey& key, std::string_view name, const RegistryValue& value) {
    if (QSettings* const file = FileOf(key.root)) {
        file->setValue(SettingOf(key, name), Stored(value));
    }
}

bool QtRegistry::Create(const RegistryKey& key) {
    return FileOf(key.root) != nullptr;
}

void QtRegistry::Remove(const RegistryKey& key, std::string_view name) {
    QSettings* const file = FileOf(key.root);
    if (file != nullptr && !name.empty()) {  // a key's own name would take all that is below along
        file->remove(SettingOf(key, name));
    }
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
