#include "languages/support/described.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace archiver::testing {

namespace {

std::string_view actionText(Command::Action action) {
    switch (action) {
        case Command::Action::kUnpack:
            return "unpack";
        case Command::Action::kTest:
            return "test";
        case Command::Action::kList:
            return "list";
        case Command::Action::kListVerbose:
            return "list-verbose";
        case Command::Action::kPrint:
            return "print";
        case Command::Action::kComment:
            return "comment";
        case Command::Action::kPack:
            return "pack";
        case Command::Action::kDelete:
            return "delete";
    }
    return "?";
}

std::string_view existingText(ExistingFiles existing) {
    switch (existing) {
        case ExistingFiles::kAsk:
            return "ask";
        case ExistingFiles::kReplace:
            return "replace";
        case ExistingFiles::kKeep:
            return "keep";
        case ExistingFiles::kNumber:
            return "number";
    }
    return "?";
}

std::string_view modeText(PackRequest::Mode mode) {
    switch (mode) {
        case PackRequest::Mode::kAdd:
            return "add";
        case PackRequest::Mode::kUpdate:
            return "update";
        case PackRequest::Mode::kFreshen:
            return "freshen";
    }
    return "?";
}

std::string describe(const Command& command) {
    std::string text(actionText(command.action));
    const auto add = [&text](bool when, std::string_view word) {
        if (when) (text += ' ') += word;
    };
    const UnpackOptions& options = command.options;
    if (command.action == Command::Action::kUnpack) {
        add(!options.keepFolders, "flat");
        add(true, existingText(options.existing));
        add(options.onlyNewer, "newer");
        add(options.onlyExisting, "existing");
        add(options.onlyMissing, "missing");
        add(options.skipHiddenAndSystem, "no-hidden");
        add(!options.restoreAttributes, "no-attributes");
        add(!options.checkDiskSpace, "no-space-check");
    }
    if (command.action == Command::Action::kPack) {
        const PackRequest& pack = command.pack;
        add(true, modeText(pack.mode));
        add(pack.move, "move");
        add(pack.recurse, "recurse");
        add(pack.searchBelow, "search-below");
        add(pack.hidden, "hidden");
        add(pack.folderEntries, "folder-entries");
        add(!pack.keepFolders, "flat");
        add(true, "method=" + std::to_string(pack.method));
    }
    add(!command.password.empty(), "password=" + command.password);
    add(!command.askPassword, "never-ask-password");
    add(!command.showProgress, "no-progress");
    add(!command.showNames, "quiet");
    add(!command.useSettings, "no-settings");
    return text;
}

}  // namespace

std::string described(const CommandLanguage& language, std::string_view line) {
    const auto parsed = language.parse(line, utf8Codec());
    if (const auto* const code = std::get_if<ReturnCode>(&parsed)) {
        char text[16];
        std::snprintf(text, sizeof(text), "0x%X", static_cast<unsigned>(*code));
        return text;
    }
    return describe(std::get<Command>(parsed));
}

Command commandOf(const CommandLanguage& language, std::string_view line) {
    auto parsed = language.parse(line, utf8Codec());
    Command* const command = std::get_if<Command>(&parsed);
    EXPECT_NE(command, nullptr) << line;
    return command == nullptr ? Command{} : std::move(*command);
}

std::vector<std::string> chosenOf(const CommandLanguage& language, std::string_view line,
                                  const std::vector<std::string>& names) {
    const Command command = commandOf(language, line);
    std::vector<std::string> chosen;
    for (const std::string& name : names) {
        Member member;
        member.name = name;
        if (!command.chosen || command.chosen(member)) chosen.push_back(name);
    }
    return chosen;
}

}  // namespace archiver::testing
