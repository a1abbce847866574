#include "platform/audio/AudioDriver.h"

#include <string_view>

namespace sonnel {

AudioDriver ChooseAudioDriver(const std::string& setting, const Environment& environment) {
    constexpr std::string_view filePrefix = "file:";
    const std::string choice = setting.empty() ? environment("SONNEL_AUDIO") : setting;
    if (choice == "none") {
        return {AudioDriver::Kind::Silence, {}};
    }
    if (choice.starts_with(filePrefix)) {
        return {AudioDriver::Kind::File, choice.substr(filePrefix.size())};
    }
    return {AudioDriver::Kind::Device, choice};
}

}  // namespace sonnel
