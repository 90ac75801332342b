#include <unistd.h>

#include "host/console/console.h"
#include "host/console/standard_output.h"
#include "host/console/system_services.h"
#include "shell/posix/posix_text.h"

int main(int count, char** arguments) try {
    std::vector<std::wstring> words;
    for (int i = 1; i < count; ++i) words.push_back(tovar::fromPosixName(arguments[i]));
    tovar::host::StandardOutput output(::isatty(STDERR_FILENO) == 1);
    tovar::host::ConsoleMessages messages(output);
    tovar::host::SystemServices system(messages);
    return tovar::host::Console(output, system).run(tovar::host::parseArguments(words));
} catch (const std::exception& error) {
    std::fprintf(stderr, "tovar: %s\n", error.what());
    return tovar::host::kBadArchive;
}
