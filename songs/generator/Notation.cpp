#include "generator/Notation.h"

#include <array>
#include <charconv>
#include <optional>
#include <sstream>
#include <utility>

namespace sonnel::songs {

namespace {

/// Semitones of a note letter above C, or nothing.
std::optional<int> Letter(char letter) {
    static constexpr std::array<int, 7> semitones = {9, 11, 0, 2, 4, 5, 7};
    if (letter < 'a' || letter > 'g') {
        return std::nullopt;
    }
    return semitones.at(static_cast<std::size_t>(letter - 'a'));
}

/// Takes sharps and flats off the front of a text.
int TakeAccidentals(std::string_view& text) {
    int semitones = 0;
    while (!text.empty() && (text.front() == '#' || text.front() == 'b')) {
        semitones += text.front() == '#' ? 1 : -1;
        text.remove_prefix(1);
    }
    return semitones;
}

std::string Quarters(int ticks) {
    std::ostringstream out;
    out << static_cast<double>(ticks) / TicksPerQuarter;
    return out.str();
}

std::optional<int> TakePitchClass(std::string_view& text) {
    if (text.empty() || text.front() < 'A' || text.front() > 'G') {
        return std::nullopt;
    }
    const int letter = *Letter(static_cast<char>(text.front() - 'A' + 'a'));
    text.remove_prefix(1);
    return (letter + TakeAccidentals(text) + 12) % 12;
}

/// Reads a tune token by token, keeping where it stands in the bar.
class TuneReader {
  public:
    TuneReader(int barTicks, int pickup, int octave)
        : barTicks_(barTicks), now_(-pickup), barEnd_(pickup > 0 ? 0 : barTicks), octave_(octave) {}

    void Take(const std::string& token, int line) {
        if (token == "|") {
            EndBar(line);
        } else {
            TakeNote(token, line);
        }
    }
    void EndBar(int line) {
        if (now_ != barEnd_) {
            const int bar = barEnd_ / barTicks_;
            throw ScoreError(line, "bar " + std::to_string(bar) + " of the tune lasts " +
                                       Quarters(now_ - barStart_) + " quarter notes instead of " +
                                       Quarters(barEnd_ - barStart_) +
                                       (bar == 0 ? " (the pickup)" : ""));
        }
        barStart_ = now_;
        barEnd_ += barTicks_;
    }
    [[nodiscard]] bool InsideBar() const { return now_ != barStart_; }
    [[nodiscard]] int Bars() const { return barStart_ / barTicks_; }
    [[nodiscard]] std::vector<Note> Notes() && { return std::move(notes_); }

  private:
    void TakeNote(const std::string& token, int line) {
        std::string_view rest = token;
        const std::optional<int> letter = Letter(rest.front());
        const bool isRest = rest.front() == 'r';
        if (!letter && !isRest) {
            throw ScoreError(line, "\"" + token + "\" is not a note");
        }
        rest.remove_prefix(1);
        int pitch = letter.value_or(0) + (octave_ + 1) * 12 + (isRest ? 0 : TakeAccidentals(rest));
        while (!rest.empty() && (rest.front() == '\'' || rest.front() == ',')) {
            pitch += rest.front() == '\'' ? 12 : -12;
            rest.remove_prefix(1);
        }
        const bool tie = rest.ends_with('~');
        if (tie) {
            rest.remove_suffix(1);
        }
        if (!rest.empty()) {
            length_ = Duration(rest, line);
        }
        if (!isRest) {
            Add(pitch, line);
        }
        now_ += length_;
        tied_ = tie && !isRest;
    }
    void Add(int pitch, int line) {
        if (!tied_) {
            notes_.push_back({now_, length_, pitch});
        } else if (notes_.back().pitch == pitch) {
            notes_.back().length += length_;
        } else {
            throw ScoreError(line, "a tie joins two notes of one pitch");
        }
    }

    int barTicks_;
    int now_;
    int barStart_ = now_;
    int barEnd_;
    int octave_;
    int length_ = TicksPerQuarter;
    bool tied_ = false;
    std::vector<Note> notes_;
};

void AddBar(const std::vector<std::string>& names, int barTicks, int line, int& bars,
            std::vector<ChordSpan>& spans) {
    if (names.empty() || barTicks % static_cast<int>(names.size()) != 0) {
        throw ScoreError(line, "a bar of chords cannot be shared by " +
                                   std::to_string(names.size()) + " chords");
    }
    const int share = barTicks / static_cast<int>(names.size());
    int start = bars * barTicks;
    for (const std::string& name : names) {
        if (name == "." && !spans.empty()) {
            spans.back().length += share;
        } else {
            spans.push_back({start, share, ReadChord(name, line)});
        }
        start += share;
    }
    ++bars;
}

void AddWord(const std::string& word, VerseLine& line) {
    bool startsWord = true;
    std::size_t from = 0;
    while (from < word.size()) {
        const std::size_t cut = std::min(word.find_first_of("-=", from), word.size());
        Syllable syllable{word.substr(from, cut - from), startsWord, false};
        syllable.melisma = syllable.text == "_";
        if (syllable.melisma) {
            syllable.text.clear();
        } else {
            startsWord = false;
        }
        for (char& c : syllable.text) {
            c = c == '~' ? ' ' : c;
        }
        if (cut < word.size() && word[cut] == '=') {
            syllable.text += '-';
        }
        line.push_back(std::move(syllable));
        from = cut + 1;
    }
}

void CheckPage(const VersePage& page, int line) {
    if (page.size() < 2 || page.size() > 3) {
        throw ScoreError(line, "a page has two or three lines, not " + std::to_string(page.size()));
    }
}

}  // namespace

std::vector<std::string> Tokens(std::string_view text) {
    std::istringstream in{std::string(text)};
    std::vector<std::string> tokens;
    for (std::string token; in >> token;) {
        tokens.push_back(token);
    }
    return tokens;
}

int Number(const std::string& text, int low, int high, int line) {
    int value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end || value < low || value > high) {
        throw ScoreError(line, "\"" + text + "\" is not a number from " + std::to_string(low) +
                                   " to " + std::to_string(high));
    }
    return value;
}

