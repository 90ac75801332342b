#include "archivers/unace/ace_core.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "archivers/unace/ace_codes.h"

namespace archiver::unace {
namespace {

namespace result = ace_abi::result;

/// No exception passes an exported function.
template <class Work>
std::int32_t guarded(const Work& work) noexcept {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        return result::kMemory;
    } catch (...) {
        return result::kOther;
    }
}

/// What is told of an archive.
void fillRecord(const AceFacts& facts, ace_abi::OpenArchiveData& data, const OpenWishes& wishes) {
    data.flags = facts.flags;
    data.host = facts.host;
    std::memset(data.advert, 0, sizeof data.advert);
    std::memcpy(data.advert, facts.advert.data(), std::min(facts.advert.size(), sizeof data.advert - 1));
    std::uint32_t size = 0;
    const std::uint32_t state =
        writeComment(facts.comment ? facts.comment->data() : nullptr, facts.comment ? facts.comment->size() : 0,
                     wishes.commentBuffer, wishes.commentBufferSize, size);
    storeNumber(wishes.commentSize, size);
    storeNumber(wishes.commentState, state);
}

}  // namespace

ArchiveHandle AceCore::open(ace_abi::OpenArchiveData* data) noexcept {
    if (data == nullptr) return nullptr;
    ArchiveHandle handle = nullptr;
    const std::int32_t code = guarded([&] {
        if (data->archiveName == nullptr || data->openMode > ace_abi::kOpenExtract) return result::kConstant;
        std::error_code error;
        // The current folder may be another one when the next volume is looked for.
        std::filesystem::path file = std::filesystem::absolute(codec().decodePath(data->archiveName), error);
        if (error) return result::kOpen;
        AceOpenResult opened = openAceReader(file);
        if (opened.code != kOk) return resultOf(opened.code, false);
        const OpenWishes wishes = readOpenRecord(data);
        const AceFacts facts = opened.reader->aceFacts();
        handle = handles_.add(std::make_unique<AceArchive>(std::move(opened.reader), std::move(file), wishes));
        fillRecord(facts, *data, wishes);
        return result::kOk;
    });
    data->openResult = code;
    return handle;
}

std::int32_t AceCore::close(ArchiveHandle archive) noexcept {
    return guarded([&] { return handles_.close(archive) ? result::kOk : result::kHandle; });
}

std::int32_t AceCore::readHeader(ArchiveHandle archive, ace_abi::HeaderData* header) noexcept {
    return guarded([&] {
        if (header == nullptr) return result::kConstant;
        const AceHandles::Use use = handles_.use(archive);
        return use ? use->readHeader(*header, codec()) : result::kHandle;
    });
}

std::int32_t AceCore::processFile(ArchiveHandle archive, std::int32_t operation, const char* destination) noexcept {
    return guarded([&] {
        const AceHandles::Use use = handles_.use(archive);
        return use ? use->process(operation, destination, codec()) : result::kHandle;
    });
}

std::int32_t AceCore::setPassword(ArchiveHandle archive, const char* password) noexcept {
    return guarded([&] {
        const AceHandles::Use use = handles_.use(archive);
        return use ? use->setPassword(password, codec()) : result::kHandle;
    });
}

Bool AceCore::setUnicodeMode(Bool on) noexcept {
    unicode_ = on != 0;
    return 1;
}

}  // namespace archiver::unace
