#include "generator/Lyk.h"

#include "platform/Numbers.h"
#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <stdexcept>

namespace sonnel::songs {

namespace {

constexpr int LeadIn = 20;      ///< tenths of a second from a page to its first word
constexpr int LongPause = 100;  ///< after a longer one the screen is cleared

std::string Line(int tenths, int kind, const std::string& text) {
    if (tenths < 0 || tenths > 99999) {
        throw std::out_of_range("the song is too long");
    }
    std::array<char, 16> head{};
    std::snprintf(head.data(), head.size(), "%05d%02d", tenths, kind);
    return head.data() + text + "\r\n";
}

/// A page as the file holds it, and the number of characters shown as sung after each syllable.
struct PageText {
    std::string text;
    std::vector<std::pair<int, std::size_t>> marks;  ///< tick, count
};

PageText Compose(const SungPage& page) {
    PageText composed;
    for (const SungLine& line : page) {
        // The two characters between lines in the file count as the two of a line break.
        composed.text += composed.text.empty() ? "" : "$E";
        for (std::size_t i = 0; i < line.size(); ++i) {
            composed.text += (i > 0 && line[i].startsWord ? " " : "") + line[i].text;
            composed.marks.emplace_back(line[i].tick, CodePoints(composed.text));
        }
    }
    return composed;
}

/// When a page is shown whose first word comes at `first`, the last one of the page before (or -1)
/// having come at `previous`: with time to read it, but not while the page before is needed.
int PageTime(int first, int previous) {
    if (first - previous > LeadIn) {
        return first - LeadIn;
    }
    return std::min(previous + 1, first);
}

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return text;
}

}  // namespace

std::string WriteLyk(const Score& score, const Arrangement& song) {
    const auto tenths = [&song](int tick) {
        return RoundHalfEven<int>(song.Milliseconds(tick) / 100);
    };
    std::string out = "Cantabelle1.0 by Sonnel demo songs\r\n";
    out += "*TI" + score.title + "\r\n*AU" + score.author + "\r\n*BYSonnel demo songs\r\n";
    out += "*VE1.0\r\n*DA16/11/26\r\n*AL" + score.album + "\r\n";
    int previous = -1;
    for (const SungPage& sungPage : song.pages) {
        const PageText page = Compose(sungPage);
        const int first = tenths(page.marks.front().first);
        if (previous >= 0 && first - previous > LongPause) {
            out += Line(previous + LeadIn, 1, "");
        }
        out += Line(PageTime(first, previous), 1, page.text);
        for (const auto& [tick, count] : page.marks) {
            out += Line(tenths(tick), 2, std::to_string(count));
        }
        previous = tenths(page.marks.back().first);
    }
    return out;
}

std::string WriteIndex(std::vector<IndexEntry> songs) {
    std::sort(songs.begin(), songs.end(), [](const IndexEntry& a, const IndexEntry& b) {
        return Lower(a.baseName) < Lower(b.baseName);
    });
    std::string out = "[Songs]\r\n";
    std::vector<std::string> albums = {"?"};
    for (const IndexEntry& song : songs) {
        out += song.baseName + "=" + song.title + "|" + song.author + "|" + song.album + "\r\n";
        if (std::find(albums.begin(), albums.end(), song.album) == albums.end()) {
            albums.push_back(song.album);
        }
    }
    out += "[Album]\r\n";
    for (const std::string& album : albums) {
        out += album + "=|\r\n";
    }
    return out;
}

}  // namespace sonnel::songs
