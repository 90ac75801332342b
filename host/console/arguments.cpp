#include "host/console/arguments.h"

namespace tovar::host {

const char* const kHelpText =
    "tovar: archives on the command line, through the archiver libraries\n"
    "\n"
    "  tovar list [--json] ARCHIVE...   what is in the archives\n"
    "  tovar test [--json] ARCHIVE...   reads every member and checks it\n"
    "  tovar --version\n"
    "\n"
    "Ends with 0 when all is well, 1 when an archive is not, 2 when the line was not understood and 3 when the "
    "library\n"
    "for an archive's kind is missing or too old.\n";

namespace {

Arguments unknown(const std::wstring& problem) {
    Arguments arguments;
    arguments.command = Arguments::Command::Unknown;
    arguments.problem = problem;
    return arguments;
}

}  // namespace

Arguments parseArguments(const std::vector<std::wstring>& words) {
    Arguments arguments;
    if (words.empty()) return arguments;
    if (words[0] == L"--help" || words[0] == L"-h" || words[0] == L"help") return arguments;
    if (words[0] == L"--version") {
        arguments.command = Arguments::Command::Version;
        return arguments;
    }
    if (words[0] == L"list") {
        arguments.command = Arguments::Command::List;
    } else if (words[0] == L"test") {
        arguments.command = Arguments::Command::Test;
    } else {
        return unknown(L"unknown command " + words[0]);
    }
    bool options = true;
    for (std::size_t i = 1; i < words.size(); ++i) {
        const auto& word = words[i];
        if (options && word == L"--") {
            options = false;
        } else if (options && word == L"--json") {
            arguments.json = true;
        } else if (options && word.size() > 1 && word[0] == L'-') {
            return unknown(L"unknown option " + word);
        } else {
            arguments.archives.push_back(word);
        }
    }
    if (arguments.archives.empty()) return unknown(words[0] + L" needs an archive");
    return arguments;
}

}  // namespace tovar::host
