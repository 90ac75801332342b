#pragma once
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "archivers/unpacking/existing_files.h"
#include "archivers/unpacking/name_hash.h"
#include "archivers/unpacking/taken_names.h"
#include "archivers/unpacking/target_name.h"
#include "archivers/unpacking/target_system.h"

namespace archiver {

/// Where a member goes, or why it does not.
struct Place {
    enum class Verdict : std::uint8_t { kGo, kPassOver, kSkip, kRefuse, kFail, kCancel };
    Verdict verdict = Verdict::kGo;
    ReturnCode code = kOk;
    std::string name;       ///< below the target, UTF-8; empty for a refused name
    bool renamed = false;   ///< other than by the user's wishes
    bool replace = false;   ///< what is there gives way
    bool made = false;      ///< of a folder: it was not there
    std::uint64_t key = 0;  ///< for MemberPlaces
};

/// Gives each member of a run its place in the target: by its name made safe, by the names that the run has taken, by
/// what is there already. Makes the folders that the places lie in.
///
/// Two members are one file when their names are the same where letters' case does not count: of two members of the
/// very same name the later one replaces the earlier, as an update within an archive does; of others the later one gets
/// a number. With all members in one folder, a name that comes again is treated like a file that was there before.
class MemberPlaces {
public:
    struct Calls {
        std::function<void()> settle;  ///< comes back when all files of the run are finished, and told to setWritten
        std::function<void(const Member& member, const std::string& folder)> folderMade;  ///< one that a member needs
    };

    MemberPlaces(TargetFolder& target, const UnpackOptions& options, UnpackEvents& events, Calls calls);

    /// For a file or a hard link; its folders are made.
    Place placeOf(const Member& member);
    /// For a symbolic link, which is made later.
    Place placeOfLink(const Member& member);
    /// Makes a folder member.
    Place makeFolder(const Member& member);
    void setWritten(const Place& place) { taken_.setUse(place.key, NameUse::kWritten); }

    /// Whether a file member would be written, as far as that shows without a question. Changes nothing.
    [[nodiscard]] bool isWanted(const Member& member);

    /// What the run has at the place of a member of that name; an empty one is the target itself.
    struct Known {
        ReturnCode code = kOk;  ///< of a name that can be no member's place
        std::string name;
        std::uint64_t key = 0;
        TakenNames::Taken taken;
    };
    [[nodiscard]] Known known(std::string_view memberName) const;
    [[nodiscard]] NameUse use(std::uint64_t key) const noexcept { return taken_.find(key, 0).use; }
    /// Whether a folder above the place is a link of the archive.
    [[nodiscard]] bool isBelowLink(std::string_view name) const;

    [[nodiscard]] NameRules rules() const noexcept { return rules_; }
    /// The whole path of a place, for people.
    [[nodiscard]] std::filesystem::path shown(std::string_view name) const;

private:
    struct Named;
    [[nodiscard]] Named nameOf(std::string_view memberName) const;
    [[nodiscard]] std::uint64_t keyOf(std::string_view name) const;
    [[nodiscard]] std::optional<ExistingItem> find(std::string_view name);
    Place place(const Member& member, NameUse use);
    ReturnCode checkParents(std::string_view name);
    ReturnCode makeParents(const Member& member, std::string_view name);
    ReturnCode makeOne(std::string_view folder, bool& made);
    std::string freeName(std::string_view name, bool alsoFree);

    TargetFolder& target_;
    const UnpackOptions& options_;
    NameRules rules_;
    NameWishes wishes_;
    Calls calls_;
    ExistingFileRules existing_;
    NameHash hash_;
    TakenNames taken_;
    std::unordered_map<std::uint64_t, std::uint32_t> numbers_;  ///< the next one to try
    std::string lastParent_;                                    ///< one that is known to be a folder
    bool lastParentIsNew_ = false;
};

}  // namespace archiver
