// Any bytes as a karaoke file: whatever they are, the conversion comes to an end, and the player
// reads what was written line for line.

#include "convert/EstraiParole.h"
#include "fakes/ScriptedMsgBox.h"
#include "platform/Numbers.h"
#include "platform/Text.h"
#include "song/LeggiKaraoke.h"

#include <array>
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

using Kinds = std::array<int, 3>;

/// How many lines of a text stand for each kind of event, going by their columns.
Kinds CountLines(std::string_view text) {
    Kinds kinds{};
    for (std::size_t end; (end = text.find("\r\n")) != std::string_view::npos;
         text.remove_prefix(end + 2)) {
        const std::string_view line = text.substr(0, end);
        if (!line.starts_with("Cantabelle") && !line.starts_with('*')) {
            const auto kind = sonnel::ReadInteger<std::int16_t>(line.substr(5, 2));
            kinds.at(0) += kind == 0 ? 1 : 0;
            kinds.at(1) += kind == 1 ? 1 : 0;
            kinds.at(2) += kind == 2 ? 1 : 0;
        }
    }
    return kinds;
}

void CheckText(const std::string& text) {
    sonnel::Timeline timeline;
    sonnel::InformazioniBrano info;
    sonnel::test::ScriptedMsgBox msgBox;
    const auto outcome = sonnel::LeggiRighe(sonnel::DecodeFileText(sonnel::EncodeFileText(text)),
                                            true, timeline, info, msgBox);
    Require(outcome == sonnel::EsitoLettura::Completa);
    Kinds kinds{};
    for (std::int16_t i = 1; i <= timeline.NumEventi(); ++i) {
        ++kinds.at(static_cast<std::size_t>(timeline.Eventi(i).Tipo));
    }
    Require(kinds == CountLines(text));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    sonnel::Midifile midifile;
    if (midifile.OpenContent(std::string(data, data + size))) {
        return 0;
    }
    const auto base = sonnel::BaseTempi::Leggi(midifile);
    if (base) {
        const auto result = sonnel::EstraiParole(midifile, *base, {});
        Require(result.TestoIniziato || CountLines(result.Testo) == Kinds{});
        CheckText(result.Testo);
    }
    return 0;
}
