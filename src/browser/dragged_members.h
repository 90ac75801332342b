#pragma once
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "browser/browser_actions.h"
#include "browser/drag_contents.h"
#include "browser/member_copies.h"
#include "shell/file_descriptors.h"
#include "shell/regional.h"

namespace tovar {

/// @return steps of 100 nanoseconds since 1601, UTC, of a local time; 0 when there is none
using FileTimeOf = std::function<std::uint64_t(const CalendarDate& date, const ClockTime& time)>;

/// Members as targets see them that take streams: each file, and each folder before what lies in it, under its path
/// from the folder shown. What has no name that could be a file's is left out, as libraries leave it out.
struct DescribedMember {
    FileDescriptor descriptor;
    std::wstring member;  ///< path inside the archive; empty for a folder

    bool operator==(const DescribedMember&) const = default;
};
/// @return at most one more than can be described (kMostDescriptors)
[[nodiscard]] std::vector<DescribedMember> describeMembers(const ArchiveScene& scene,
                                                           const std::vector<ArchiveMember>& members,
                                                           const FileTimeOf& fileTime);

/// The members of one drag. They are offered in two ways, and only one of them is ever gone: see the data object.
class DraggedMembers final : public DragContents {
public:
    /// Which way the members have gone.
    enum class Way { None, Placeholder, Streams };

    /// @param scene        as it is until end()
    /// @param placeholder  full path
    DraggedMembers(const MemberCopies::Ports& ports, const ArchiveScene& scene, std::vector<ArchiveMember> members,
                   std::wstring placeholder, FileTimeOf fileTime);

    /// The drag is over: what has not been unpacked by now is not unpacked any more.
    void end() noexcept { scene_.reset(); }
    void cancel() noexcept { cancelled_ = true; }
    /// The placeholder was met in another folder.
    /// @return false when the members have gone as streams
    [[nodiscard]] bool goByPlaceholder() noexcept;
    [[nodiscard]] Way way() const noexcept { return way_; }

    // DragContents
    [[nodiscard]] std::wstring placeholder() const override { return placeholder_; }
    [[nodiscard]] std::optional<std::string> descriptors() override;
    [[nodiscard]] std::optional<HeldFile> file(std::size_t index) override;
    void onDropped() override { dropped_ = true; }
    [[nodiscard]] bool isCancelled() const override { return cancelled_; }

private:
    const std::vector<DescribedMember>& described();

    MemberCopies::Ports ports_;
    std::optional<ArchiveScene> scene_;
    std::vector<ArchiveMember> members_;
    std::wstring placeholder_;
    FileTimeOf fileTime_;
    std::optional<std::vector<DescribedMember>> described_;
    std::shared_ptr<const MemberCopies> copies_;
    Way way_ = Way::None;
    bool unpacked_ = false;  ///< or tried to
    bool dropped_ = false;
    bool cancelled_ = false;
};

}  // namespace tovar
