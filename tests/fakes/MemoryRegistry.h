#pragma once

#include "platform/Registry.h"

#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace sonnel::test {

/// A settings store in memory, which keeps in order what was asked for that changes it.
class MemoryRegistry : public Registry {
  public:
    std::optional<RegistryValue> Read(const RegistryKey& key, std::string_view name) override {
        const auto found = values_.find({key.root, key.path, std::string(name)});
        return found != values_.end() ? std::optional(found->second) : std::nullopt;
    }
    void Write(const RegistryKey& key, std::string_view name, const RegistryValue& value) override {
        const auto* const text = std::get_if<std::string>(&value);
        changes.push_back("set " + key.path + "|" + std::string(name) + "=" +
                          (text != nullptr ? *text : std::to_string(std::get<1>(value))));
        Put(key.root, key.path, name, value);
    }
    bool Create(const RegistryKey& key) override {
        changes.push_back("create " + key.path);
        return true;
    }
    void Remove(const RegistryKey& key, std::string_view name) override {
        values_.erase({key.root, key.path, std::string(name)});
    }

    /// Puts a value there without a trace.
    void Put(RegistryRoot root, const std::string& path, std::string_view name,
             const RegistryValue& value) {
        values_[{root, path, std::string(name)}] = value;
    }

    std::vector<std::string> changes;

  private:
    std::map<std::tuple<RegistryRoot, std::string, std::string>, RegistryValue> values_;
};

}  // namespace sonnel::test
