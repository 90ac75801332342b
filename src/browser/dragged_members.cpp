#include "browser/dragged_members.h"

#include <unordered_map>
#include <utility>

#include "browser/member_list.h"
#include "drivers/member_path.h"
#include "shell/letter_case.h"

namespace tovar {
namespace {

/// Collects what lies below the selected rows.
class Describer {
public:
    Describer(const ArchiveScene& scene, const FileTimeOf& fileTime)
        : scene_(scene), fileTime_(fileTime), shown_(scene.folders.key(scene.folder)) {}

    void add(const ArchiveMember& member) {
        if (!member.folder) {
            addFile({}, member.entry);
            return;
        }
        std::vector<Folder> waiting{*member.folder};
        while (!waiting.empty() && !isFull()) {
            const Folder folder = waiting.back();
            waiting.pop_back();
            const std::wstring key = scene_.folders.key(folder);
            if (!key.starts_with(shown_) || key.size() == shown_.size()) continue;
            const std::wstring path = key.substr(shown_.size());
            put(path.substr(0, path.size() - 1), {});
            for (const std::uint32_t entry : scene_.folders.files(folder)) addFile(path, entry);
            const auto children = scene_.folders.children(folder);
            waiting.insert(waiting.end(), children.rbegin(), children.rend());
        }
    }
    [[nodiscard]] bool isFull() const noexcept { return described_.size() > kMostDescriptors; }
    [[nodiscard]] std::vector<DescribedMember> take() { return std::move(described_); }

private:
    /// @param folder  with "\\" at its end; empty for the folder shown
    void addFile(const std::wstring& folder, std::uint32_t entry) {
        if (!isFull()) put(folder + std::wstring(scene_.driver.entries().name(entry)), entry);
    }

    void put(const std::wstring& path, std::optional<std::uint32_t> entry) {
        auto safe = safeMemberPath(path, true, L'\\');
        if (!safe) return;
        DescribedMember described;
        described.descriptor.path = std::move(*safe);
        described.descriptor.folder = !entry;
        if (entry) {
            described.member = memberPath(scene_, {.folder = {}, .entry = *entry});
            described.descriptor.size = scene_.driver.entries().record(*entry).original;
            const auto date = scene_.driver.calendarDate(*entry);
            auto time = scene_.driver.clockTime(*entry);
            if (date && time) {
                time->second *= 2;  // in steps of two seconds so far
                described.descriptor.writeTime = fileTime_(*date, *time);
            }
        }
        // Of members of one name the last one is what lies there once they are unpacked.
        const auto [place, isNew] = places_.try_emplace(foldCase(described.descriptor.path), described_.size());
        if (isNew) {
            described_.push_back(std::move(described));
        } else {
            described_[place->second] = std::move(described);
        }
    }

    const ArchiveScene& scene_;
    const FileTimeOf& fileTime_;
    const std::wstring shown_;  ///< key of the folder shown
    std::unordered_map<std::wstring, std::size_t> places_;
    std::vector<DescribedMember> described_;
};

}  // namespace

std::vector<DescribedMember> describeMembers(const ArchiveScene& scene, const std::vector<ArchiveMember>& members,
                                             const FileTimeOf& fileTime) {
    Describer describer(scene, fileTime);
    for (const ArchiveMember& member : members) {
        if (describer.isFull()) break;
        describer.add(member);
    }
    return describer.take();
}

DraggedMembers::DraggedMembers(const MemberCopies::Ports& ports, const ArchiveScene& scene,
                               std::vector<ArchiveMember> members, std::wstring placeholder, FileTimeOf fileTime)
    : ports_(ports),
      scene_(scene),
      members_(std::move(members)),
      placeholder_(std::move(placeholder)),
      fileTime_(std::move(fileTime)) {}

bool DraggedMembers::goByPlaceholder() noexcept {
    if (way_ == Way::Streams) return false;
    way_ = Way::Placeholder;
    return true;
}

const std::vector<DescribedMember>& DraggedMembers::described() {
    static const std::vector<DescribedMember> kNone;
    if (!described_ && scene_) described_ = describeMembers(*scene_, members_, fileTime_);
    return described_ ? *described_ : kNone;
}

std::optional<std::string> DraggedMembers::descriptors() {
    std::vector<FileDescriptor> files;
    files.reserve(described().size());
    for (const DescribedMember& each : described()) files.push_back(each.descriptor);
    return buildFileDescriptors(files);
}

std::optional<HeldFile> DraggedMembers::file(std::size_t index) {
    if (!dropped_ || cancelled_ || way_ == Way::Placeholder) return std::nullopt;
    if (index >= described().size() || described()[index].descriptor.folder) return std::nullopt;
    if (!unpacked_ && scene_ && !ports_.extraction.running()) {
        way_ = Way::Streams;
        unpacked_ = true;
        copies_ = MemberCopies::unpack(ports_, *scene_, members_);
    }
    if (!copies_) return std::nullopt;
    auto path = copies_->fileOf(described()[index].member);
    if (!path) return std::nullopt;
    return HeldFile{std::move(*path), copies_};
}

}  // namespace tovar
