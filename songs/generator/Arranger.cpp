#include "generator/Arranger.h"

#include "generator/Player.h"
#include "platform/Numbers.h"

#include <algorithm>

namespace sonnel::songs {

namespace {

constexpr int DrumChannel = 9;

int Microseconds(double quartersPerMinute) {
    return RoundHalfEven<int>(60'000'000.0 / quartersPerMinute);
}

void SetTempo(Arrangement& song, int tick, double tempo) {
    const int microseconds = Microseconds(tempo);
    if (song.tempos.empty() || song.tempos.back().microseconds != microseconds) {
        song.tempos.push_back({tick, microseconds});
    }
}

/// Slows down evenly, quarter by quarter, to reach the wanted tempo with the last one.
void SlowDown(Arrangement& song, const Passage& passage, int end, int barTicks, double tempo) {
    const int quarters = passage.slowBars * barTicks / TicksPerQuarter;
    for (int i = 1; i <= quarters; ++i) {
        SetTempo(song, end - (quarters - i + 1) * TicksPerQuarter,
                 tempo + (*passage.slowTo - tempo) * i / quarters);
    }
}

void Sing(Arrangement& song, const Passage& passage, int start) {
    if (passage.verse == nullptr) {
        return;
    }
    auto note = passage.section->tune.begin();
    for (const VersePage& page : passage.verse->pages) {
        SungPage& sungPage = song.pages.emplace_back();
        for (const VerseLine& line : page) {
            SungLine& sungLine = sungPage.emplace_back();
            for (const Syllable& syllable : line) {
                if (!syllable.melisma) {
                    sungLine.push_back({start + note->start, syllable.text, syllable.startsWord});
                }
                ++note;
            }
        }
    }
}

}  // namespace

double Arrangement::Milliseconds(int tick) const {
    double milliseconds = 0;
    for (std::size_t i = 0; i < tempos.size() && tempos[i].tick < tick; ++i) {
        const int end = i + 1 < tempos.size() ? std::min(tempos[i + 1].tick, tick) : tick;
        milliseconds += static_cast<double>(end - tempos[i].tick) * tempos[i].microseconds /
                        (1000.0 * TicksPerQuarter);
    }
    return milliseconds;
}

Arrangement Arrange(const Score& score) {
    Arrangement song;
    std::vector<Player> players;
    int channel = 0;
    for (const Track& track : score.tracks) {
        const bool drums = track.role == Role::Drums;
        channel += !drums && channel == DrumChannel ? 1 : 0;
        players.emplace_back(score, track, drums ? DrumChannel : channel++);
    }
    const int barTicks = score.time.BarTicks();
    double tempo = score.tempo;
    for (const Passage& passage : score.passages) {
        const int start = song.endTick;
        const int end = start + passage.section->bars * barTicks;
        tempo = passage.tempo.value_or(tempo);
        SetTempo(song, start, tempo);
        if (passage.slowTo) {
            SlowDown(song, passage, end, barTicks, tempo);
        }
        for (Player& player : players) {
            player.Play(passage, start);
        }
        Sing(song, passage, start);
        song.endTick = end;
    }
    for (Player& player : players) {
        song.tracks.push_back(std::move(player).Finish());
    }
    return song;
}

}  // namespace sonnel::songs
