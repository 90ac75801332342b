#include "drivers/bound_ace_library.h"

#include <string>
#include <utility>

#include "drivers/guarded_call.h"
#include "drivers/record_text.h"
#include "shell/secret_text.h"

namespace tovar {
namespace {

namespace abi = archiver::ace_abi;
namespace result = abi::result;

/// The record with zeros behind it: a library that was built without packing takes it for a byte longer.
union OpenRecord {
    abi::OpenArchiveData data;
    abi::NaturalOpenArchiveData natural;
    char bytes[sizeof(abi::NaturalOpenArchiveData) + 16];
};

/// Who is told of the data that the calling thread's library unpacks: the callback itself is told nothing else.
thread_local const AceDataSink* currentSink = nullptr;

class CurrentSink {
public:
    explicit CurrentSink(const AceDataSink& sink) : outer_(std::exchange(currentSink, sink ? &sink : nullptr)) {}
    ~CurrentSink() { currentSink = outer_; }
    CurrentSink(const CurrentSink&) = delete;
    CurrentSink& operator=(const CurrentSink&) = delete;

private:
    const AceDataSink* outer_;
};

/// @return 0 to cancel
std::int32_t ARCHIVER_CALL takeData(std::uint8_t*, std::int32_t size) noexcept {
    if (currentSink == nullptr || size <= 0) return 1;
    return guarded(0, [size] { return (*currentSink)(static_cast<std::uint32_t>(size)) ? 1 : 0; });
}

struct HeaderRecord {
    abi::HeaderData data;
    char slack[16];
};

}  // namespace

BoundAceLibrary::BoundAceLibrary(std::unique_ptr<Module> module, const TextCodec& ansi, const SystemPaths& system)
    : module_(std::move(module)), functions_(bind(*module_)), texts_(functions_.setUnicodeMode, ansi, system) {}

BoundAceLibrary::Functions BoundAceLibrary::bind(const Module& module) {
    const auto find = [&module]<class Function>(Function*& function, const char* name) {
        function = reinterpret_cast<Function*>(module.find(name));
    };
    Functions functions{};
    find(functions.open, "ACEOpenArchive");
    find(functions.readHeader, "ACEReadHeader");
    find(functions.processFile, "ACEProcessFile");
    find(functions.setPassword, "ACESetPassword");
    find(functions.close, "ACECloseArchive");
    find(functions.setUnicodeMode, "ACESetUnicodeMode");
    return functions;
}

archiver::ArchiveHandle BoundAceLibrary::open(std::wstring_view fileName, std::uint32_t mode, std::int32_t& code) {
    code = result::kOther;
    if (functions_.open == nullptr || functions_.close == nullptr) return nullptr;
    return guarded(archiver::ArchiveHandle{}, [&]() -> archiver::ArchiveHandle {
        const LibraryTexts::Use use(texts_);
        std::optional<std::string> name = texts_.encodeFileName(fileName, abi::kNameSize - 1);
        if (!name) {
            code = result::kOpen;
            return nullptr;
        }
        OpenRecord record{};
        std::fill(std::begin(record.bytes), std::end(record.bytes), '\0');
        record.data.archiveName = name->data();
        record.data.openMode = mode;
        // A library that reads the record in its other layout would take the callback for a wrong address. One that
        // has our addition to the interface is known to read this one.
        if (mode == abi::kOpenExtract && functions_.setUnicodeMode != nullptr) record.data.processData = &takeData;
        const archiver::ArchiveHandle archive = functions_.open(&record.data);
        code = record.data.openResult;
        if (code == result::kOk && archive == nullptr) code = result::kOpen;
        if (code != result::kOk) {
            if (archive != nullptr) functions_.close(archive);
            return nullptr;
        }
        texts_.enter();
        ++openArchives_;
        return archive;
    });
}

std::int32_t BoundAceLibrary::readHeader(archiver::ArchiveHandle archive, AceMember& member) {
    if (functions_.readHeader == nullptr) return result::kOther;
    return guarded(result::kMemory, [&] {
        HeaderRecord record{};
        const std::int32_t code = functions_.readHeader(archive, &record.data);
        if (code != result::kOk) return code;
        const abi::HeaderData& header = record.data;
        member.name.clear();
        texts_.codec().decodeTo(fieldText(header.fileName), member.name);
        member.flags = header.flags;
        member.packed = header.packedSize;
        member.original = header.originalSize;
        member.crc = header.fileCrc;
        member.time = header.fileTime;
        member.method = header.method;
        member.attributes = header.attributes;
        return code;
    });
}

std::int32_t BoundAceLibrary::processFile(archiver::ArchiveHandle archive, std::int32_t operation,
                                          std::wstring_view destination, const AceDataSink& data) {
    if (functions_.processFile == nullptr) return result::kOther;
    return guarded(result::kMemory, [&] {
        const std::optional<std::string> path = texts_.encode(destination);
        if (!path) return result::kWrite;
        const CurrentSink sink(data);
        return functions_.processFile(archive, operation, path->empty() ? nullptr : path->c_str());
    });
}

std::int32_t BoundAceLibrary::setPassword(archiver::ArchiveHandle archive, std::wstring_view password) {
    if (functions_.setPassword == nullptr) return result::kOther;
    return guarded(result::kMemory, [&] {
        std::optional<std::string> bytes = texts_.encode(password);
        if (!bytes) return result::kConstant;
        const WipedAtEnd wiped(*bytes);
        return functions_.setPassword(archive, bytes->c_str());
    });
}

std::int32_t BoundAceLibrary::close(archiver::ArchiveHandle archive) {
    const std::int32_t code = functions_.close != nullptr ? functions_.close(archive) : result::kOther;
    if (openArchives_ > 0) {
        --openArchives_;
        texts_.leave();
    }
    return code;
}

const TextCodec& BoundAceLibrary::codec() {
    const LibraryTexts::Use use(texts_);
    return texts_.codec();
}

}  // namespace tovar
