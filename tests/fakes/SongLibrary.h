#pragma once

#include "fakes/FakeLibraryWindows.h"
#include "fakes/ScriptedMsgBox.h"
#include "fakes/TempDirectory.h"
#include "library/CaricaIndice.h"

#include <string>
#include <utility>
#include <vector>

namespace sonnel::test {

/// A karaoke directory and everything the library's operations use.
struct SongLibrary {
    SongLibrary() { config.OpenDir = directory.Path().string() + "/"; }

    void Lyk(const std::string& file, const std::string& header = "") const {
        directory.Write(file, "Cantabelle1.0\r\n" + header + "0010001x\r\n*TIlate\r\n");
    }
    void Index(const std::string& content) const { directory.Write("sonnel.snl", content); }
    std::string Index() const { return Content(directory / "sonnel.snl"); }
    /// Its songs, as in the index.
    std::vector<std::string> Table() const {
        std::vector<std::string> songs;
        for (int p = 1; p <= brani.NumBrani(); ++p) {
            const Brano& song = brani.Brani(static_cast<std::int16_t>(p));
            songs.push_back(song.NomeFile + "=" + song.Titolo + "|" + song.Autore + "|" +
                            song.Album);
        }
        return songs;
    }
    /// The texts of the messages since it was asked last.
    std::vector<std::string> Messages() {
        std::vector<std::string> texts;
        for (const Message& message : std::exchange(msgBox.shown, {})) {
            texts.push_back(message.text);
        }
        return texts;
    }

    TempDirectory directory;
    Config config;
    TabellaBrani brani;
    ScriptedMsgBox msgBox;
    FakeLibraryWindows windows;
    Libreria libreria{config, brani, msgBox, windows};
};

}  // namespace sonnel::test
