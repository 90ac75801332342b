#include "archivers/convention/system.h"

#include <sys/stat.h>

#include <clocale>
#include <ctime>
#include <cwctype>

namespace archiver {

namespace {

/// A locale that knows the letters of all scripts, whatever locale the process has.
locale_t letters() noexcept {
    static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return locale;
}

}  // namespace

std::optional<Moment> utcOfLocal(DosStamp local) noexcept {
    tm fields{};
    fields.tm_year = (local.date >> 9) + 80;
    fields.tm_mon = ((local.date >> 5) & 0x0F) - 1;
    fields.tm_mday = local.date & 0x1F;
    fields.tm_hour = local.time >> 11;
    fields.tm_min = (local.time >> 5) & 0x3F;
    fields.tm_sec = (local.time & 0x1F) * 2;
    fields.tm_isdst = -1;
    const tm asked = fields;
    const bool time = asked.tm_hour < 24 && asked.tm_min < 60 && asked.tm_sec < 60;
    const time_t seconds = mktime(&fields);
    // A date that does not exist comes back as another one.
    if (!time || asked.tm_mday != fields.tm_mday || asked.tm_mon != fields.tm_mon) {
        return std::nullopt;
    }
    return Moment{seconds, 0};
}

std::optional<Moment> lastWriteTime(const std::filesystem::path& file) noexcept {
    struct stat status {};
    if (stat(file.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return Moment{status.st_mtim.tv_sec, static_cast<std::uint32_t>(status.st_mtim.tv_nsec)};
}

char32_t foldCase(char32_t character) noexcept {
    if (character < 0x80) {
        return character >= U'a' && character <= U'z' ? character - (U'a' - U'A') : character;
    }
    const locale_t locale = letters();
    return locale == nullptr ? character : static_cast<char32_t>(towupper_l(static_cast<wint_t>(character), locale));
}

}  // namespace archiver
