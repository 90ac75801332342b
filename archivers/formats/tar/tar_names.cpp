#include "archivers/formats/tar/tar_names.h"

#include <optional>
#include <utility>

#include "archivers/formats/legacy_text.h"
#include "archivers/formats/tar/entry_path.h"
#include "archivers/formats/utf8.h"

namespace archiver::tar {
namespace {

/// Turns valid UTF-8 back into the bytes that were read as ISO-8859-1; nullopt when it holds other characters.
std::optional<std::string> narrow(const std::string& utf8) {
    std::string bytes;
    bytes.reserve(utf8.size());
    for (std::size_t index = 0; index < utf8.size(); ++index) {
        const auto first = static_cast<unsigned char>(utf8[index]);
        if (first < 0x80) {
            bytes += utf8[index];
        } else if ((first == 0xC2 || first == 0xC3) && index + 1 < utf8.size()) {
            const auto second = static_cast<unsigned char>(utf8[++index]);
            bytes += static_cast<char>((first & 3) << 6 | (second & 0x3F));
        } else {
            return std::nullopt;
        }
    }
    return bytes;
}

}  // namespace

void TarNames::nameOf(const TarWalker& walker, std::string& name) {
    if (!copyEntryPath(walker.entry(), name)) name = storedName(walker.count());
    if (isUtf8(name)) return;
    const std::string bytes = std::exchange(name, {});
    appendLegacyText(bytes, LegacyPage::kAnsi, name);
}

std::string TarNames::storedName(std::uint64_t count) {
    static constexpr char kNoName[] = "_";
    if (!second_) second_ = std::make_unique<TarWalker>(makeStream(file_, compression_), "ISO-8859-1");
    while (second_->count() < count) {
        if (second_->next() != kOk) return kNoName;
    }
    std::string name;
    if (second_->entry() == nullptr || !copyEntryPath(second_->entry(), name)) return kNoName;
    if (!isUtf8(name)) return name;
    return narrow(name).value_or(name);
}

}  // namespace archiver::tar
