#include "convert/ScriviLyk.h"

#include "platform/Text.h"
#include "platform/files/Files.h"

#include <cerrno>
#include <charconv>
#include <ctime>
#include <string>
#include <system_error>

namespace sonnel {
namespace {

constexpr std::int64_t UltimaEpoca = 253402300799;  // the end of the year 9999

std::optional<std::int64_t> LeggiEpoca(const std::string& testo) {
    std::int64_t secondi = 0;
    const char* const fine = testo.data() + testo.size();
    const auto [dopo, errore] = std::from_chars(testo.data(), fine, secondi);
    const bool valida = errore == std::errc() && dopo == fine && secondi >= 0;
    return valida && secondi <= UltimaEpoca ? std::optional(secondi) : std::nullopt;
}

std::chrono::year_month_day DataLocale() {
    const std::time_t adesso = std::time(nullptr);
    std::tm locale{};
#ifdef _WIN32
    localtime_s(&locale, &adesso);
#else
    localtime_r(&adesso, &locale);
#endif
    return std::chrono::year(locale.tm_year + 1900) /
           std::chrono::month(static_cast<unsigned>(locale.tm_mon) + 1) /
           std::chrono::day(static_cast<unsigned>(locale.tm_mday));
}

}  // namespace

std::optional<Error> ScriviLyk(const std::filesystem::path& file, std::string_view testo,
                               bool sovrascrivi) {
    std::error_code errore;
    if (!sovrascrivi && std::filesystem::exists(file, errore)) {
        return WriteError(file, EEXIST);
    }
    return WriteFileAtomically(file, EncodeFileText(testo));
}

std::chrono::year_month_day DataOdierna(const Environment& ambiente) {
    if (const auto epoca = LeggiEpoca(ambiente("SOURCE_DATE_EPOCH"))) {
        return std::chrono::floor<std::chrono::days>(
            std::chrono::sys_seconds(std::chrono::seconds(*epoca)));
    }
    return DataLocale();
}

}  // namespace sonnel
