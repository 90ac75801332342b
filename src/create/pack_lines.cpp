#include "create/pack_lines.h"

#include "shell/paths.h"

namespace tovar {
namespace {

constexpr std::array<std::wstring_view, 4> kActions = {L"a ", L"u ", L"f ", L"m "};
constexpr std::array<std::wstring_view, kPackOptions> kZipOptions = {L"-r ", L"-d ", L"-p ", L"-s ", L"-v "};

std::wstring actionWord(int action) {
    const auto index = static_cast<std::size_t>(action);
    return std::wstring(index < kActions.size() ? kActions[index] : kActions[0]);
}

}  // namespace

std::wstring zipPackLine(const PackChoice& choice) {
    std::wstring line = actionWord(choice.action);
    for (std::size_t option = 0; option < kPackOptions; ++option) {
        if (choice.options[option]) line += kZipOptions[option];
    }
    return line + L"-l" + std::to_wstring(choice.level);
}

std::wstring lhaSwitches(const PackChoice& choice) {
    std::wstring line = actionWord(choice.action);
    if (choice.has(PackOption::Recurse)) line += L"-r2 ";
    if (choice.has(PackOption::SystemAndHidden)) line += L"-a1 ";
    return line + L"-x1 ";
}

std::wstring cabSwitches(const PackChoice& choice) {
    std::wstring line = L"-a -mz -k ";
    if (choice.has(PackOption::Recurse)) line += L"-r ";
    return line;
}

std::wstring packLine(std::wstring_view switches, std::wstring_view archive, std::wstring_view baseFolder,
                      std::wstring_view list) {
    return std::wstring(switches) + L' ' + QuoteIfNeeded(archive) + L' ' +
           QuoteIfNeeded(AddTrailingSeparator(baseFolder)) + L' ' + std::wstring(list);
}

std::wstring_view extensionOf(Packer packer) noexcept {
    switch (packer) {
        case Packer::Zip:
            return L"zip";
        case Packer::Lha:
            return L"lzh";
        case Packer::Cab:
            return L"cab";
        default:
            return {};
    }
}

std::wstring withExtensionOf(Packer packer, std::wstring_view path) {
    const std::wstring name = FileNamePart(path);
    if (packer == Packer::None || name.empty() || name == path) return std::wstring(path);
    return ParentPath(path) + BaseName(path) + L'.' + std::wstring(extensionOf(packer));
}

}  // namespace tovar