int Duration(std::string_view text, int line) {
    const std::size_t dots = text.size() - std::min(text.find('.'), text.size());
    const std::string digits(text.substr(0, text.size() - dots));
    for (const int unit : {1, 2, 4, 8, 16, 32}) {
        if (digits == std::to_string(unit) && dots <= 2 &&
            text.find_first_not_of('.', digits.size()) == std::string_view::npos) {
            const int whole = 4 * TicksPerQuarter / unit;
            return 2 * whole - (whole >> dots);
        }
    }
    throw ScoreError(line, "\"" + std::string(text) + "\" is not a duration");
}

Chord ReadChord(std::string_view text, int line) {
    static const std::vector<std::pair<std::string_view, std::vector<int>>> kinds = {
        {"", {0, 4, 7}},     {"m", {0, 3, 7}},         {"7", {0, 4, 7, 10}},
        {"6", {0, 4, 7, 9}}, {"m7", {0, 3, 7, 10}},    {"maj7", {0, 4, 7, 11}},
        {"dim", {0, 3, 6}},  {"aug", {0, 4, 8}},       {"sus4", {0, 5, 7}},
        {"sus2", {0, 2, 7}}, {"7sus4", {0, 5, 7, 10}},
    };
    std::string_view rest = text;
    const std::optional<int> root = TakePitchClass(rest);
    const std::size_t slash = rest.find('/');
    std::string_view bassText = slash == std::string_view::npos ? "" : rest.substr(slash + 1);
    const bool hasBass = slash != std::string_view::npos;
    const std::optional<int> bass = hasBass ? TakePitchClass(bassText) : root;
    if (root && bass && bassText.empty()) {
        for (const auto& [name, tones] : kinds) {
            if (rest.substr(0, slash) == name) {
                return {*root, tones, *bass};
            }
        }
    }
    throw ScoreError(line, "\"" + std::string(text) + "\" is not a chord");
}

std::vector<ChordSpan> ReadChords(const std::vector<SourceLine>& lines, int barTicks, int& bars) {
    std::vector<ChordSpan> spans;
    std::vector<std::string> bar;
    bars = 0;
    for (const SourceLine& line : lines) {
        for (const std::string& token : Tokens(line.text)) {
            if (token != "|") {
                bar.push_back(token);
                continue;
            }
            AddBar(bar, barTicks, line.number, bars, spans);
            bar.clear();
        }
        if (!bar.empty()) {
            AddBar(bar, barTicks, line.number, bars, spans);
            bar.clear();
        }
    }
    return spans;
}

std::vector<Note> ReadTune(const std::vector<SourceLine>& lines, int barTicks, int bars, int pickup,
                           int octave) {
    TuneReader reader(barTicks, pickup, octave);
    for (const SourceLine& line : lines) {
        for (const std::string& token : Tokens(line.text)) {
            reader.Take(token, line.number);
        }
        if (reader.InsideBar()) {
            reader.EndBar(line.number);
        }
    }
    if (!lines.empty() && reader.Bars() != bars) {
        throw ScoreError(lines.back().number, "the tune has " + std::to_string(reader.Bars()) +
                                                  " bars, the chords " + std::to_string(bars));
    }
    return std::move(reader).Notes();
}

int Verse::Notes() const {
    std::size_t notes = 0;
    for (const VersePage& page : pages) {
        for (const VerseLine& verseLine : page) {
            notes += verseLine.size();
        }
    }
    return static_cast<int>(notes);
}

Verse ReadVerse(const std::vector<SourceLine>& lines, int headLine) {
    Verse verse{headLine, {}};
    bool newPage = true;
    int last = headLine;
    for (const SourceLine& line : lines) {
        VerseLine words;
        for (const std::string& token : Tokens(line.text)) {
            AddWord(token, words);
        }
        if (words.empty()) {
            newPage = true;
            continue;
        }
        if (words.front().melisma) {
            throw ScoreError(line.number, "a line cannot begin with \"_\"");
        }
        if (newPage) {
            if (!verse.pages.empty()) {
                CheckPage(verse.pages.back(), last);
            }
            verse.pages.emplace_back();
        }
        verse.pages.back().push_back(std::move(words));
        newPage = false;
        last = line.number;
    }
    CheckPage(verse.pages.empty() ? VersePage() : verse.pages.back(), last);
    return verse;
}

}  // namespace sonnel::songs
