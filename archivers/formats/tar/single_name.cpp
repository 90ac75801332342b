#include "archivers/formats/tar/single_name.h"

#include <algorithm>

#include "archivers/formats/legacy_text.h"
#include "archivers/formats/utf8.h"

namespace archiver::tar {
namespace {

bool isShortTarExtension(std::string_view extension) {
    std::string lower(extension);
    for (char& letter : lower) {
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    }
    static constexpr std::string_view kExtensions[] = {".tgz", ".taz", ".tbz", ".tbz2", ".tz"};
    return std::find(std::begin(kExtensions), std::end(kExtensions), lower) != std::end(kExtensions);
}

}  // namespace

std::string nameWithoutExtension(std::string_view fileName) {
    const std::size_t dot = fileName.rfind('.');
    if (dot == std::string_view::npos || dot == 0) return std::string(fileName);
    std::string name(fileName.substr(0, dot));
    if (isShortTarExtension(fileName.substr(dot))) name += ".tar";
    return name;
}

std::string nameFromHeader(std::string_view stored) {
    std::string name;
    if (isUtf8(stored)) {
        name.assign(stored);
    } else {
        appendLegacyText(stored, LegacyPage::kAnsi, name);
    }
    name.erase(0, name.find_last_of("/\\") + 1);
    return name == "." || name == ".." ? std::string() : name;
}

}  // namespace archiver::tar
