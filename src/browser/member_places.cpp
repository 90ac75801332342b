#include "browser/member_places.h"

#include <algorithm>

#include "drivers/member_path.h"

namespace tovar {
namespace {

void addOnce(std::vector<std::wstring>& paths, std::wstring path) {
    if (std::ranges::find(paths, path) == paths.end()) paths.push_back(std::move(path));
}

}  // namespace

std::vector<std::wstring> placesOf(std::wstring_view member, wchar_t separator) {
    std::vector<std::wstring> places;
    for (const bool withFolders : {true, false}) {
        const auto path = safeMemberPath(member, withFolders, separator);
        if (!path) continue;
        addOnce(places, *path);
        std::wstring underscored = *path;
        std::ranges::replace(underscored, L' ', L'_');
        addOnce(places, underscored);
    }
    return places;
}

}  // namespace tovar
