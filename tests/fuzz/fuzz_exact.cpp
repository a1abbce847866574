// Any bytes as a MIDI file: the song that the exact reading makes reads back with as many events as
// were written, its times never go back, and its pages fit.

#include "Fuzz.h"

#include "fakes/ScriptedMsgBox.h"
#include "platform/Text.h"
#include "platform/files/LineReader.h"
#include "song/LeggiKaraoke.h"
#include "song/LetturaEsatta.h"

void sonnel::Check(const std::string& bytes) {
    const auto file = ReadSmf(bytes);
    const auto made = file ? LeggiEsatto(*file, "A - B") : file.error();
    if (!made) {
        return;
    }
    const std::string text = DecodeFileText(EncodeFileText(made->Testo));
    Require(text == made->Testo);
    LineReader lines(text);
    int written = 0;
    for (auto line = lines.Next(); (line = lines.Next());) {
        written += line->starts_with('*') ? 0 : 1;
    }
    Timeline timeline;
    InformazioniBrano info;
    test::ScriptedMsgBox msgBox;
    Require(LeggiRighe(text, true, timeline, info, msgBox) == EsitoLettura::Completa);
    Require(msgBox.shown.empty());  // no page was too long
    Require(timeline.NumEventi() == written && written > 1);
    for (std::int16_t i = 2; i <= timeline.NumEventi(); ++i) {
        Require(timeline.Eventi(i - 1).Tempo <= timeline.Eventi(i).Tempo);
    }
}
