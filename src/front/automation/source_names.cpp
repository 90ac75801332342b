#include "front/automation/source_names.h"

#include <system_error>

#include "shell/paths.h"

namespace tovar {
namespace {

namespace fs = std::filesystem;

constexpr std::wstring_view kEverything = L"*.*";
constexpr std::wstring_view kLineEnd = L"\r\n";

bool isPattern(const std::wstring& name) { return name.find_first_of(L"*?") != name.npos; }

/// Whether a row of a list can hold the name.
bool fitsRow(const std::wstring& name) { return name.find_first_of(L"\"\r\n") == name.npos; }

bool isThere(const fs::path& path) {
    std::error_code error;
    return fs::symlink_status(path, error).type() != fs::file_type::not_found && !error;
}

}  // namespace

SourceNames nameSources(const std::vector<std::wstring>& names, const fs::path& folder) {
    SourceNames result;
    for (const std::wstring& name : names) {
        const fs::path path = (folder / fs::path(name)).lexically_normal();
        fs::path below = path.lexically_relative(folder.lexically_normal());
        if (!below.has_filename()) below = below.parent_path();
        if (below.empty() || *below.begin() == fs::path("..")) {
            result.problem = L"this lies outside of the folder that names count from";
        } else if (!fitsRow(name)) {
            result.problem = L"the libraries cannot be told of such a name";
        } else if (!isThere(path) && !isPattern(name)) {
            result.problem = L"there is no such file or folder";
            result.missing = true;
        }
        if (!result.problem.empty()) {
            result.about = name;
            break;
        }
        result.names.push_back(below == fs::path(".") ? std::wstring(kEverything) : below.wstring());
    }
    return result;
}

std::wstring zipRows(const std::vector<std::wstring>& names) {
    std::wstring rows;
    for (const std::wstring& name : names) (rows += name) += kLineEnd;
    return rows;
}

std::wstring listRows(const std::vector<std::wstring>& names) {
    std::wstring rows;
    for (const std::wstring& name : names) (rows += QuoteIfNeeded(name)) += kLineEnd;
    return rows;
}

std::wstring zipMemberRows(const std::vector<std::wstring>& members) {
    std::wstring rows;
    for (const std::wstring& member : members) {
        rows += member;
        if (member.ends_with(L'/') || member.ends_with(L'\\')) rows += kEverything;
        rows += kLineEnd;
    }
    return rows;
}

}  // namespace tovar
