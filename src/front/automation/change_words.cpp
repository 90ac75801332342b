#include "front/automation/change_words.h"

namespace tovar {
namespace {

using Action = ArchiveChange::Action;
using Sources = ArchiveChange::Sources;

constexpr int kUsualLevel = 6;

wchar_t letterOf(const ArchiveChange& change) {
    if (change.action == Action::Delete) return L'd';
    if (change.move) return L'm';
    switch (change.sources) {
        case Sources::Newer:
            return L'u';
        case Sources::NewerAndThere:
            return L'f';
        case Sources::All:
            break;
    }
    return L'a';
}

}  // namespace

std::wstring refusalOf(const ArchiveChange& change, ArchiveKind kind) {
    const bool cab = kind == kind::kCab;
    if (kind != kind::kZip && kind != kind::kLzh && !cab) return L"archives of this kind can only be read";
    if (cab && change.action != Action::Create) return L"cabinets cannot be changed";
    if (cab && change.move) return L"files are not moved into cabinets";
    if (kind != kind::kZip && change.encrypt) return L"archives of this kind cannot be encrypted";
    return {};
}

std::wstring zipWords(const ArchiveChange& change) {
    std::wstring line(1, letterOf(change));
    if (change.action == Action::Delete) return line;
    if (change.recurse) line += L" -r";
    if (change.encrypt) line += L" -p";
    if (change.hidden) line += L" -s";
    return line + L" -l" + std::to_wstring(change.level.value_or(kUsualLevel));
}

std::wstring lhaWords(const ArchiveChange& change) {
    std::wstring words(1, letterOf(change));
    // Whole paths are compared: a name without folders would mean files of that name in every folder.
    if (change.action == Action::Delete) return words + L" -p1";
    if (change.recurse) words += L" -r2";
    if (change.hidden) words += L" -a1";
    if (change.level == 0) words += L" -jm0";
    return words + L" -x1";
}

std::wstring cabWords(const ArchiveChange& change) {
    std::wstring words = change.level == 0 ? L"-a -mn -k" : L"-a -mz -k";
    if (change.recurse) words += L" -r";
    return words;
}

}  // namespace tovar
