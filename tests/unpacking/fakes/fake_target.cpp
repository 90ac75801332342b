#include "unpacking/fakes/fake_target.h"

#include <utility>

#include "archivers/unpacking/target_name.h"

namespace archiver::test {
namespace {

constexpr std::size_t kMostKept = std::size_t{1} << 20;

std::string textOf(const std::filesystem::path& path) {
    const std::u8string text = path.generic_u8string();
    return {text.begin(), text.end()};
}

std::string parentOf(const std::string& name) {
    const std::size_t slash = name.rfind('/');
    return slash == std::string::npos ? std::string() : name.substr(0, slash);
}

}  // namespace

class FakeFile final : public OutputFile {
public:
    FakeFile(FakeTarget& target, std::string name, bool replace) : target_(target), replace_(replace) {
        item_.name = std::move(name);
        ++target_.unfinished;
    }
    ~FakeFile() override { --target_.unfinished; }

    ReturnCode write(std::span<const char> bytes) override {
        {
            const std::lock_guard lock(target_.mutex_);
            if (target_.writable) {
                if (*target_.writable < bytes.size()) return kDiskSpace;
                *target_.writable -= bytes.size();
            }
        }
        item_.size += bytes.size();
        if (item_.content.size() < kMostKept) item_.content.append(bytes.data(), bytes.size());
        return kOk;
    }

    ReturnCode commit(const ItemProperties& properties) override {
        item_.properties = properties;
        item_.webMark = properties.webMark;
        item_.written = properties.written;
        return target_.commit(item_, replace_);
    }

private:
    FakeTarget& target_;
    FakeTarget::Item item_;
    bool replace_;
};

class FakeFolder final : public TargetFolder {
public:
    explicit FakeFolder(FakeTarget& target) : target_(target) {}

    [[nodiscard]] NameRules nameRules() const override { return target_.rules; }

    [[nodiscard]] std::optional<ExistingItem> find(const std::filesystem::path& name) override {
        ++target_.finds;
        const std::lock_guard lock(target_.mutex_);
        const auto found = target_.items_.find(target_.keyOf(textOf(name)));
        if (found == target_.items_.end()) return std::nullopt;
        const FakeTarget::Item& item = found->second;
        return ExistingItem{item.kind, item.size, item.written, false};
    }

    ReturnCode makeFolder(const std::filesystem::path& name, bool& made) override {
        ++target_.folders;
        made = false;
        const std::lock_guard lock(target_.mutex_);
        const std::string text = textOf(name);
        for (std::size_t end = text.find('/');; end = text.find('/', end + 1)) {
            FakeTarget::Item item;
            item.kind = ExistingItem::Kind::kFolder;
            item.name = text.substr(0, end);
            const auto [place, added] = target_.items_.try_emplace(target_.keyOf(item.name), item);
            if (!added && place->second.kind != ExistingItem::Kind::kFolder) return kMakeDirectory;
            if (end == std::string::npos) {
                made = added;
                return kOk;
            }
        }
    }

    ReturnCode createFile(const std::filesystem::path& name, std::uint64_t, bool replace,
                          std::unique_ptr<OutputFile>& file) override {
        ++target_.files;
        if (target_.creates != kOk) return target_.creates;
        const std::string text = textOf(name);
        {
            const std::lock_guard lock(target_.mutex_);
            const std::string parent = parentOf(text);
            const auto found = target_.items_.find(target_.keyOf(parent));
            if (!parent.empty() &&
                (found == target_.items_.end() || found->second.kind != ExistingItem::Kind::kFolder)) {
                return kFileOpen;
            }
        }
        file = std::make_unique<FakeFile>(target_, text, replace);
        return kOk;
    }

    ReturnCode makeSymbolicLink(const std::filesystem::path& name, const std::filesystem::path& to,
                                bool replace) override {
        if (!target_.links) return kNotSupport;
        FakeTarget::Item item;
        item.kind = ExistingItem::Kind::kLink;
        item.name = textOf(name);
        item.leadsTo = textOf(to);
        return target_.commit(std::move(item), replace);
    }

    ReturnCode makeHardLink(const std::filesystem::path& name, const std::filesystem::path& existing,
                            bool replace) override {
        return target_.links ? copy(name, existing, replace) : kNotSupport;
    }

    ReturnCode copyFile(const std::filesystem::path& name, const std::filesystem::path& existing, bool replace,
                        const std::function<bool()>& goOn) override {
        return goOn() ? copy(name, existing, replace) : kUserCancel;
    }

    ReturnCode setProperties(const std::filesystem::path& name, const ItemProperties& properties) override {
        target_.propertiesSet.push_back(textOf(name));
        const std::lock_guard lock(target_.mutex_);
        target_.items_.at(target_.keyOf(textOf(name))).properties = properties;
        return kOk;
    }

    [[nodiscard]] std::optional<std::uint64_t> freeSpace() override {
        ++target_.spaceQuestions;
        return target_.room;
    }

private:
    ReturnCode copy(const std::filesystem::path& name, const std::filesystem::path& existing, bool replace) {
        FakeTarget::Item item;
        {
            const std::lock_guard lock(target_.mutex_);
            item = target_.items_.at(target_.keyOf(textOf(existing)));
        }
        item.name = textOf(name);
        return target_.commit(std::move(item), replace);
    }

    FakeTarget& target_;
};

std::string FakeTarget::keyOf(const std::string& name) const {
    return rules == NameRules::kWindows ? foldedKey(name) : name;
}

ReturnCode FakeTarget::commit(Item item, bool replace) {
    const std::lock_guard lock(mutex_);
    const auto [place, added] = items_.try_emplace(keyOf(item.name), item);
    if (added) return kOk;
    if (!replace || place->second.kind == ExistingItem::Kind::kFolder) return kSameNameFile;
    place->second = std::move(item);
    return kOk;
}

void FakeTarget::put(const std::string& name, const std::string& content, std::int64_t seconds) {
    Item item;
    item.name = name;
    item.content = content;
    item.size = content.size();
    item.written = Moment{seconds, 0};
    items_[keyOf(name)] = item;
}

void FakeTarget::putFolder(const std::string& name) {
    Item item;
    item.kind = ExistingItem::Kind::kFolder;
    item.name = name;
    items_[keyOf(name)] = item;
}

void FakeTarget::putLink(const std::string& name, const std::string& to) {
    Item item;
    item.kind = ExistingItem::Kind::kLink;
    item.name = name;
    item.leadsTo = to;
    items_[keyOf(name)] = item;
}

std::string FakeTarget::at(const std::string& name) const {
    const auto found = items_.find(keyOf(name));
    if (found == items_.end()) return "(none)";
    switch (found->second.kind) {
        case ExistingItem::Kind::kFolder:
            return "(folder)";
        case ExistingItem::Kind::kLink:
            return "-> " + found->second.leadsTo;
        case ExistingItem::Kind::kFile:
            break;
    }
    return found->second.content;
}

std::vector<std::string> FakeTarget::names() const {
    std::vector<std::string> names;
    for (const auto& [key, item] : items_) names.push_back(item.name);
    return names;
}

ReturnCode FakeTarget::open(const std::filesystem::path& folder, std::unique_ptr<TargetFolder>& target) {
    opened = folder;
    if (opens == kOk) target = std::make_unique<FakeFolder>(*this);
    return opens;
}

std::string FakeTarget::webMark(const std::filesystem::path& archive) {
    markAsked = archive;
    return mark;
}

}  // namespace archiver::test
