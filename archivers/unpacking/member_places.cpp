#include "archivers/unpacking/member_places.h"

#include <utility>

#include "archivers/unpacking/numbered_name.h"
#include "archivers/unpacking/utf8_path.h"

namespace archiver {
namespace {

std::string_view parentOf(std::string_view name) {
    const std::size_t slash = name.rfind('/');
    return slash == std::string_view::npos ? std::string_view() : name.substr(0, slash);
}

bool isFolderUse(NameUse use) { return use == NameUse::kFolder || use == NameUse::kNewFolder; }

Place refused(ReturnCode code) {
    Place place;
    place.verdict = Place::Verdict::kRefuse;
    place.code = code;
    return place;
}

}  // namespace

struct MemberPlaces::Named {
    TargetName place;
    std::uint64_t member = 0;  ///< hash of the name as the archive has it
};

MemberPlaces::MemberPlaces(TargetFolder& target, const UnpackOptions& options, UnpackEvents& events, Calls calls)
    : target_(target),
      options_(options),
      rules_(target.nameRules()),
      wishes_{!options.keepFolders, options.blanksToUnderscores, options.lowerCaseNames},
      calls_(std::move(calls)),
      existing_(options, events) {}

MemberPlaces::Named MemberPlaces::nameOf(std::string_view memberName) const {
    Named named{targetNameOf(memberName, wishes_, rules_), 0};
    const bool wishes = wishes_.flat || wishes_.blanksToUnderscores || wishes_.lowerCase;
    // A name that had to be changed is not the same as one that was so from the start.
    if (named.place.renamed) {
        named.member = hash_(memberName);
    } else {
        named.member = hash_(wishes ? targetNameOf(memberName, {}, rules_).name : named.place.name);
    }
    return named;
}

std::uint64_t MemberPlaces::keyOf(std::string_view name) const {
    return rules_ == NameRules::kWindows ? hash_(foldedKey(name)) : hash_(name);
}

std::filesystem::path MemberPlaces::shown(std::string_view name) const {
    return (options_.target / pathOfUtf8(name)).make_preferred();
}

MemberPlaces::Known MemberPlaces::known(std::string_view memberName) const {
    if (memberName.empty()) return {};
    const Named named = nameOf(memberName);
    const std::uint64_t key = keyOf(named.place.name);
    return {named.place.code, named.place.name, key, taken_.find(key, named.member)};
}

bool MemberPlaces::isBelowLink(std::string_view name) const {
    for (std::string_view folder = parentOf(name); !folder.empty(); folder = parentOf(folder)) {
        if (taken_.find(keyOf(folder), 0).use == NameUse::kLink) return true;
    }
    return false;
}

/// What is there already. A folder that the run made needs no look: a stranger's file that comes into it meanwhile is
/// noticed when the name is taken.
std::optional<ExistingItem> MemberPlaces::find(std::string_view name) {
    if (const std::string_view parent = parentOf(name); !parent.empty()) {
        if (parent == lastParent_ ? lastParentIsNew_ : taken_.find(keyOf(parent), 0).use == NameUse::kNewFolder) {
            return std::nullopt;
        }
    }
    return target_.find(pathOfUtf8(name));
}

ReturnCode MemberPlaces::checkParents(std::string_view name) {
    const std::string_view parent = parentOf(name);
    if (parent == lastParent_) return kOk;
    for (std::string_view folder = parent; !folder.empty(); folder = parentOf(folder)) {
        const NameUse use = taken_.find(keyOf(folder), 0).use;
        if (isFolderUse(use)) return kOk;  // and so are those above it
        if (use == NameUse::kLink) return kNotFilename;
        if (use != NameUse::kFree) return kMakeDirectory;
    }
    return kOk;
}

ReturnCode MemberPlaces::makeOne(std::string_view folder, bool& made) {
    const ReturnCode code = target_.makeFolder(pathOfUtf8(folder), made);
    if (code == kOk) taken_.take(keyOf(folder), hash_(folder), made ? NameUse::kNewFolder : NameUse::kFolder);
    return code;
}

ReturnCode MemberPlaces::makeParents(const Member& member, std::string_view name) {
    const std::string_view parent = parentOf(name);
    if (parent == lastParent_) return kOk;
    bool isNew = false;
    for (std::size_t end = name.find('/'); end != std::string_view::npos; end = name.find('/', end + 1)) {
        const std::string_view folder = name.substr(0, end);
        const NameUse use = taken_.find(keyOf(folder), 0).use;
        isNew = use == NameUse::kNewFolder;
        if (isFolderUse(use)) continue;
        if (const ReturnCode code = makeOne(folder, isNew); code != kOk) return code;
        if (isNew) calls_.folderMade(member, std::string(folder));
    }
    lastParent_ = parent;
    lastParentIsNew_ = isNew;
    return kOk;
}

/// @param alsoFree  nothing is there either; else a file may be, as an earlier unpacking of the archive left it
std::string MemberPlaces::freeName(std::string_view name, bool alsoFree) {
    // Long names lose letters to the number, so that several share their numbers.
    std::uint32_t& number = numbers_.try_emplace(keyOf(numberedName(name, 0)), 2).first->second;
    for (;;) {
        std::string numbered = numberedName(name, number++);
        if (taken_.find(keyOf(numbered), 0).use != NameUse::kFree) continue;
        const std::optional<ExistingItem> item = find(numbered);
        if (!item || (!alsoFree && item->kind != ExistingItem::Kind::kFolder)) return numbered;
    }
}

Place MemberPlaces::place(const Member& member, NameUse use) {
    Named named = nameOf(member.name);
    if (named.place.code != kOk || named.place.name.empty()) {
        return refused(named.place.code != kOk ? named.place.code : kNotFilename);
    }
    Place place;
    place.name = std::move(named.place.name);
    place.renamed = named.place.renamed;
    if (const ReturnCode code = checkParents(place.name); code != kOk) {
        if (code == kNotFilename) return refused(code);
        place.verdict = Place::Verdict::kFail;
        place.code = code;
        return place;
    }

    const auto number = [&](bool alsoFree) {
        place.name = freeName(place.name, alsoFree);
        place.renamed = true;
    };
    TakenNames::Taken taken = taken_.find(keyOf(place.name), named.member);
    if (taken.use != NameUse::kFree && !isFolderUse(taken.use) && (taken.sameName || wishes_.flat)) {
        calls_.settle();
        taken = taken_.find(keyOf(place.name), named.member);
    }
    if (taken.sameName && (taken.use == NameUse::kWritten || taken.use == NameUse::kLink)) {
        place.replace = true;
    } else {
        const bool likeExisting = taken.sameName || (wishes_.flat && taken.use != NameUse::kLink);
        if (taken.use != NameUse::kFree && (isFolderUse(taken.use) || !likeExisting)) number(false);
        std::optional<ExistingItem> item = find(place.name);
        if (item && item->kind == ExistingItem::Kind::kFolder) {
            number(false);
            item = find(place.name);
        }
        const ExistingFileRules::Decision decision = existing_.decide(member, shown(place.name), item);
        place.code = decision.code;
        switch (decision.step) {
            case ExistingFileRules::Step::kSkip:
                place.verdict = Place::Verdict::kSkip;
                return place;
            case ExistingFileRules::Step::kCancel:
                place.verdict = Place::Verdict::kCancel;
                return place;
            case ExistingFileRules::Step::kNumber:
                number(true);
                break;
            case ExistingFileRules::Step::kReplace:
                place.replace = true;
                break;
            case ExistingFileRules::Step::kWrite:
                break;
        }
    }
    if (const ReturnCode code = makeParents(member, place.name); code != kOk) {
        place.verdict = Place::Verdict::kFail;
        place.code = code;
        return place;
    }
    place.key = keyOf(place.name);
    taken_.take(place.key, named.member, use);
    return place;
}

Place MemberPlaces::placeOf(const Member& member) { return place(member, NameUse::kPlanned); }

Place MemberPlaces::placeOfLink(const Member& member) { return place(member, NameUse::kLink); }

Place MemberPlaces::makeFolder(const Member& member) {
    Named named = nameOf(member.name);
    if (named.place.code != kOk) return refused(named.place.code);
    Place place;
    place.name = std::move(named.place.name);
    place.renamed = named.place.renamed;
    place.key = keyOf(place.name);
    if (wishes_.flat || place.name.empty()) {
        place.verdict = Place::Verdict::kPassOver;
        return place;
    }
    const auto failed = [&](ReturnCode code) {
        if (code == kNotFilename) return refused(code);
        place.verdict = Place::Verdict::kFail;
        place.code = code;
        return place;
    };
    const NameUse use = taken_.find(place.key, named.member).use;
    if (isFolderUse(use)) {
        // Made by the run for a member in it, it gets the times of its own member all the same.
        place.verdict = use == NameUse::kNewFolder ? Place::Verdict::kGo : Place::Verdict::kPassOver;
        return place;
    }
    if (use == NameUse::kLink) return failed(kNotFilename);
    if (use != NameUse::kFree) return failed(kMakeDirectory);
    if (const ReturnCode code = checkParents(place.name); code != kOk) return failed(code);
    if (const ReturnCode code = makeParents(member, place.name); code != kOk) return failed(code);
    if (const ReturnCode code = makeOne(place.name, place.made); code != kOk) return failed(code);
    if (!place.made) place.verdict = Place::Verdict::kPassOver;
    return place;
}

bool MemberPlaces::isWanted(const Member& member) {
    const Named named = nameOf(member.name);
    if (named.place.code != kOk || named.place.name.empty()) return false;
    return !existing_.skipOf(member, target_.find(pathOfUtf8(named.place.name)));
}

}  // namespace archiver
