#include "platform/audio/WavFile.h"

#include "platform/Numbers.h"
#include "platform/Paths.h"

#include <algorithm>
#include <cerrno>
#include <iostream>
#include <system_error>

namespace sonnel {

namespace {

constexpr std::uint32_t kBytesPerFrame = 4;
constexpr std::uint32_t kHeaderBytes = 44;
/// A WAV file's sizes have 32 bits.
constexpr std::uint32_t kMostBytes = 0xFFFFFFFFU - kHeaderBytes;

void Append(std::string& bytes, std::uint32_t value, int count) {
    for (int i = 0; i < count; ++i) {
        bytes.push_back(static_cast<char>(value >> (8 * i) & 0xFF));
    }
}

std::string Header(std::uint32_t sampleRate, std::uint32_t dataBytes) {
    std::string bytes = "RIFF";
    Append(bytes, dataBytes + kHeaderBytes - 8, 4);
    bytes += "WAVEfmt ";
    Append(bytes, 16, 4);  // length of what follows up to "data"
    Append(bytes, 1, 2);   // PCM
    Append(bytes, 2, 2);   // channels
    Append(bytes, sampleRate, 4);
    Append(bytes, sampleRate * kBytesPerFrame, 4);
    Append(bytes, kBytesPerFrame, 2);
    Append(bytes, 16, 2);  // bits
    bytes += "data";
    Append(bytes, dataBytes, 4);
    return bytes;
}

std::string Reason() {
    return std::generic_category().message(errno);
}

}  // namespace

std::optional<Error> WavFile::Begin(int sampleRate) {
    if (file_.is_open()) {
        return {};
    }
    sampleRate_ = sampleRate;
    errno = 0;
    file_.open(path_, std::ios::binary | std::ios::trunc);
    WriteHeader();
    if (!file_) {
        const int number = errno;
        return Error{number, "The sound file \"" + Utf8FromPath(path_) +
                                 "\" cannot be written: " + Reason() + "."};
    }
    return {};
}

void WavFile::Take(std::span<const float> frames) {
    if (failed_) {
        return;
    }
    errno = 0;
    if (kMostBytes - dataBytes_ < frames.size() * 2) {
        errno = EFBIG;
        file_.setstate(std::ios::failbit);
    }
    buffer_.clear();
    for (const float sample : frames) {
        const double clamped = std::clamp(static_cast<double>(sample), -1.0, 1.0);
        Append(buffer_, static_cast<std::uint32_t>(RoundHalfEven<std::int16_t>(clamped * 32767)),
               2);
    }
    file_.write(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
    if (file_) {
        dataBytes_ += static_cast<std::uint32_t>(buffer_.size());
    }
    const std::uint32_t quarter = static_cast<std::uint32_t>(sampleRate_) * kBytesPerFrame / 4;
    if (dataBytes_ - bytesInHeader_ >= quarter) {
        WriteHeader();
    }
    Check();
}

void WavFile::End() {
    errno = 0;
    WriteHeader();
    Check();
}

void WavFile::WriteHeader() {
    const std::string header = Header(static_cast<std::uint32_t>(sampleRate_), dataBytes_);
    file_.flush();  // the sound first, so that the header never promises more than is there
    file_.seekp(0);
    file_.write(header.data(), static_cast<std::streamsize>(header.size()));
    file_.seekp(0, std::ios::end);
    file_.flush();
    bytesInHeader_ = dataBytes_;
}

void WavFile::Check() {
    if (!file_ && !failed_) {
        failed_ = true;
        std::cerr << "The sound file \"" + Utf8FromPath(path_) +
                         "\" cannot be written any further: " + Reason() + ".\n";
    }
}

}  // namespace sonnel
