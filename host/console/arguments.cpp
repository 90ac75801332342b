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
    "  tovar create [OPTION...] [--] ARCHIVE NAME...\n"
    "                                        makes a ZIP, LZH or CAB archive of files and folders\n"
    "  tovar add [OPTION...] [--] ARCHIVE NAME...\n"
    "                                        adds them to a ZIP or LZH archive; members of these names are replaced\n"
    "  tovar delete [--json] [--] ARCHIVE MEMBER...\n"
    "                                        takes members out of a ZIP or LZH archive\n"
    "  tovar --version\n"
    "\n"
    "  --to DIR     unpacks below that folder, which is made when it is not there; else below the current one\n"
    "  --flat       without the members' folders; not for LZH and TAR\n"
    "  --skip       keeps files that are there already, as without an option\n"
    "  --overwrite  replaces them\n"
    "  --ask        lets the library ask for passwords and, without the two above, about files that are there\n"
    "  --json       what came of it as JSON\n"
    "\n"
    "Options of create and add:\n"
    "  --level N    from 0, which stores, to 9, which packs tightest; 6 without it. LZH and CAB know but one level\n"
    "               beside 0\n"
    "  --recurse    folders with all that lies below them, as without an option\n"
    "  --no-recurse without the folders in them\n"
    "  --hidden     also hidden and system files of folders; CAB takes them in any case\n"
    "  --password   encrypts; asks for the password at the terminal, twice. For ZIP\n"
    "  --move       removes the files once they are safe in the archive; for ZIP and LZH\n"
    "  --update     of add: only files that are not in the archive, or newer than there\n"
    "  --freshen    of add: only files that are in the archive, and newer than there\n"
    "  --json       as above\n"
    "\n"
    "A NAME is a file, a folder or a pattern with * and ? below the current folder. It is stored as it is named from\n"
    "there. A MEMBER is a path in the archive, a pattern with * and ?, or a folder with / at its end.\n"
    "\n"
    "Ends with 0 when all is well, 1 when an archive is not, or a member was not unpacked or packed, 2 when the line "
    "was\n"
    "not understood or the kind of archive cannot do it, 3 when the library for an archive's kind is missing or too "
    "old,\n"
    "4 when no member or file is called so.\n";

namespace {

using Command = Arguments::Command;

struct CommandWord {
    std::wstring_view word;
    Command command;
};
constexpr CommandWord kCommands[] = {
    {L"--help", Command::Help},       {L"-h", Command::Help},       {L"help", Command::Help},
    {L"--version", Command::Version}, {L"list", Command::List},     {L"test", Command::Test},
    {L"extract", Command::Extract},   {L"create", Command::Create}, {L"add", Command::Add},
    {L"delete", Command::Delete},
};

/// Which commands an option belongs to.
enum For : unsigned { kReading = 1, kExtract = 2, kCreate = 4, kAdd = 8, kDelete = 16 };
constexpr unsigned kPack = kCreate | kAdd;
constexpr unsigned kAll = kReading | kExtract | kPack | kDelete;

unsigned bitOf(Command command) {
    switch (command) {
        case Command::Extract:
            return kExtract;
        case Command::Create:
            return kCreate;
        case Command::Add:
            return kAdd;
        case Command::Delete:
            return kDelete;
        default:
            return kReading;
    }
}

struct Option {
    std::wstring_view word;
    unsigned commands;
    void (*set)(Arguments& arguments);
};
using Existing = Arguments::Existing;
using Sources = Arguments::Sources;
constexpr Option kOptions[] = {
    {L"--json", kAll, [](Arguments& arguments) { arguments.json = true; }},
    {L"--flat", kExtract, [](Arguments& arguments) { arguments.flat = true; }},
    {L"--ask", kExtract, [](Arguments& arguments) { arguments.ask = true; }},
    {L"--skip", kExtract, [](Arguments& arguments) { arguments.existing = Existing::Skip; }},
    {L"--overwrite", kExtract, [](Arguments& arguments) { arguments.existing = Existing::Overwrite; }},
    {L"--recurse", kPack, [](Arguments& arguments) { arguments.recurse = true; }},
    {L"--no-recurse", kPack, [](Arguments& arguments) { arguments.recurse = false; }},
    {L"--hidden", kPack, [](Arguments& arguments) { arguments.hidden = true; }},
    {L"--password", kPack, [](Arguments& arguments) { arguments.password = true; }},
    {L"--move", kPack, [](Arguments& arguments) { arguments.move = true; }},
    {L"--update", kAdd, [](Arguments& arguments) { arguments.sources = Sources::Newer; }},
    {L"--freshen", kAdd, [](Arguments& arguments) { arguments.sources = Sources::NewerAndThere; }},
};
constexpr std::wstring_view kTo = L"--to";
constexpr std::wstring_view kLevel = L"--level";

struct Exclusion {
    std::wstring_view one, other;
};
constexpr Exclusion kExclusions[] = {
    {L"--skip", L"--overwrite"}, {L"--recurse", L"--no-recurse"}, {L"--update", L"--freshen"},
    {L"--update", L"--move"},    {L"--freshen", L"--move"},
};

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
    const unsigned bit = bitOf(arguments.command);

    std::vector<std::wstring> names;
    std::vector<std::wstring> given;
    bool options = true;
    for (std::size_t i = 1; i < words.size(); ++i) {
        const std::wstring& word = words[i];
        if (!options || word.size() < 2 || word[0] != L'-') {
            names.push_back(word);
        } else if (word == L"--") {
            options = false;
        } else if ((bit & kPack) != 0 && word == kLevel) {
            if (++i == words.size() || words[i].size() != 1 || words[i][0] < L'0' || words[i][0] > L'9') {
                return unknown(L"--level needs a number from 0 to 9");
            }
            arguments.level = words[i][0] - L'0';
        } else if (bit == kExtract && word == kTo) {
            if (++i == words.size() || words[i].empty()) return unknown(L"--to needs a folder");
            arguments.folder = words[i];
        } else {
            const auto* const option = std::ranges::find(kOptions, word, &Option::word);
            if (option == std::end(kOptions) || (option->commands & bit) == 0) {
                return unknown(L"unknown option " + word);
            }
            option->set(arguments);
            given.push_back(word);
        }
    }
    for (const Exclusion& each : kExclusions) {
        if (has(given, each.one) && has(given, each.other)) {
            return unknown(std::wstring(each.one) + L" and " + std::wstring(each.other) + L" exclude each other");
        }
    }
    if (arguments.ask && !has(given, L"--skip") && !has(given, L"--overwrite")) {
        arguments.existing = Arguments::Existing::Ask;
    }
    if (names.empty()) return unknown(words[0] + L" needs an archive");
    if (bit == kReading) {
        arguments.archives = std::move(names);
        return arguments;
    }
    arguments.members.assign(std::next(names.begin()), names.end());
    names.resize(1);
    if (arguments.changes() && arguments.members.empty()) {
        return unknown(words[0] + (bit == kDelete ? L" needs members" : L" needs files or folders"));
    }
    arguments.archives = std::move(names);
    return arguments;
}

}  // namespace tovar::host
