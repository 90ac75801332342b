#include "create/zip_command.h"

#include <string>
#include <vector>

#include "shell/paths.h"
#include "shell/text_split.h"

namespace tovar {
namespace {

constexpr std::size_t kOptionLength = 2;  ///< characters that tell one option from another

struct ActionWord {
    std::wstring_view word;
    ZipAction action;
};
constexpr ActionWord kActions[] = {
    {L"A", ZipAction::Add},  {L"F", ZipAction::Freshen}, {L"U", ZipAction::Update},
    {L"M", ZipAction::Move}, {L"D", ZipAction::Delete},  {L"X", ZipAction::Repair},
};

struct OptionWord {
    std::wstring_view word;
    bool ZipCommand::*field;
};
constexpr OptionWord kOptions[] = {
    {L"-P", &ZipCommand::encrypt}, {L"-S", &ZipCommand::systemAndHidden}, {L"-C", &ZipCommand::comment},
    {L"-R", &ZipCommand::recurse}, {L"-V", &ZipCommand::verbose},         {L"-D", &ZipCommand::folderInfo},
};
constexpr std::wstring_view kLevel = L"-L";

/// Every run of so many blanks becomes one, from left to right.
std::wstring withOneBlankFor(std::size_t count, std::wstring_view text) {
    const std::wstring run(count, L' ');
    std::wstring result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        if (text.substr(at).starts_with(run)) {
            result += L' ';
            at += count;
        } else {
            result += text[at++];
        }
    }
    return result;
}

bool readOption(std::wstring_view word, ZipCommand& command) {
    const std::wstring_view name = word.substr(0, kOptionLength);
    if (name == kLevel) {
        const wchar_t digit = word.size() > kOptionLength ? word[kOptionLength] : L'\0';
        if (digit < L'0' || digit > L'9') return false;
        command.level = static_cast<char>(digit);
        return true;
    }
    for (const OptionWord& option : kOptions) {
        if (name == option.word) command.*option.field = true;
    }
    return true;
}

}  // namespace

ZipCommandError parseZipCommand(std::wstring_view line, ZipCommand& command) {
    command = {};
    std::wstring text(line);
    for (const std::size_t blanks : {4U, 3U, 2U}) text = withOneBlankFor(blanks, text);
    text = upperCase(text);
    const std::vector<std::wstring_view> words = splitText(text, L" ");
    const ActionWord* action = nullptr;
    for (const ActionWord& each : kActions) {
        if (!words.empty() && words.front() == each.word) action = &each;
    }
    if (action == nullptr) return ZipCommandError::UnknownCommand;
    ZipCommand read{.action = action->action};
    if (read.action != ZipAction::Delete && read.action != ZipAction::Repair) {
        for (std::size_t index = 1; index < words.size(); ++index) {
            if (!readOption(words[index], read)) return ZipCommandError::Level;
        }
    }
    command = read;
    return ZipCommandError::None;
}

}  // namespace tovar
