// Any bytes as a profile file: whatever they are, what is written and read again is the same, and
// operations in a batch leave what the same operations leave one by one on the file.

#include "Fuzz.h"

#include "platform/Text.h"
#include "platform/files/LineReader.h"
#include "platform/files/ProfileText.h"

#include <algorithm>
#include <string_view>

namespace sonnel {
namespace {

/// The profile as it comes back from disk.
ProfileText Landed(const ProfileText& profile) {
    return ProfileText(DecodeFileText(EncodeFileText(profile.Text())));
}

/// Both have the same keys and values in every section of either.
void RequireSame(const ProfileText& one, const ProfileText& other) {
    const std::string text = one.Text() + other.Text();
    LineReader lines(text);
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
void Operate(ProfileText& profile, unsigned char choice, std::string_view name) {
    if (choice % 3 == 0) {
        profile.Set("Songs", name, name);
    } else if (choice % 3 == 1) {
        profile.Remove("Songs", name);
    } else {
        profile.Set(name, "key", "value");
    }
}

}  // namespace

void Check(const std::string& bytes) {
    const std::string text = DecodeFileText(bytes);
    ProfileText batch(text);
    RequireSame(batch, Landed(batch));
    ProfileText single(text);
    constexpr std::size_t Operations = 8;
    for (std::size_t i = 0; i < std::min(bytes.size(), Operations); ++i) {
        const auto choice = static_cast<unsigned char>(bytes[i]);
        const auto length = static_cast<unsigned char>(bytes[bytes.size() - 1 - i]) % 16U;
        const std::string name = text.substr(choice % (text.size() + 1), length);
        Operate(batch, choice, name);
        Operate(single, choice, name);
        single = Landed(single);
        RequireSame(batch, single);
    }
}

}  // namespace sonnel
