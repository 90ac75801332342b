#include "formats/support/files.h"

#include <stdlib.h>
#include <time.h>

namespace archiver::test {

std::filesystem::path programFolder() { return std::filesystem::read_symlink("/proc/self/exe").parent_path(); }

unsigned codePageOf(LegacyPage page) { return page == LegacyPage::kOem ? 437 : 1252; }

void TimeZone::set(const char* zone) {
    if (*zone == '\0') {
        ::unsetenv("TZ");
    } else {
        ::setenv("TZ", zone, 1);
    }
    ::tzset();
}

}  // namespace archiver::test
