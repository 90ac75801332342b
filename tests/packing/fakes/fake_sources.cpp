#include "packing/fakes/fake_sources.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "archivers/unpacking/utf8_path.h"
#include "formats/support/files.h"

namespace archiver::test {

void FakeSources::addFile(const std::string& path, std::string bytes, std::uint8_t attributes) {
    addFolder(path.substr(0, path.rfind('/')));
    Entry entry;
    entry.facts.size = bytes.size();
    entry.facts.attributes = attributes;
    entry.facts.written = Moment{1'000'000'000, 0};
    entry.bytes = std::move(bytes);
    entries_[path] = std::move(entry);
}

void FakeSources::addFolder(const std::string& path, SourceKind kind, std::uint8_t attributes) {
    if (path.empty() || entries_.contains(path)) return;
    addFolder(path.substr(0, path.rfind('/')));
    Entry entry;
    entry.facts.kind = kind;
    entry.facts.attributes = attributes | attribute::kFolder;
    entries_[path] = std::move(entry);
}

std::filesystem::path FakeSources::absolute(const std::filesystem::path& path) { return path.lexically_normal(); }

std::string FakeSources::keyOf(const std::filesystem::path& path) const {
    std::string key = utf8OfPath(path);
    while (key.size() > 1 && key.ends_with('/')) key.pop_back();
    if (!caseless_ || entries_.contains(key)) return key;
    const auto lower = [](std::string text) {
        std::ranges::transform(text, text.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        return text;
    };
    for (const auto& [name, entry] : entries_) {
        if (lower(name) == lower(key)) return name;
    }
    return key;
}

std::optional<SourceFacts> FakeSources::find(const std::filesystem::path& path) {
    const auto at = entries_.find(keyOf(path));
    if (at == entries_.end()) return std::nullopt;
    return at->second.facts;
}

ReturnCode FakeSources::list(const std::filesystem::path& folder, std::vector<ListedSource>& names) {
    ++lists;
    const std::string key = keyOf(folder);
    if (refused_.contains(key)) return kCannotRead;
    for (auto at = entries_.upper_bound(key + "/"); at != entries_.end() && at->first.starts_with(key + "/"); ++at) {
        const std::string name = at->first.substr(key.size() + 1);
        if (name.find('/') == name.npos) names.push_back({pathOfUtf8(name), at->second.facts});
    }
    return kOk;
}

InputFileResult FakeSources::open(const std::filesystem::path& file) {
    const auto at = entries_.find(keyOf(file));
    if (at == entries_.end()) return {nullptr, kNotFindArcFile};
    return {inMemory(at->second.bytes), kOk};
}

bool FakeSources::removeFile(const std::filesystem::path& file) { return entries_.erase(keyOf(file)) == 1; }
bool FakeSources::removeFolder(const std::filesystem::path& folder) { return entries_.erase(keyOf(folder)) == 1; }

}  // namespace archiver::test
