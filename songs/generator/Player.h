#pragma once

#include "generator/Arranger.h"
#include "generator/Score.h"

namespace sonnel::songs {

/// Plays one track of a score, passage by passage.
class Player {
  public:
    Player(const Score& score, const Track& track, int channel);

    /// Plays a passage that starts at this tick.
    void Play(const Passage& passage, int start);
    /// What was played, in order.
    [[nodiscard]] MidiTrack Finish() &&;

  private:
    /// One sounding pattern step: where in the passage it is and how long it lasts.
    struct Step {
        int start = 0;
        int length = 0;
        char letter = '.';
    };

    void SetUp();
    void Add(int tick, Rank rank, int status, int data1, int data2);
    void Control(int tick, int controller, int value);
    void Sound(int tick, int length, int key, int velocity);
    void PlayTune(const Passage& passage, int start, int delay);
    void Ornament(int tick, int length);
    void PlayPatterns(const Passage& passage, int start);
    void PlayChordStep(const Step& step, const Chord& chord, int tick, int level);
    void PlayBassStep(const Step& step, const Chord& chord, int tick, int level);
    void PlayDrums(const Passage& passage, int start);
    void Shade(const Passage& passage, int start);
    [[nodiscard]] int Velocity(int base, int tick, int level) const;

    const Score& score_;
    const Track& track_;
    int channel_;
    MidiTrack out_;
};

}  // namespace sonnel::songs
