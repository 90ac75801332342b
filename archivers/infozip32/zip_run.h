#pragma once
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "archivers/infozip32/member_packer.h"
#include "archivers/infozip32/old_archive.h"
#include "archivers/infozip32/zip_console.h"
#include "archivers/packing/packing_files.h"
#include "archivers/packing/source_walk.h"
#include "archivers/packing/verify_members.h"

namespace archiver::infozip {

/// What one run is to do, in the terms of the library.
struct ZipTask {
    std::filesystem::path archive;
    std::string archiveName;                   ///< as messages have it, UTF-8
    std::filesystem::path base;                ///< relative names start there
    std::vector<std::filesystem::path> names;  ///< files and patterns, or members to delete
    enum class Mode : std::uint8_t { kAdd, kUpdate, kFreshen, kDelete, kRepair };
    Mode mode = Mode::kAdd;
    WalkOptions walk{};
    bool move = false;
    bool junkFolders = false;        ///< names are stored without their folders
    bool junkSelfExtractor = false;  ///< what stands in front of the archive goes
    bool encrypt = false;
    bool comment = false;
    PackSettings pack{};
};

/// Where a run happens; tests give others.
struct ZipSystems {
    SourceSystem& sources;
    PackingFiles& files;
    std::size_t buffer = ArchiveReplacement::kBuffer;  ///< of the new archive
    std::function<void()> onWait = [] {};              ///< called now and then
};

/// Creates or changes one archive. The old one stays as it is until the new one is whole and on the disk.
class ZipRun {
public:
    ZipRun(ZipTask task, ZipConsole& console, const ZipSystems& systems)
        : task_(std::move(task)), console_(console), systems_(systems) {}

    /// @return zip_abi::result
    std::int32_t run();

private:
    /// One step of the new archive: a member that stays, or a source, which may take the place of a member.
    struct Step {
        static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
        std::size_t old = kNone;
        std::size_t item = kNone;
    };

    std::int32_t fail(std::int32_t result, std::string_view detail, ReturnCode cause = kOk);
    std::int32_t failWriting(ReturnCode cause);
    std::int32_t openOld();
    std::int32_t choose();
    std::int32_t chooseDeleted();
    std::int32_t chooseSources();
    [[nodiscard]] bool isNewer(const SourceItem& item, const OldMember& member) const;
    [[nodiscard]] std::string key(std::string_view name) const;

    std::int32_t write();
    std::int32_t writeSteps(ArchiveReplacement& archive);
    std::int32_t packItem(ArchiveReplacement& archive, MemberPacker& packer, const Step& step);
    ReturnCode copyOld(ArchiveReplacement& archive, std::size_t old);
    ReturnCode flushCopy(ArchiveReplacement& archive);
    ReturnCode copyBytes(ArchiveReplacement& archive, std::uint64_t from, std::uint64_t to);
    ReturnCode writeDirectory(ArchiveReplacement& archive);
    std::int32_t verify(ArchiveReplacement& archive);
    void removeSources();

    ZipTask task_;
    ZipConsole& console_;
    const ZipSystems& systems_;
    OldArchive old_;
    bool hasOld_ = false;
    std::string comment_;
    std::vector<SourceItem> items_;
    std::vector<Step> steps_;
    std::vector<std::size_t> deleted_;  ///< of the old members, in their order
    bool passedOver_ = false;           ///< sources were found that are no newer than their members
    bool openFailed_ = false;

    std::uint64_t copyFrom_ = 0, copyTo_ = 0;  ///< of the old archive, not copied yet
    std::string directory_;
    std::uint64_t entries_ = 0;
    std::uint64_t totalOriginal_ = 0, totalPacked_ = 0;
    std::vector<ExpectedMember> added_;
    std::vector<std::size_t> moved_;  ///< of the items
};

}  // namespace archiver::infozip
