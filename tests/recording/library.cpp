#include "recording/library.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "recording/call_log.h"
#include "recording/files.h"
#include "recording/script.h"

namespace recording {
namespace {

constexpr std::int32_t kNotOpened = 0x8021;
constexpr const char* kAce = "ACE";

/// An opened archive: its handle is the address.
class Walk {
public:
    explicit Walk(Script script) : script_(std::move(script)) {}

    void restart() {
        entry_ = given_ = 0;
        current_ = {};
    }

    std::int32_t next(IndividualInfo* info) {
        while (entry_ < script_.entries.size() && given_ == script_.entries[entry_].repeat) {
            ++entry_;
            given_ = 0;
        }
        if (entry_ == script_.entries.size()) return script_.end;
        if (script_.entries[entry_].error != 0) return script_.entries[entry_].error;
        ++given_;
        current_ = script_.entries[entry_];
        if (info != nullptr) *info = current_.info;
        return 0;
    }

    [[nodiscard]] const Entry& current() const { return current_; }

    archiver::ace_abi::ProcessData* processData = nullptr;  ///< of an ACE archive

private:
    Script script_;
    std::size_t entry_ = 0;
    std::uint32_t given_ = 0;
    Entry current_;
};

std::map<ArchiveHandle, std::unique_ptr<Walk>>& walks() {
    static std::map<ArchiveHandle, std::unique_ptr<Walk>> all;
    return all;
}

Walk* walkOf(ArchiveHandle archive) {
    const auto found = walks().find(archive);
    return found == walks().end() ? nullptr : found->second.get();
}

std::map<std::string, Bool>& modes() {
    static std::map<std::string, Bool> all;
    return all;
}

/// The file behind an "@" in a command line, which may stand in quotes.
std::string listOf(const std::string& command) {
    const std::size_t at = command.find(" @");
    if (at == std::string::npos) return {};
    const bool quoted = command.compare(at + 2, 1, "\"") == 0;
    const std::size_t begin = at + (quoted ? 3 : 2);
    return command.substr(begin, command.find(quoted ? '"' : ' ', begin) - begin);
}

}  // namespace

std::int32_t run(const char* prefix, WindowHandle owner, const char* command, char* output, std::uint32_t size) {
    CallLog(prefix, "") << owner << command << size;
    const Script script = readScript();
    if (script.lists && !listOf(command).empty()) {
        CallLog(prefix, "List") << readFile(listOf(command).c_str()).c_str();
    }
    if (output != nullptr && script.fill != '\0') {
        std::memset(output, script.fill, size);
    } else if (output != nullptr) {
        const std::size_t length = std::min<std::size_t>(script.output.size(), size);
        std::memcpy(output, script.output.data(), length);
        if (length < size) output[length] = '\0';
    }
    return script.code;
}

std::uint32_t getVersion(const char* prefix) {
    CallLog(prefix, "GetVersion");
    return readScript().version;
}

Bool getRunning(const char* prefix) {
    CallLog(prefix, "GetRunning");
    return readScript().running;
}

Bool checkArchive(const char* prefix, const char* fileName, std::int32_t mode) {
    CallLog(prefix, "CheckArchive") << fileName << mode;
    return readScript().check;
}

std::int32_t configDialog(const char* prefix, WindowHandle owner, char*, std::int32_t mode) {
    CallLog(prefix, "ConfigDialog") << owner << mode;
    return readScript().dialog;
}

Bool setUnicodeMode(const char* prefix, Bool on) {
    CallLog(prefix, "SetUnicodeMode") << on;
    return readScript().unicode;
}

std::int32_t getFileCount(const char* prefix, const char* fileName) {
    CallLog(prefix, "GetFileCount") << fileName;
    return static_cast<std::int32_t>(readScript().entries.size());
}

ArchiveHandle openArchive(const char* prefix, WindowHandle owner, const char* fileName, std::uint32_t mode) {
    CallLog(prefix, "OpenArchive") << owner << fileName << mode;
    Script script = readScript();
    if (!script.opens) return nullptr;
    auto walk = std::make_unique<Walk>(std::move(script));
    const ArchiveHandle handle = walk.get();
    walks()[handle] = std::move(walk);
    return handle;
}

std::int32_t findFirst(const char* prefix, ArchiveHandle archive, const char* pattern, IndividualInfo* info) {
    CallLog(prefix, "FindFirst") << archive << pattern;
    Walk* const walk = walkOf(archive);
    if (walk == nullptr) return kNotOpened;
    walk->restart();
    return walk->next(info);
}

std::int32_t findNext(const char* prefix, ArchiveHandle archive, IndividualInfo* info) {
    CallLog(prefix, "FindNext") << archive;
    Walk* const walk = walkOf(archive);
    return walk != nullptr ? walk->next(info) : kNotOpened;
}

std::int32_t closeArchive(const char* prefix, ArchiveHandle archive) {
    CallLog(prefix, "CloseArchive") << archive;
    return walks().erase(archive) != 0 ? 0 : kNotOpened;
}

ArchiveHandle aceOpen(archiver::ace_abi::OpenArchiveData* data, bool speaksUtf8) {
    CallLog(kAce, "OpenArchive") << data->archiveName << data->openMode;
    // What a library takes for its callbacks and comment, in either layout of the record, must be nothing.
    const bool mayHaveData = speaksUtf8 && data->openMode == archiver::ace_abi::kOpenExtract;
    archiver::ace_abi::ProcessData* const processData = data->processData;
    if (mayHaveData) data->processData = nullptr;
    const auto* const bytes = reinterpret_cast<const char*>(data);
    const bool clean =
        std::all_of(bytes + offsetof(archiver::ace_abi::OpenArchiveData, commentBuffer),
                    bytes + sizeof(archiver::ace_abi::NaturalOpenArchiveData), [](char each) { return each == '\0'; });
    data->processData = processData;
    Script script = readScript();
    data->openResult = script.opens && clean ? 0 : 5;
    if (data->openResult != 0) return nullptr;
    auto walk = std::make_unique<Walk>(std::move(script));
    walk->processData = mayHaveData ? processData : nullptr;
    const ArchiveHandle handle = walk.get();
    walks()[handle] = std::move(walk);
    return handle;
}

std::int32_t aceReadHeader(ArchiveHandle archive, archiver::ace_abi::HeaderData* header) {
    CallLog(kAce, "ReadHeader") << archive;
    Walk* const walk = walkOf(archive);
    if (walk == nullptr) return archiver::ace_abi::result::kHandle;
    IndividualInfo info{};
    const std::int32_t code = walk->next(&info);
    if (code != 0) return code == -1 ? archiver::ace_abi::result::kEnd : code;
    if (header->commentBuffer != nullptr) return archiver::ace_abi::result::kOther;
    std::copy_n(info.fileName, sizeof header->fileName, header->fileName);  // without a NUL where it is longer
    header->packedSize = info.compressedSize;
    header->originalSize = info.originalSize;
    header->fileCrc = info.crc;
    header->fileTime = static_cast<std::uint32_t>(info.date) << 16 | info.time;
    header->flags = walk->current().flags;
    header->method = walk->current().method;
    header->attributes = walk->current().attributes;
    return 0;
}

std::int32_t aceProcessFile(ArchiveHandle archive, std::int32_t operation, const char* destination) {
    CallLog(kAce, "ProcessFile") << archive << operation << destination;
    const Walk* const walk = walkOf(archive);
    if (walk == nullptr) return archiver::ace_abi::result::kHandle;
    if (operation == archiver::ace_abi::kSkip) return 0;
    const Script script = readScript();
    std::uint8_t bytes[1024] = {};
    for (std::uint32_t count = walk->processData != nullptr ? script.data : 0; count > 0; --count) {
        if (walk->processData(bytes, sizeof bytes) == 0) return archiver::ace_abi::result::kUser;
    }
    return script.process;
}

std::int32_t aceSetPassword(ArchiveHandle archive, const char* password) {
    CallLog(kAce, "SetPassword") << archive << password;
    return walkOf(archive) != nullptr ? readScript().password : archiver::ace_abi::result::kHandle;
}

IndividualInfo currentRecord(const char* prefix, const char* function, ArchiveHandle archive) {
    CallLog(prefix, function) << archive;
    const Walk* const walk = walkOf(archive);
    return walk != nullptr ? walk->current().info : IndividualInfo{};
}

std::int32_t currentText(const char* prefix, const char* function, ArchiveHandle archive, char* buffer,
                         std::int32_t size) {
    const IndividualInfo info = currentRecord(prefix, function, archive);
    if (buffer == nullptr || size <= 0) return kNotOpened;
    const bool mode = std::string_view(function) == "GetMethod";
    const std::string text =
        mode ? std::string(info.mode, sizeof info.mode) : std::string(info.fileName, sizeof info.fileName);
    std::strncpy(buffer, text.c_str(), static_cast<std::size_t>(size));
    buffer[size - 1] = '\0';
    return walkOf(archive) != nullptr ? 0 : kNotOpened;
}

Bool currentSize(const char* prefix, const char* function, ArchiveHandle archive, std::int64_t* size) {
    CallLog(prefix, function) << archive;
    const Walk* const walk = walkOf(archive);
    if (walk == nullptr || size == nullptr) return 0;
    *size = std::string_view(function) == "GetOriginalSizeEx" ? walk->current().original64 : walk->current().packed64;
    return 1;
}

Bool getMode(const char* prefix, const char* function) {
    CallLog(prefix, function);
    return modes()[std::string(prefix) + (function + 3)];
}

Bool setMode(const char* prefix, const char* function, Bool value) {
    CallLog(prefix, function) << value;
    modes()[std::string(prefix) + (function + 3)] = value;
    return 1;
}

std::int32_t answerZero(const char* prefix, const char* function, ArchiveHandle archive) {
    CallLog(prefix, function) << archive;
    return 0;
}

Bool accept(const char* prefix, const char* function, WindowHandle owner) {
    CallLog(prefix, function) << owner;
    return 1;
}

}  // namespace recording
