#include "host/console/arguments.h"

#include <algorithm>
#include <iterator>

namespace tovar::host {

const char* const kHelpText =
    "tovar: archives on the command line, through the archiver libraries\n"
    "\n"
    "  tovar list [--json] [--] ARCHIVE...   what is in the archives\n"
    "  tovar test [--json] [--] ARCHIVE...   reads every member and checks it\n"
    "  tovar extract [--to DIR] [--flat] [--overwrite|--skip] [--ask] [--json] [--] ARCHIVE [MEMBER...]\n"
    "                                        unpacks members, or all of them\n"
    "  tovar --version\n"
    "\n"
    "  --to DIR     unpacks below that folder, which is made when it is not there; else below the current one\n"
    "  --flat       without the members' folders; not for LZH and TAR\n"
    "  --skip       keeps files that are there already, as without an option\n"
    "  --overwrite  replaces them\n"
    "  --ask        lets the library ask for passwords and, without the two above, about files that are there\n"
    "  --json       what came of it as JSON\n"
    "\n"
    "A MEMBER is a path in the archive, a pattern with * and ?, or a folder with / at its end.\n"
    "\n"
    "Ends with 0 when all is well, 1 when an archive is not or a member was not unpacked, 2 when the line was not\n"
    "understood, 3 when the library for an archive's kind is missing or too old, 4 when no member is called so.\n";

namespace {

using Command = Arguments::Command;

struct CommandWord {
    std::wstring_view word;
    Command command;
};
constexpr CommandWord kCommands[] = {
    {L"--help", Command::Help},       {L"-h", Command::Help},   {L"help", Command::Help},
    {L"--version", Command::Version}, {L"list", Command::List}, {L"test", Command::Test},
    {L"extract", Command::Extract},
};

struct Option {
    std::wstring_view word;
    bool extractOnly;
    void (*set)(Arguments& arguments);
};
constexpr Option kOptions[] = {
    {L"--json", false, [](Arguments& arguments) { arguments.json = true; }},
    {L"--flat", true, [](Arguments& arguments) { arguments.flat = true; }},
    {L"--ask", true, [](Arguments& arguments) { arguments.ask = true; }},
    {L"--skip", true, [](Arguments& arguments) { arguments.existing = Arguments::Existing::Skip; }},
    {L"--overwrite", true, [](Arguments& arguments) { arguments.existing = Arguments::Existing::Overwrite; }},
};
constexpr std::wstring_view kTo = L"--to";

Arguments unknown(const std::wstring& problem) {
    Arguments arguments;
    arguments.command = Command::Unknown;
    arguments.problem = problem;
    return arguments;
}

bool has(const std::vector<std::wstring>& words, std::wstring_view word) {
    return std::ranges::find(words, word) != words.end();
}

}  // namespace

Arguments parseArguments(const std::vector<std::wstring>& words) {
    Arguments arguments;
    if (words.empty()) return arguments;
    const auto* const command = std::ranges::find(kCommands, words[0], &CommandWord::word);
    if (command == std::end(kCommands)) return unknown(L"unknown command " + words[0]);
    arguments.command = command->command;
    if (arguments.command == Command::Help || arguments.command == Command::Version) return arguments;
    const bool extract = arguments.command == Command::Extract;

    std::vector<std::wstring> names;
    std::vector<std::wstring> given;
    bool options = true;
    for (std::size_t i = 1; i < words.size(); ++i) {
        const std::wstring& word = words[i];
        if (!options || word.size() < 2 || word[0] != L'-') {
            names.push_back(word);
        } else if (word == L"--") {
            options = false;
        } else if (extract && word == kTo) {
            if (++i == words.size() || words[i].empty()) return unknown(L"--to needs a folder");
            arguments.folder = words[i];
        } else {
            const auto* const option = std::ranges::find(kOptions, word, &Option::word);
            if (option == std::end(kOptions) || (option->extractOnly && !extract)) {
                return unknown(L"unknown option " + word);
            }
            option->set(arguments);
            given.push_back(word);
        }
    }
    if (has(given, L"--skip") && has(given, L"--overwrite"))
        return unknown(L"--skip and --overwrite exclude each other");
    if (arguments.ask && !has(given, L"--skip") && !has(given, L"--overwrite")) {
        arguments.existing = Arguments::Existing::Ask;
    }
    if (names.empty()) return unknown(words[0] + L" needs an archive");
    if (extract) arguments.members.assign(std::next(names.begin()), names.end());
    names.resize(extract ? 1 : names.size());
    arguments.archives = std::move(names);
    return arguments;
}

}  // namespace tovar::host
