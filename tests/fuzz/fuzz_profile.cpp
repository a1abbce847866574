// Any bytes as a profile file: whatever they are, what is written and read again is the same, and
// operations in a batch leave what the same operations leave one by one on the file.

#include "platform/Text.h"
#include "platform/files/LineReader.h"
#include "platform/files/ProfileText.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

/// The profile as it comes back from disk.
sonnel::ProfileText Landed(const sonnel::ProfileText& profile) {
    const std::string bytes = sonnel::EncodeFileText(profile.Text());
    return sonnel::ProfileText(sonnel::DecodeFileText(bytes));
}

/// Both have the same keys and values in every section of either.
void RequireSame(const sonnel::ProfileText& one, const sonnel::ProfileText& other) {
    const std::string text = one.Text() + other.Text();
    sonnel::LineReader lines(text);
    while (const auto line = lines.Next()) {
        if (!line->starts_with('[')) {
            continue;
        }
        const std::string_view section = line->substr(1, line->find(']') - 1);
        Require(one.Keys(section) == other.Keys(section));
        for (const std::string_view key : one.Keys(section)) {
            Require(one.Find(section, key) && one.Find(section, key) == other.Find(section, key));
        }
    }
}

/// One operation, chosen by a byte, on a name cut from the text.
void Operate(sonnel::ProfileText& profile, unsigned char choice, std::string_view name) {
    if (choice % 3 == 0) {
        profile.Set("Songs", name, name);
    } else if (choice % 3 == 1) {
        profile.Remove("Songs", name);
    } else {
        profile.Set(name, "key", "value");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(data, data + size);
    const std::string text = sonnel::DecodeFileText(bytes);
    sonnel::ProfileText batch(text);
    RequireSame(batch, Landed(batch));

    sonnel::ProfileText single(text);
    constexpr std::size_t Operations = 8;
    for (std::size_t i = 0; i < std::min(size, Operations); ++i) {
        const std::size_t start = data[i] % (text.size() + 1);
        const std::string name = text.substr(start, data[size - 1 - i] % 16U);
        Operate(batch, data[i], name);
        Operate(single, data[i], name);
        single = Landed(single);
        RequireSame(batch, single);
    }
    return 0;
}
