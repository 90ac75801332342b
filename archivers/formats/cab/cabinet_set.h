#pragma once
#include <cstdint>
#include <deque>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/cab/cabinet_header.h"
#include "archivers/formats/cab/cabinet_system.h"

namespace archiver::cab {

/// A cabinet with those of its set that lie beside it, joined as far as they are there.
class CabinetSet {
public:
    /// A member, and what its folder is like.
    struct Entry {
        mscabd_file* file;
        std::uint32_t folder;  ///< its number in the set
        std::uint64_t packed;  ///< the member's share of the folder's packed bytes
        bool overlaps;         ///< it begins within the member before and is not the same
    };

    CabinetSet() = default;
    ~CabinetSet();
    CabinetSet(const CabinetSet&) = delete;
    CabinetSet& operator=(const CabinetSet&) = delete;

    /// Opens the cabinet that begins at an offset, and its set.
    /// @param path  its name, beside which the others are looked for; empty when it has none
    ReturnCode open(std::shared_ptr<const InputFile> file, std::uint64_t base, const std::filesystem::path& path);

    /// The members in the order of their data, in which they are unpacked fastest.
    [[nodiscard]] const std::vector<Entry>& entries() const noexcept { return entries_; }

    /// Unpacks a member.
    ReturnCode extract(const Entry& entry, const DataSink& sink);

private:
    /// A member that the library drops when it joins two cabinets: one that the left one does not list as well.
    struct Kept {
        mscabd_file file;
        std::string name;
    };
    struct DestroyDecompressor {
        void operator()(mscab_decompressor* self) const noexcept { ::mspack_destroy_cab_decompressor(self); }
    };

    void makeDecompressor();
    ReturnCode openOne(std::shared_ptr<const InputFile> file, std::uint64_t base, CabinetHeader& header,
                       mscabd_cabinet*& cabinet);
    bool openNeighbour(const std::filesystem::path& path, std::uint16_t index, CabinetHeader& header,
                       mscabd_cabinet*& cabinet);
    bool join(mscabd_cabinet* left, mscabd_cabinet* right);
    void addFollowing(const std::filesystem::path& folder);
    void addPrevious(const std::filesystem::path& folder);
    void addFolderSizes(const std::vector<std::uint64_t>& sizes, bool inFront);
    void listEntries();
    [[nodiscard]] ReturnCode codeOf(int error, const Entry& entry) const;

    CabinetSystem system_;
    std::unique_ptr<mscab_decompressor, DestroyDecompressor> decompressor_;
    mscabd_cabinet* first_ = nullptr;
    mscabd_cabinet* last_ = nullptr;
    CabinetHeader firstHeader_, lastHeader_;
    std::vector<std::uint64_t> folderSizes_;
    std::deque<Kept> kept_;
    std::vector<Entry> entries_;
    /// The first member of the last folder read that its damage reaches, and how it showed.
    const Entry* damaged_ = nullptr;
    ReturnCode damage_ = kOk;
};

}  // namespace archiver::cab
