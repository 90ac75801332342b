#include <fcntl.h>
#include <io.h>

#include "host/console/console.h"
#include "host/console/standard_output.h"
#include "host/console/system_services.h"

int wmain(int count, wchar_t** arguments) try {
    _setmode(_fileno(stdout), _O_BINARY);  // what is written is UTF-8 with LF
    const std::vector<std::wstring> words(arguments + 1, arguments + count);
    tovar::host::StandardOutput output(_isatty(_fileno(stderr)) != 0);
    tovar::host::ConsoleMessages messages(output);
    tovar::host::SystemServices system(messages);
    return tovar::host::Console(output, system).run(tovar::host::parseArguments(words));
} catch (const std::exception& error) {
    std::fprintf(stderr, "tovar: %s\n", error.what());
    return tovar::host::kBadArchive;
}
