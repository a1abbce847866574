// Any bytes as a karaoke file: whatever they are, the conversion comes to an end, and the player
// reads what was written line for line.

#include "convert/EstraiParole.h"
#include "fakes/ScriptedMsgBox.h"
#include "platform/Numbers.h"
#include "platform/Text.h"
#include "song/LeggiKaraoke.h"

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

/// How many lines of a LYK text are events, going by their columns.
int CountEvents(std::string_view text) {
    int count = 0;
    for (std::size_t end; (end = text.find("\r\n")) != std::string_view::npos;
         text.remove_prefix(end + 2)) {
        if (text[0] >= '0' && text[0] <= '9') {
            count += sonnel::ReadInteger<int>(text.substr(5, 2)) <= 2 ? 1 : 0;
        }
    }
    return count;
}

void CheckText(const std::string& text) {
    sonnel::Timeline timeline;
    sonnel::InformazioniBrano info;
    sonnel::test::ScriptedMsgBox msgBox;
    const std::string read = sonnel::DecodeFileText(sonnel::EncodeFileText(text));
    Require(sonnel::LeggiRighe(read, true, timeline, info, msgBox) ==
            sonnel::EsitoLettura::Completa);
    Require(timeline.NumEventi() == CountEvents(text));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    sonnel::Midifile midifile;
    if (midifile.OpenContent(std::string(data, data + size))) {
        return 0;
    }
    const auto base = sonnel::BaseTempi::Leggi(midifile);
    if (base) {
        CheckText(sonnel::EstraiParole(midifile, *base, {}).Testo);
    }
    return 0;
}
