#include "drivers/ace_walk.h"

namespace tovar {

namespace abi = archiver::ace_abi;
namespace result = abi::result;

AceWalk::AceWalk(AceLibrary& library, std::wstring_view archive, std::uint32_t mode)
    : library_(library), archive_(archive), mode_(mode) {
    open();
}

AceWalk::~AceWalk() { close(); }

void AceWalk::open() {
    handle_ = library_.open(archive_, mode_, code_);
    processed_ = true;
}

void AceWalk::close() noexcept {
    if (handle_ != nullptr) library_.close(handle_);
    handle_ = nullptr;
}

bool AceWalk::next() {
    if (handle_ == nullptr || !step()) return false;
    ++members_;
    return true;
}

bool AceWalk::step() {
    if (code_ != result::kOk) return false;
    if (!processed_) code_ = library_.processFile(handle_, abi::kSkip, {}, {});
    if (code_ == result::kOk) code_ = library_.readHeader(handle_, member_);
    processed_ = false;
    return code_ == result::kOk;
}

std::int32_t AceWalk::process(std::int32_t operation, std::wstring_view destination, const AceDataSink& data) {
    processed_ = true;
    return library_.processFile(handle_, operation, destination, data);
}

std::int32_t AceWalk::setPassword(std::wstring_view password) { return library_.setPassword(handle_, password); }

bool AceWalk::again() {
    close();
    open();
    if (handle_ == nullptr) return false;
    for (std::uint64_t member = 0; member < members_; ++member) {
        if (!step()) return false;
    }
    return true;
}

}  // namespace tovar
