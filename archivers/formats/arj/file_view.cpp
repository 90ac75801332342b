#include "archivers/formats/arj/file_view.h"

namespace archiver::arj {

std::optional<std::string_view> FileView::from(std::uint64_t offset, std::size_t least) noexcept {
    const bool inside = offset >= start_ && offset - start_ <= filled_ && filled_ - (offset - start_) >= least;
    if (!inside) {
        const std::optional<std::size_t> got = file_->readAt(offset, bytes_);
        filled_ = got.value_or(0);
        start_ = offset;
        if (!got) return std::nullopt;
    }
    return std::string_view(bytes_.data(), filled_).substr(static_cast<std::size_t>(offset - start_));
}

std::optional<std::string_view> FileView::at(std::uint64_t offset, std::size_t wanted) noexcept {
    std::optional<std::string_view> bytes = from(offset, wanted);
    if (bytes) *bytes = bytes->substr(0, wanted);
    return bytes;
}

}  // namespace archiver::arj
