#pragma once

#include "platform/Environment.h"
#include "platform/Result.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <string_view>

namespace sonnel {

/// Writes the text (UTF-8) of a LYK file, all of it or nothing: as Windows-1252 where that holds
/// every character, else as UTF-8 after its mark. An existing file is replaced only when
/// `sovrascrivi` says so. The error has the system's number and a sentence with the file's name and
/// the reason.
[[nodiscard]] std::optional<Error> ScriviLyk(const std::filesystem::path& file,
                                             std::string_view testo, bool sovrascrivi);

/// Today, as a converted file has it: the day (UTC) of the environment's SOURCE_DATE_EPOCH, in
/// seconds since 1970, where it is set to a number, else the local one.
[[nodiscard]] std::chrono::year_month_day DataOdierna(const Environment& ambiente);

}  // namespace sonnel
