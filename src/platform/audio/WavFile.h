#pragma once

#include "platform/Result.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <span>
#include <string>
#include <utility>

namespace sonnel {

/// A WAV file of 16-bit stereo that grows as sound is added. It is a valid file after every quarter
/// of a second, and complete after End. Used by one thread at a time.
class WavFile {
  public:
    explicit WavFile(std::filesystem::path path) : path_(std::move(path)) {}
    /// Creates the file the first time and appends to it later. The error names the file and the
    /// reason.
    std::optional<Error> Begin(int sampleRate);
    /// Appends frames, left and right interleaved. A failed write is reported once on standard
    /// error and ends the recording.
    void Take(std::span<const float> frames);
    void End();

  private:
    void WriteHeader();
    void Check();

    std::filesystem::path path_;
    std::ofstream file_;
    int sampleRate_ = 0;
    std::uint32_t dataBytes_ = 0;
    std::uint32_t bytesInHeader_ = 0;
    bool failed_ = false;
    std::string buffer_;
};

}  // namespace sonnel
