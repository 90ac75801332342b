#include "create/zip_names.h"

#include <algorithm>

namespace tovar {

ZipNames::ZipNames(const std::string& archive, std::span<const std::string> names) : archive_(archive.c_str()) {
    if (names.empty()) return;
    const std::span taken = names.first(std::min(names.size(), kMost));
    slots_[0] = taken.front().c_str();
    std::ranges::transform(taken, slots_.begin() + 1, [](const std::string& name) { return name.c_str(); });
    count_ = static_cast<std::int32_t>(taken.size() + 1);
}

}  // namespace tovar
