#pragma once

#include "platform/Registry.h"
#include "platform/Text.h"

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace sonnel::test {

/// A settings store in memory. What was asked for is kept in order, and so are the keys still open.
class MemoryRegistry : public Registry {
  public:
    static constexpr int NotFound = 2;
    struct Value {
        RegistryType type;
        std::string data;
    };

    int OpenKey(RegistryRoot root, std::string_view path, RegistryKey& key) override {
        const Place place{root, FoldCase(path)};
        return keys_.contains(place) ? Open(place, key) : NotFound;
    }
    int CreateKey(RegistryRoot root, std::string_view path, RegistryKey& key) override {
        changes.push_back("create " + std::string(path));
        for (std::size_t end = path.find('\\'); end != std::string_view::npos;
             end = path.find('\\', end + 1)) {
            keys_[{root, FoldCase(path.substr(0, end))}];
        }
        const Place place{root, FoldCase(path)};
        keys_[place];
        return Open(place, key);
    }
    int QueryValue(RegistryKey key, std::string_view name, RegistryType& type,
                   std::string& data) override {
        queried.emplace_back(name);
        const auto& values = keys_.at(open.at(key));
        const auto found = values.find(FoldCase(name));
        if (found == values.end()) {
            return NotFound;
        }
        type = found->second.type;
        data = found->second.data;
        return 0;
    }
    int SetValue(RegistryKey key, std::string_view name, RegistryType type,
                 std::string_view data) override {
        changes.push_back("set " + open.at(key).second + "|" + std::string(name) + "=" +
                          std::string(data));
        written.emplace_back(name);
        keys_.at(open.at(key))[FoldCase(name)] = {type, std::string(data)};
        return 0;
    }
    void CloseKey(RegistryKey key) override { open.erase(key); }

    /// Puts a value there without a trace.
    void Put(RegistryRoot root, std::string_view path, std::string_view name, RegistryType type,
             std::string_view data) {
        keys_[{root, FoldCase(path)}][FoldCase(name)] = {type, std::string(data)};
    }
    /// The value of that name, nullptr when there is none.
    const Value* Get(RegistryRoot root, std::string_view path, std::string_view name) const {
        const auto key = keys_.find({root, FoldCase(path)});
        if (key == keys_.end()) {
            return nullptr;
        }
        const auto value = key->second.find(FoldCase(name));
        return value != key->second.end() ? &value->second : nullptr;
    }

    using Place = std::pair<RegistryRoot, std::string>;
    std::vector<std::string> queried;
    std::vector<std::string> written;
    std::vector<std::string> changes;  ///< everything asked for that changes the store
    std::map<RegistryKey, Place> open;

  private:
    int Open(const Place& place, RegistryKey& key) {
        key = ++lastKey_;
        open[key] = place;
        return 0;
    }

    std::map<Place, std::map<std::string, Value>> keys_;
    RegistryKey lastKey_ = 0;
};

}  // namespace sonnel::test
