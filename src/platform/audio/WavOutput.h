#pragma once

#include "platform/audio/SilentOutput.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace sonnel {

/// A WAV file of 16-bit stereo that grows as sound is put in. It is a valid file after every
/// quarter of a second; nothing that was put in is missing after End.
class WavFile final : public FrameSink {
  public:
    explicit WavFile(std::filesystem::path path) : path_(std::move(path)) {}
    /// Creates the file the first time, goes on writing to it later. The error names the file and
    /// the reason.
    std::optional<Error> Begin(int sampleRate) override;
    /// A write that fails is told once on standard error and ends the recording.
    void Take(std::span<const float> frames) override;
    void End() override;

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

/// Sound at the system's pace into a WAV file.
class WavOutput final : public SilentOutput {
  public:
    WavOutput(std::filesystem::path path, int sampleRate)
        : SilentOutput(sampleRate, std::make_unique<WavFile>(std::move(path))) {}
};

}  // namespace sonnel
