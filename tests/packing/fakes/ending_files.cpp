#include "packing/fakes/ending_files.h"

#include <utility>

namespace archiver::test {

class EndingFiles::File final : public NewFile {
public:
    File(EndingFiles& owner, std::unique_ptr<NewFile> file) : owner_(owner), file_(std::move(file)) {}

    ReturnCode write(std::uint64_t offset, std::span<const char> bytes) override {
        if (owner_.failure_ != kOk) return owner_.failure_;
        const bool before = owner_.ended_;
        if (owner_.step()) return file_->write(offset, bytes);
        if (!before) static_cast<void>(file_->write(offset, bytes.first(bytes.size() / 2)));
        return kCannotWrite;
    }
    ReturnCode cut(std::uint64_t size) override { return owner_.step() ? file_->cut(size) : kCannotWrite; }
    ReturnCode flush() override { return owner_.step() ? file_->flush() : kCannotWrite; }

private:
    EndingFiles& owner_;
    std::unique_ptr<NewFile> file_;
};

bool EndingFiles::step() noexcept {
    if (ended_) return false;
    ended_ = done_ == steps_;
    if (!ended_) ++done_;
    return !ended_;
}

ReturnCode EndingFiles::create(const std::filesystem::path& file, std::unique_ptr<NewFile>& made) {
    if (!step()) return kFileOpen;
    std::unique_ptr<NewFile> inner;
    const ReturnCode code = files_.create(file, inner);
    if (code == kOk) made = std::make_unique<File>(*this, std::move(inner));
    return code;
}

void EndingFiles::keepAttributes(const std::filesystem::path& from, const std::filesystem::path& to) {
    if (!ended_) files_.keepAttributes(from, to);
}

ReturnCode EndingFiles::rename(const std::filesystem::path& from, const std::filesystem::path& to) {
    return step() ? files_.rename(from, to) : kCannotWrite;
}

ReturnCode EndingFiles::remove(const std::filesystem::path& file) {
    return step() ? files_.remove(file) : kArcFileOpen;
}

}  // namespace archiver::test
