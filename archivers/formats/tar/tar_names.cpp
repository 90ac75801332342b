#include "archivers/formats/tar/tar_names.h"

#include <optional>
#include <utility>

#include "archivers/formats/legacy_text.h"
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

/// Bytes that are no UTF-8 are a text in the system's code page.
void settle(std::string& text) {
    if (isUtf8(text)) return;
    const std::string bytes = std::exchange(text, {});
    appendLegacyText(bytes, LegacyPage::kAnsi, text);
}

}  // namespace

void TarNames::nameOf(const TarWalker& walker, std::string& name) {
    if (!copyEntryText(walker.entry(), EntryText::kPath, name) && !storedText(walker.count(), EntryText::kPath, name)) {
        name.assign(1, '_');
    }
    settle(name);
}

bool TarNames::targetOf(const TarWalker& walker, EntryText which, std::string& target) {
    target.clear();
    // Without a warning, an entry that has no such text has none in the archive either.
    const bool found =
        copyEntryText(walker.entry(), which, target) || (walker.warned() && storedText(walker.count(), which, target));
    if (found) settle(target);
    return found;
}

bool TarNames::storedText(std::uint64_t count, EntryText which, std::string& text) {
    if (!second_) second_ = std::make_unique<TarWalker>(makeStream(file_, compression_), "ISO-8859-1");
    while (second_->count() < count) {
        if (second_->next() != kOk) return false;
    }
    if (second_->entry() == nullptr || !copyEntryText(second_->entry(), which, text)) return false;
    if (isUtf8(text)) {
        if (auto bytes = narrow(text)) text = std::move(*bytes);
    }
    return true;
}

}  // namespace archiver::tar
