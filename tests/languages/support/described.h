#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "archivers/commands/command.h"

namespace archiver::testing {

/// A line as its language understands it, in words: what is done, then "flat", what happens to files that are there,
/// and all that is not as usual. The code, such as "0x801C", for a line that is no command.
std::string described(const CommandLanguage& language, std::string_view line);

/// The command of a line that is one.
Command commandOf(const CommandLanguage& language, std::string_view line);

/// Which of some members the line chooses.
std::vector<std::string> chosenOf(const CommandLanguage& language, std::string_view line,
                                  const std::vector<std::string>& names);

/// One line and what it means.
struct LineCase {
    const char* name;
    const char* line;
    const char* expected;
};

}  // namespace archiver::testing
