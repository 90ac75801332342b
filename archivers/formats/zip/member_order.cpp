#include "archivers/formats/zip/member_order.h"

#include <algorithm>

#include "archivers/formats/zip/central_directory.h"
#include "archivers/formats/zip/member_fields.h"

namespace archiver::zip {

ReturnCode MemberOrder::build(const InputFile& file, const DirectoryPlace& place, std::size_t most) {
    directory_ = place.start;
    offsets_.clear();
    CentralDirectory directory(file, place);
    CentralHeader header;
    ReturnCode code = kOk;
    while ((code = directory.next(header)) == kOk) {
        if (offsets_.size() == most) return kEnoughMemory;
        offsets_.push_back(localOffsetOf(header) + place.shift);
    }
    // A directory that breaks off lists no more members than these.
    if (!std::is_sorted(offsets_.begin(), offsets_.end())) std::sort(offsets_.begin(), offsets_.end());
    return code == kCannotRead ? code : kOk;
}

std::optional<std::uint64_t> MemberOrder::endOf(std::uint64_t localHeader) const noexcept {
    const auto [first, last] = std::equal_range(offsets_.begin(), offsets_.end(), localHeader);
    if (last - first > 1 || localHeader >= directory_) return std::nullopt;
    return last == offsets_.end() ? directory_ : std::min(*last, directory_);
}

}  // namespace archiver::zip
