#include "archivers/formats/cab/cabinet_set.h"

#include <algorithm>
#include <new>
#include <string>
#include <tuple>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "archivers/formats/legacy_text.h"

namespace archiver::cab {
namespace {

/// More comparisons than joining two cabinets of a set can ever need.
constexpr std::uint64_t kMostComparisons = std::uint64_t{1} << 28;

std::size_t countFolders(const mscabd_cabinet* cabinet) noexcept {
    std::size_t count = 0;
    for (const mscabd_folder* each = cabinet->folders; each != nullptr; each = each->next) ++count;
    return count;
}

/// The names under which a neighbour may lie there; a folder in its name is not followed.
std::vector<std::filesystem::path> neighbourPaths(const std::filesystem::path& folder, const std::string& stored) {
    std::string name;
    appendLegacyText(stored, LegacyPage::kAnsi, name);
    name.erase(0, name.find_last_of("/\\:") + 1);
    if (name.empty() || name == "." || name == "..") return {};
    std::vector<std::filesystem::path> paths;
    std::string lower = name, upper = name;
    for (char& each : lower) each = each >= 'A' && each <= 'Z' ? static_cast<char>(each + 32) : each;
    for (char& each : upper) each = each >= 'a' && each <= 'z' ? static_cast<char>(each - 32) : each;
    for (const std::string& each : {name, lower, upper}) {
        paths.push_back(folder / std::u8string(each.begin(), each.end()));
    }
    return paths;
}

}  // namespace

CabinetSet::~CabinetSet() {
    if (first_ != nullptr) decompressor_->close(decompressor_.get(), first_);
}

void CabinetSet::makeDecompressor() {
    constexpr int kBuffer = 64 * 1024;
    decompressor_.reset(::mspack_create_cab_decompressor(system_.table()));
    if (!decompressor_) throw std::bad_alloc();
    decompressor_->set_param(decompressor_.get(), MSCABD_PARAM_DECOMPBUF, kBuffer);
}

ReturnCode CabinetSet::openOne(std::shared_ptr<const InputFile> file, std::uint64_t base, CabinetHeader& header,
                               mscabd_cabinet*& cabinet) {
    const ReturnCode code = readCabinetHeader(*file, base, header);
    if (code != kOk) return code;
    cabinet = decompressor_->open(decompressor_.get(), system_.add(std::move(file), base));
    if (cabinet != nullptr) return kOk;
    if (system_.outOfMemory()) throw std::bad_alloc();
    return system_.readFailed() ? kCannotRead : kHeaderBroken;
}

ReturnCode CabinetSet::open(std::shared_ptr<const InputFile> file, std::uint64_t base,
                            const std::filesystem::path& path) {
    if (!decompressor_) makeDecompressor();
    const ReturnCode code = openOne(std::move(file), base, firstHeader_, first_);
    if (code != kOk) return code;
    last_ = first_;
    lastHeader_ = firstHeader_;
    folderSizes_ = firstHeader_.folderSizes;
    if (!path.empty()) {
        addFollowing(path.parent_path());
        addPrevious(path.parent_path());
    }
    listEntries();
    return kOk;
}

bool CabinetSet::openNeighbour(const std::filesystem::path& path, std::uint16_t index, CabinetHeader& header,
                               mscabd_cabinet*& cabinet) {
    InputFileResult opened = openInputFile(path);
    if (opened.file == nullptr) return false;
    const std::shared_ptr<const InputFile> file = std::move(opened.file);
    if (readCabinetHeader(*file, 0, header) != kOk || header.setId != firstHeader_.setId || header.index != index) {
        return false;
    }
    return openOne(file, 0, header, cabinet) == kOk;
}

/// Joins two cabinets whose last and first folder may be one. Then the library keeps of the right one's folder no
/// members, also not those that begin there and so are not in the left one.
bool CabinetSet::join(mscabd_cabinet* left, mscabd_cabinet* right) {
    mscabd_folder* leftFolder = left->folders;
    while (leftFolder->next != nullptr) leftFolder = leftFolder->next;
    const mscabd_folder* const rightFolder = right->folders;
    const auto placeOf = [](const mscabd_file& file) { return std::uint64_t{file.offset} << 32 | file.length; };
    std::unordered_set<std::uint64_t> listed;
    for (const mscabd_file* file = left->files; file != nullptr; file = file->next) {
        if (file->folder == leftFolder) listed.insert(placeOf(*file));
    }
    std::vector<Kept> dropped;
    for (const mscabd_file* file = right->files; file != nullptr; file = file->next) {
        if (file->folder == rightFolder && !listed.contains(placeOf(*file))) dropped.push_back({*file, file->filename});
    }
    const std::size_t folders = countFolders(left) + countFolders(right);
    if (decompressor_->append(decompressor_.get(), left, right) != MSPACK_ERR_OK) return false;
    if (countFolders(left) == folders) return true;
    for (Kept& each : kept_) {
        if (each.file.folder == rightFolder) each.file.folder = leftFolder;
    }
    for (Kept& each : dropped) {
        kept_.push_back(std::move(each));
        kept_.back().file.folder = leftFolder;
        kept_.back().file.filename = kept_.back().name.data();
    }
    return true;
}

void CabinetSet::addFollowing(const std::filesystem::path& folder) {
    while (!lastHeader_.next.empty() && lastHeader_.index < 0xFFFF) {
        const auto index = static_cast<std::uint16_t>(lastHeader_.index + 1);
        CabinetHeader header;
        mscabd_cabinet* cabinet = nullptr;
        for (const std::filesystem::path& path : neighbourPaths(folder, lastHeader_.next)) {
            if (openNeighbour(path, index, header, cabinet)) break;
        }
        if (cabinet == nullptr) return;
        const bool tooMany = std::uint64_t{header.files} * lastHeader_.files > kMostComparisons;
        if (tooMany || !join(last_, cabinet)) {
            decompressor_->close(decompressor_.get(), cabinet);
            return;
        }
        last_ = cabinet;
        addFolderSizes(header.folderSizes, false);
        lastHeader_ = std::move(header);
    }
}

void CabinetSet::addPrevious(const std::filesystem::path& folder) {
    while (!firstHeader_.previous.empty() && firstHeader_.index > 0) {
        const auto index = static_cast<std::uint16_t>(firstHeader_.index - 1);
        CabinetHeader header;
        mscabd_cabinet* cabinet = nullptr;
        for (const std::filesystem::path& path : neighbourPaths(folder, firstHeader_.previous)) {
            if (openNeighbour(path, index, header, cabinet)) break;
        }
        if (cabinet == nullptr) return;
        const bool tooMany = std::uint64_t{header.files} * firstHeader_.files > kMostComparisons;
        if (tooMany || !join(cabinet, first_)) {
            decompressor_->close(decompressor_.get(), cabinet);
            return;
        }
        first_ = cabinet;
        addFolderSizes(header.folderSizes, true);
        firstHeader_ = std::move(header);
    }
}

/// A folder that goes over from one cabinet to the next has become one.
void CabinetSet::addFolderSizes(const std::vector<std::uint64_t>& sizes, bool inFront) {
    const bool joined = countFolders(first_) < folderSizes_.size() + sizes.size();
    std::vector<std::uint64_t> left = inFront ? sizes : folderSizes_;
    const std::vector<std::uint64_t>& right = inFront ? folderSizes_ : sizes;
    auto rest = right.begin();
    if (joined && !left.empty() && rest != right.end()) left.back() += *rest++;
    left.insert(left.end(), rest, right.end());
    folderSizes_ = std::move(left);
}

void CabinetSet::listEntries() {
    std::unordered_map<const mscabd_folder*, std::uint32_t> numbers;
    for (const mscabd_folder* each = first_->folders; each != nullptr; each = each->next) {
        numbers.emplace(each, static_cast<std::uint32_t>(numbers.size()));
    }
    std::vector<std::uint64_t> unpacked(numbers.size(), 0);
    const auto add = [&](mscabd_file* file) {
        const auto number = numbers.find(file->folder);
        if (number == numbers.end()) return;
        entries_.push_back({file, number->second, 0, false});
        std::uint64_t& size = unpacked[number->second];
        size = std::max(size, std::uint64_t{file->offset} + file->length);
    };
    for (mscabd_file* file = first_->files; file != nullptr; file = file->next) add(file);
    for (Kept& each : kept_) add(&each.file);
    std::stable_sort(entries_.begin(), entries_.end(), [](const Entry& a, const Entry& b) {
        return std::tie(a.folder, a.file->offset) < std::tie(b.folder, b.file->offset);
    });
    const Entry* before = nullptr;
    for (Entry& entry : entries_) {
        const mscabd_file& file = *entry.file;
        const std::uint64_t packed = entry.folder < folderSizes_.size() ? folderSizes_[entry.folder] : 0;
        const std::uint64_t whole = unpacked[entry.folder];
        if (whole > 0) {
            entry.packed =
                static_cast<std::uint64_t>(static_cast<double>(packed) * file.length / static_cast<double>(whole));
        }
        if (file.length == 0) continue;
        if (before != nullptr && before->folder == entry.folder) {
            const mscabd_file& other = *before->file;
            const bool same = other.offset == file.offset && other.length == file.length;
            entry.overlaps = !same && file.offset < std::uint64_t{other.offset} + other.length;
        }
        if (!entry.overlaps) before = &entry;
    }
}

ReturnCode CabinetSet::codeOf(int error, const Entry& entry) const {
    const bool lacksNext = !lastHeader_.next.empty() && entry.folder + 1 == folderSizes_.size();
    const bool lacksPrevious = !firstHeader_.previous.empty() && entry.folder == 0;
    switch (error) {
        case MSPACK_ERR_OK:
            return kOk;
        case MSPACK_ERR_NOMEMORY:
            if (system_.outOfMemory()) throw std::bad_alloc();
            // A window of a size that the method does not have.
            return kMethod;
        case MSPACK_ERR_CHECKSUM:
            return kFileCrc;
        case MSPACK_ERR_READ:
        case MSPACK_ERR_SEEK:
            return kCannotRead;
        case MSPACK_ERR_DATAFORMAT:
            return lacksNext ? kArcFileOpen : kHeaderBroken;
        case MSPACK_ERR_DECRUNCH:
            // Without a file to write nothing was tried: parts are missing.
            if (system_.sinkOpened()) return kHuffmanCode;
            if (lacksNext) return kArcFileOpen;
            return lacksPrevious ? kCannotRead : kHeaderBroken;
        default:
            return kHeaderBroken;
    }
}

ReturnCode CabinetSet::extract(const Entry& entry, const DataSink& sink) {
    if (MSCABD_COMP_METHOD(entry.file->folder->comp_type) > MSCAB_COMP_LZX) return kMethod;
    if (entry.overlaps) return kHeaderBroken;
    // Behind damaged data nothing of a folder can be unpacked any more; going there again would take as long as it did.
    const bool lost = damaged_ != nullptr && damaged_->folder == entry.folder && entry.file->length > 0 &&
                      damaged_->file->offset <= entry.file->offset;
    if (lost) return damage_;

    system_.setSink(sink);
    const int error = decompressor_->extract(decompressor_.get(), entry.file, CabinetSystem::sinkKey());
    if (system_.stopped() || system_.thrown()) {
        // The library takes it for an error that stays; another one begins anew.
        makeDecompressor();
        if (system_.thrown()) std::rethrow_exception(system_.thrown());
        return kUserCancel;
    }
    const ReturnCode code = codeOf(error, entry);
    if (code != kOk &&
        (damaged_ == nullptr || damaged_->folder != entry.folder || entry.file->offset < damaged_->file->offset)) {
        damaged_ = &entry;
        damage_ = code;
    }
    return code;
}

}  // namespace archiver::cab
