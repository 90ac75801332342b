#pragma once
#include <atomic>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "archivers/unpacking/target_system.h"

namespace archiver::test {

/// A folder in memory, which counts what is asked of it. What tests find in it has "/" between the parts of names.
class FakeTarget final : public TargetSystem {
public:
    struct Item {
        ExistingItem::Kind kind = ExistingItem::Kind::kFile;
        std::string name;        ///< with the letters' case it was made with
        std::string content;     ///< of a file
        std::uint64_t size = 0;  ///< of a file: also the bytes that were too many to be kept
        std::string leadsTo;     ///< of a link
        ItemProperties properties;
        std::string webMark;
        std::optional<Moment> written;
    };

    NameRules rules = NameRules::kPosix;  ///< kWindows: letters' case does not count
    bool links = true;                    ///< whether the system has them
    ReturnCode opens = kOk;
    ReturnCode creates = kOk;               ///< what making a file comes to
    std::optional<std::uint64_t> room;      ///< what freeSpace answers
    std::optional<std::uint64_t> writable;  ///< bytes that can be written until the disk is full
    std::string mark;                       ///< of the archive
    std::filesystem::path markAsked, opened;

    /// What was there before.
    void put(const std::string& name, const std::string& content, std::int64_t seconds = 0);
    void putFolder(const std::string& name);
    void putLink(const std::string& name, const std::string& to);

    [[nodiscard]] bool has(const std::string& name) const { return items_.contains(keyOf(name)); }
    /// A file's content; "(none)", "(folder)", "-> TARGET" for what is no file.
    [[nodiscard]] std::string at(const std::string& name) const;
    [[nodiscard]] const Item& item(const std::string& name) const { return items_.at(keyOf(name)); }
    /// All names, in order.
    [[nodiscard]] std::vector<std::string> names() const;

    std::atomic<std::size_t> finds{0}, folders{0}, files{0}, spaceQuestions{0};
    std::atomic<int> unfinished{0};          ///< files that are begun and neither finished nor gone
    std::vector<std::string> propertiesSet;  ///< folders, in the order they were finished

    ReturnCode open(const std::filesystem::path& folder, std::unique_ptr<TargetFolder>& target) override;
    [[nodiscard]] std::string webMark(const std::filesystem::path& archive) override;

private:
    friend class FakeFolder;
    friend class FakeFile;
    [[nodiscard]] std::string keyOf(const std::string& name) const;
    ReturnCode commit(Item item, bool replace);

    mutable std::mutex mutex_;
    std::map<std::string, Item> items_;
};

}  // namespace archiver::test
