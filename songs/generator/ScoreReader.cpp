#include "generator/ScoreReader.h"

#include "generator/Notation.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <utility>

namespace sonnel::songs {

namespace {

/// A part of the score: the words between its brackets and the lines below them.
struct Block {
    int line = 0;
    std::vector<std::string> head;
    std::vector<SourceLine> lines;
};

std::vector<Block> CutIntoBlocks(std::string_view text) {
    std::istringstream in{std::string(text)};
    std::vector<Block> blocks{{1, {"header"}, {}}};
    int number = 0;
    for (std::string line; std::getline(in, line);) {
        ++number;
        line.erase(line.find_last_not_of(" \t\r") + 1);
        if (line.starts_with('#')) {
            continue;
        }
        if (line.starts_with('[') && line.ends_with(']')) {
            blocks.push_back({number, Tokens(line.substr(1, line.size() - 2)), {}});
        } else {
            blocks.back().lines.push_back({number, line});
        }
    }
    return blocks;
}

/// The first word of a line and the rest after it.
std::pair<std::string, std::string> FirstWord(const std::string& line) {
    const std::size_t begin = std::min(line.find_first_not_of(" \t"), line.size());
    const std::size_t end = std::min(line.find_first_of(" \t", begin), line.size());
    const std::size_t rest = std::min(line.find_first_not_of(" \t", end), line.size());
    return {line.substr(begin, end - begin), line.substr(rest)};
}

TimeSignature ReadTime(const std::string& text, int line) {
    const std::size_t slash = std::min(text.find('/'), text.size());
    TimeSignature time;
    time.beats = Number(text.substr(0, slash), 1, 16, line);
    time.unit = slash < text.size() ? Number(text.substr(slash + 1), 2, 8, line) : 0;
    if (time.unit != 2 && time.unit != 4 && time.unit != 8) {
        throw ScoreError(line, "\"" + text + "\" is not a time signature");
    }
    return time;
}

void ReadHeader(const Block& block, Score& score) {
    const std::map<std::string, std::string*> texts = {{"title", &score.title},
                                                       {"author", &score.author},
                                                       {"album", &score.album},
                                                       {"language", &score.language},
                                                       {"key", &score.key}};
    for (const SourceLine& line : block.lines) {
        const auto [name, value] = FirstWord(line.text);
        if (name.empty()) {
            continue;
        }
        if (const auto text = texts.find(name); text != texts.end()) {
            *text->second = value;
        } else if (name == "time") {
            score.time = ReadTime(value, line.number);
        } else if (name == "tempo") {
            score.tempo = Number(value, 20, 300, line.number);
        } else if (name == "octave") {
            score.octave = Number(value, 1, 7, line.number);
        } else {
            throw ScoreError(line.number, "\"" + name + "\" is unknown in the header");
        }
    }
    if (score.title.empty() || score.author.empty()) {
        throw ScoreError(block.line, "a score needs a title and an author");
    }
}

Role ReadRole(const std::string& text, int line) {
    static const std::map<std::string, Role> roles = {{"tune", Role::Tune},
                                                      {"echo", Role::Echo},
                                                      {"chords", Role::Chords},
                                                      {"bass", Role::Bass},
                                                      {"drums", Role::Drums}};
    const auto role = roles.find(text);
    if (role == roles.end()) {
        throw ScoreError(line, "\"" + text + "\" is not a track's role");
    }
    return role->second;
}

Track ReadTrack(const SourceLine& line) {
    const std::vector<std::string> tokens = Tokens(line.text);
    if (tokens.size() < 2) {
        throw ScoreError(line.number, "a track has a name and a role");
    }
    Track track;
    track.name = tokens[0];
    track.role = ReadRole(tokens[1], line.number);
    const std::map<std::string, int*> numbers = {
        {"program", &track.program}, {"volume", &track.volume}, {"pan", &track.pan},
        {"reverb", &track.reverb},   {"chorus", &track.chorus}, {"octave", &track.octave},
        {"low", &track.low}};
    const std::map<std::string, bool*> switches = {{"pedal", &track.pedal},
                                                   {"swell", &track.swell},
                                                   {"vibrato", &track.vibrato},
                                                   {"scoop", &track.scoop}};
    for (std::size_t i = 2; i < tokens.size(); ++i) {
        if (const auto flag = switches.find(tokens[i]); flag != switches.end()) {
            *flag->second = true;
        } else if (const auto number = numbers.find(tokens[i]);
                   number != numbers.end() && i + 1 < tokens.size()) {
            const bool octave = number->first == "octave";
            *number->second = Number(tokens[++i], octave ? -3 : 0, octave ? 3 : 127, line.number);
        } else {
            throw ScoreError(line.number, "\"" + tokens[i] + "\" is unknown for a track");
        }
    }
    track.program = std::max(track.program, 1);
    return track;
}

void ReadTracks(const Block& block, Score& score) {
    for (const SourceLine& line : block.lines) {
        if (!line.text.empty()) {
            score.tracks.push_back(ReadTrack(line));
        }
    }
    const auto tunes = std::count_if(score.tracks.begin(), score.tracks.end(),
                                     [](const Track& track) { return track.role == Role::Tune; });
    if (tunes != 1 || score.tracks.size() > 15) {
        throw ScoreError(block.line, "a score has one tune and at most 15 tracks");
    }
}

/// The characters a pattern of this role may hold.
std::string_view PatternLetters(const Score& score, const std::string& name) {
    if (DrumKey(name) != 0) {
        return "xXo.";
    }
    for (const Track& track : score.tracks) {
        if (track.name == name && track.role == Role::Chords) {
            return "xX123456.-";
        }
        if (track.name == name && track.role == Role::Bass) {
            return "R358.-";
        }
    }
    return "";
}

Style ReadStyle(const Block& block, const Score& score) {
    Style style;
    for (const SourceLine& line : block.lines) {
        std::vector<std::string> tokens = Tokens(line.text);
        if (tokens.empty()) {
            continue;
        }
        const std::string name = tokens.front();
        const std::string_view letters = PatternLetters(score, name);
        if (letters.empty()) {
            throw ScoreError(line.number, "no track or drum \"" + name + "\" plays a pattern");
        }
        tokens.erase(tokens.begin());
        std::erase(tokens, "|");
        for (const std::string& bar : tokens) {
            if (bar.find_first_not_of(letters) != std::string::npos ||
                score.time.BarTicks() % static_cast<int>(bar.size()) != 0) {
                throw ScoreError(
                    line.number,
                    std::string("\"").append(bar).append("\" is not a bar of ").append(name));
            }
        }
        if (tokens.empty()) {
            throw ScoreError(line.number, name + " has an empty pattern");
        }
        style[name] = std::move(tokens);
    }
    return style;
}

Section ReadSection(const Block& block, const Score& score) {
    std::vector<SourceLine> chords;
    std::vector<SourceLine> tune;
    int pickup = 0;
    for (const SourceLine& line : block.lines) {
        const auto [name, rest] = FirstWord(line.text);
        if (name == "chords") {
            chords.push_back({line.number, rest});
        } else if (name == "tune") {
            tune.push_back({line.number, rest});
        } else if (name == "pickup") {
            pickup = Duration(rest, line.number);
        } else if (!name.empty()) {
            throw ScoreError(line.number, "\"" + name + "\" is unknown in a section");
        }
    }
    Section section;
    section.line = block.line;
    section.chords = ReadChords(chords, score.time.BarTicks(), section.bars);
    if (section.bars == 0) {
        throw ScoreError(block.line, "a section needs chords");
    }
    section.tune = ReadTune(tune, score.time.BarTicks(), section.bars, pickup, score.octave);
    return section;
}

template <class T>
const T* Find(const std::map<std::string, T>& map, const std::string& name, const char* what,
              int line) {
    const auto found = map.find(name);
    if (found == map.end()) {
        throw ScoreError(line, std::string("there is no ") + what + " \"" + name + "\"");
    }
    return &found->second;
}

void ReadSlowing(const std::string& value, Passage& passage) {
    const std::size_t colon = std::min(value.find(':'), value.size());
    passage.slowTo = Number(value.substr(0, colon), 20, 300, passage.line);
    if (colon < value.size()) {
        passage.slowBars = Number(value.substr(colon + 1), 1, passage.section->bars, passage.line);
    }
}

void ReadOption(const std::string& token, const Score& score, Passage& passage) {
    const std::size_t equals = std::min(token.find('='), token.size());
    const std::string name = token.substr(0, equals);
    const std::string value = token.substr(std::min(equals + 1, token.size()));
    if (name == "style") {
        passage.style = Find(score.styles, value, "style", passage.line);
    } else if (name == "words") {
        passage.verse = Find(score.verses, value, "verse", passage.line);
    } else if (name == "tempo") {
        passage.tempo = Number(value, 20, 300, passage.line);
    } else if (name == "slow") {
        ReadSlowing(value, passage);
    } else if (name == "shift") {
        passage.shift = Number(value, -12, 12, passage.line);
    } else if (name == "echo") {
        passage.echo = Number(value, 0, passage.section->bars, passage.line);
    } else if (name == "level") {
        passage.level = Number(value, 1, 130, passage.line);
    } else {
        throw ScoreError(passage.line, "\"" + name + "\" is unknown in a passage");
    }
}

void CheckWords(const Passage& passage, const std::string& name) {
    const int notes = static_cast<int>(passage.section->tune.size());
    if (passage.verse != nullptr && passage.verse->Notes() != notes) {
        throw ScoreError(passage.verse->line, "these words have " +
                                                  std::to_string(passage.verse->Notes()) +
                                                  " syllables, the tune of " + name + " has " +
                                                  std::to_string(notes) + " notes");
    }
}

/// A pickup sounds in the last bar of the passage before it, which must leave it room.
void CheckPickup(const Passage* before, const Passage& passage, int barTicks) {
    if (passage.section->tune.empty() || passage.section->tune.front().start >= 0) {
        return;
    }
    const int start = passage.section->tune.front().start;
    int lastEnd = 0;
    int length = 0;
    if (before != nullptr) {
        length = before->section->bars * barTicks;
        if (!before->section->tune.empty()) {
            lastEnd = before->section->tune.back().start + before->section->tune.back().length;
        }
    }
    if (length + start < lastEnd || before == nullptr) {
        throw ScoreError(passage.line, "there is no room for the pickup");
    }
}

void ReadPassages(const Block& block, Score& score) {
    for (const SourceLine& line : block.lines) {
        const std::vector<std::string> tokens = Tokens(line.text);
        if (tokens.empty()) {
            continue;
        }
        Passage passage;
        passage.line = line.number;
        passage.section = Find(score.sections, tokens.front(), "section", line.number);
        std::for_each(tokens.begin() + 1, tokens.end(),
                      [&](const std::string& token) { ReadOption(token, score, passage); });
        if (passage.style == nullptr) {
            throw ScoreError(line.number, "a passage needs a style");
        }
        CheckWords(passage, tokens.front());
        CheckPickup(score.passages.empty() ? nullptr : &score.passages.back(), passage,
                    score.time.BarTicks());
        score.passages.push_back(passage);
    }
}

void ReadBlock(const Block& block, Score& score) {
    const std::string kind = block.head.empty() ? "" : block.head.front();
    const std::string name = block.head.size() > 1 ? block.head[1] : "";
    if (kind == "header") {
        ReadHeader(block, score);
    } else if (kind == "tracks") {
        ReadTracks(block, score);
    } else if (kind == "play") {
        ReadPassages(block, score);
    } else if (name.empty()) {
        throw ScoreError(block.line, "\"" + kind + "\" is unknown or needs a name");
    } else if (kind == "style") {
        score.styles[name] = ReadStyle(block, score);
    } else if (kind == "section") {
        score.sections[name] = ReadSection(block, score);
    } else if (kind == "words") {
        score.verses[name] = ReadVerse(block.lines, block.line);
    } else {
        throw ScoreError(block.line, "\"" + kind + "\" is unknown");
    }
}

}  // namespace

int DrumKey(std::string_view name) {
    static constexpr std::array<std::pair<std::string_view, int>, 14> drums = {{{"kick", 36},
                                                                                {"stick", 37},
                                                                                {"snare", 38},
                                                                                {"clap", 39},
                                                                                {"hat", 42},
                                                                                {"pedalhat", 44},
                                                                                {"openhat", 46},
                                                                                {"crash", 49},
                                                                                {"ride", 51},
                                                                                {"tambourine", 54},
                                                                                {"shaker", 70},
                                                                                {"block", 76},
                                                                                {"triangle", 81},
                                                                                {"brush", 40}}};
    for (const auto& [drum, key] : drums) {
        if (drum == name) {
            return key;
        }
    }
    return 0;
}

Score ReadScore(std::string_view text) {
    Score score;
    const std::vector<Block> blocks = CutIntoBlocks(text);
    for (const Block& block : blocks) {
        ReadBlock(block, score);
    }
    if (score.passages.empty() || score.tracks.empty()) {
        throw ScoreError(blocks.back().line, "a score needs [tracks] and [play]");
    }
    return score;
}

}  // namespace sonnel::songs
