#pragma once
#include <map>
#include <set>
#include <string>

#include "archivers/packing/source_system.h"

namespace archiver::test {

/// A tree of files in memory, below "/base" or wherever they are put; paths are compared as UTF-8.
class FakeSources final : public SourceSystem {
public:
    /// @param path  "/"-parted, from the root on; folders above come by themselves
    void addFile(const std::string& path, std::string bytes = {}, std::uint8_t attributes = 0);
    void addFolder(const std::string& path, SourceKind kind = SourceKind::kFolder, std::uint8_t attributes = 0);
    void caseless() { caseless_ = true; }
    void refuse(const std::string& folder) { refused_.insert(folder); }

    [[nodiscard]] std::filesystem::path absolute(const std::filesystem::path& path) override;
    [[nodiscard]] bool ignoresCase() const noexcept override { return caseless_; }
    [[nodiscard]] std::optional<SourceFacts> find(const std::filesystem::path& path) override;
    ReturnCode list(const std::filesystem::path& folder, std::vector<ListedSource>& names) override;
    [[nodiscard]] InputFileResult open(const std::filesystem::path& file) override;
    bool removeFile(const std::filesystem::path& file) override;
    bool removeFolder(const std::filesystem::path& folder) override;

    int lists = 0;  ///< calls of `list`

private:
    struct Entry {
        SourceFacts facts;
        std::string bytes;
    };
    [[nodiscard]] std::string keyOf(const std::filesystem::path& path) const;

    std::map<std::string, Entry> entries_;
    std::set<std::string> refused_;
    bool caseless_ = false;
};

}  // namespace archiver::test
