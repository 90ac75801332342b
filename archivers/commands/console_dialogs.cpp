#include "archivers/commands/console_dialogs.h"

#include "archivers/commands/amount_texts.h"
#include "archivers/commands/command_paths.h"
#include "archivers/commands/question_texts.h"
#include "archivers/commands/shown_names.h"

namespace archiver {

std::optional<char> ConsoleDialogs::askLetter(std::string_view question, std::string_view letters) {
    for (;;) {
        terminal_->write(question);
        const std::optional<std::string> line = terminal_->readLine();
        if (!line) return std::nullopt;
        const std::size_t first = line->find_first_not_of(" \t");
        if (first == line->npos) continue;
        char letter = (*line)[first];
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
        if (letters.find(letter) != letters.npos) return letter;
    }
}

ReplaceAnswer ConsoleDialogs::askReplace(const ReplaceQuestion& question) {
    if (!terminal_) return ReplaceAnswer::kNo;
    const ReplaceFacts facts = factsOf(question);
    terminal_->write(facts.path + "\n  " + std::string(texts::kExistingFile) + " " + facts.existing + "\n  " +
                     std::string(texts::kArchivedFile) + " " + facts.archived + "\n");
    switch (askLetter(texts::kReplaceOnConsole, "ynaorc").value_or('c')) {
        case 'y':
            return ReplaceAnswer::kYes;
        case 'n':
            return ReplaceAnswer::kNo;
        case 'a':
            return ReplaceAnswer::kAll;
        case 'o':
            return ReplaceAnswer::kNone;
        case 'r':
            return ReplaceAnswer::kNumber;
        default:
            return ReplaceAnswer::kCancel;
    }
}

std::optional<std::string> ConsoleDialogs::askPassword(const std::filesystem::path& archive, const Member& member,
                                                       unsigned attempt) {
    if (!terminal_) return std::nullopt;
    if (attempt > 1) terminal_->write(std::string(texts::kPasswordWrong) + "\n");
    terminal_->write(shownName(utf8Of(archive)) + ": " + std::string(texts::kPasswordOnConsole) + " " +
                     shownName(member.name) + ": ");
    std::optional<std::string> password = terminal_->readHidden();
    terminal_->write("\n");
    if (!password || password->empty()) return std::nullopt;
    return password;
}

bool ConsoleDialogs::askDiskSpace(std::uint64_t needed, std::uint64_t available) {
    if (!terminal_) return false;
    terminal_->write(std::string(texts::kDiskHeading) + "\n  " + std::string(texts::kDiskNeeded) + " " +
                     exactSizeText(needed) + "\n  " + std::string(texts::kDiskAvailable) + " " +
                     exactSizeText(available) + "\n");
    return askLetter(texts::kDiskOnConsole, "ync") == 'y';
}

}  // namespace archiver
