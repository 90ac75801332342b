#pragma once
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "archivers/convention/abi.h"
#include "drivers/fakes/member.h"
#include "drivers/module_loader.h"

namespace tovar::test {

/// What stands behind the functions of a FakeModule: they log each call and answer as told here. One at a time is the
/// current one.
struct FakeExports {
    FakeExports() { current() = this; }
    ~FakeExports() { current() = nullptr; }
    FakeExports(const FakeExports&) = delete;
    FakeExports& operator=(const FakeExports&) = delete;

    static FakeExports*& current() {
        static FakeExports* exports = nullptr;
        return exports;
    }

    std::vector<std::string> calls;  ///< name and arguments, texts as the bytes that came
    std::vector<void*> owners;
    std::uint32_t versionRegister = 540;  ///< what GetVersion leaves in the whole register
    archiver::Bool boolAnswer = 1;
    std::int32_t runAnswer = 0;
    std::string written;      ///< into a command's output; may be longer than the buffer by a few bytes
    bool cutToBuffer = true;  ///< a well-behaved library does
    archiver::Bool checkAnswer = 1;
    std::int32_t dialogAnswer = 1;
    archiver::ArchiveHandle handle = this;
    std::vector<LibraryMember> members;
    bool unpackedRecord = false;  ///< writes 560 bytes
    bool writesRecord = true;
    archiver::Bool sizeAnswer = 1;
    std::int64_t original64 = 0, packed64 = 0;
    archiver::Bool unicodeAnswer = 1;
    std::size_t next = 0;

    /// What a running command tells its callback.
    struct Event {
        std::uint32_t state = 0;
        std::string source = {}, destination = {};
        std::uint32_t size = 0, written = 0;
        bool withoutRecord = false;
    };
    std::vector<Event> events;
    archiver::ProgressCallback* callback = nullptr;
    archiver::Bool callbackTaken = 1;
    archiver::Bool passwordTaken = 1;
    std::vector<archiver::Bool> callbackAnswers;

    void tell() {
        if (callback == nullptr) return;
        for (const Event& event : events) {
            archiver::ExtractingInfoEx record{};
            record.info.fileSize = event.size;
            record.info.writeSize = event.written;
            fillField(record.info.sourceFileName, event.source);
            fillField(record.info.destFileName, event.destination);
            callbackAnswers.push_back(callback(nullptr, 0x400, event.state, event.withoutRecord ? nullptr : &record));
        }
    }

    void log(std::string call) { calls.push_back(std::move(call)); }

    std::int32_t give(archiver::IndividualInfo* info) {
        if (next == members.size()) return -1;
        const archiver::IndividualInfo filled = infoOf(members[next++]);
        if (writesRecord) std::memcpy(static_cast<void*>(info), &filled, sizeof filled);
        if (unpackedRecord) std::memset(reinterpret_cast<char*>(info) + sizeof filled, 0, 2);
        return 0;
    }
};

namespace exported {

inline std::int32_t ARCHIVER_CALL run(void* owner, const char* line, char* output, std::uint32_t size) {
    FakeExports& self = *FakeExports::current();
    self.log("Run " + std::string(line) + " into " + std::to_string(size));
    self.owners.push_back(owner);
    self.tell();
    std::memcpy(output, self.written.data(),
                self.cutToBuffer ? std::min<std::size_t>(self.written.size(), size) : self.written.size());
    return self.runAnswer;
}
// Declared with the whole register as its result: the convention's WORD leaves the upper half undefined.
inline std::uint32_t ARCHIVER_CALL getVersion() {
    FakeExports::current()->log("GetVersion");
    return FakeExports::current()->versionRegister;
}
inline archiver::Bool ARCHIVER_CALL getRunning() {
    FakeExports::current()->log("GetRunning");
    return FakeExports::current()->boolAnswer;
}
inline archiver::Bool ARCHIVER_CALL getBackGroundMode() {
    FakeExports::current()->log("GetBackGroundMode");
    return FakeExports::current()->boolAnswer;
}
inline archiver::Bool ARCHIVER_CALL setBackGroundMode(archiver::Bool on) {
    FakeExports::current()->log("SetBackGroundMode " + std::to_string(on));
    return FakeExports::current()->boolAnswer;
}
inline archiver::Bool ARCHIVER_CALL getCursorMode() {
    FakeExports::current()->log("GetCursorMode");
    return FakeExports::current()->boolAnswer;
}
inline archiver::Bool ARCHIVER_CALL setCursorMode(archiver::Bool on) {
    FakeExports::current()->log("SetCursorMode " + std::to_string(on));
    return FakeExports::current()->boolAnswer;
}
inline archiver::Bool ARCHIVER_CALL checkArchive(const char* name, std::int32_t mode) {
    FakeExports::current()->log("CheckArchive " + std::string(name) + ' ' + std::to_string(mode));
    return FakeExports::current()->checkAnswer;
}
inline std::int32_t ARCHIVER_CALL configDialog(void* owner, char* options, std::int32_t mode) {
    FakeExports::current()->log("ConfigDialog " + std::to_string(mode));
    FakeExports::current()->owners.push_back(owner);
    std::memset(options, 'x', archiver::kNameSize);  // as much as the convention promises
    return FakeExports::current()->dialogAnswer;
}
inline archiver::ArchiveHandle ARCHIVER_CALL openArchive(void* owner, const char* name, std::uint32_t mode) {
    FakeExports::current()->log("OpenArchive " + std::string(name) + ' ' + std::to_string(mode));
    FakeExports::current()->owners.push_back(owner);
    return FakeExports::current()->handle;
}
inline std::int32_t ARCHIVER_CALL findFirst(archiver::ArchiveHandle, const char* pattern,
                                            archiver::IndividualInfo* info) {
    FakeExports::current()->log("FindFirst " + std::string(pattern));
    FakeExports::current()->next = 0;
    return FakeExports::current()->give(info);
}
inline std::int32_t ARCHIVER_CALL findNext(archiver::ArchiveHandle, archiver::IndividualInfo* info) {
    FakeExports::current()->log("FindNext");
    return FakeExports::current()->give(info);
}
inline std::int32_t ARCHIVER_CALL closeArchive(archiver::ArchiveHandle) {
    FakeExports::current()->log("CloseArchive");
    return 0;
}
inline archiver::Bool ARCHIVER_CALL getOriginalSizeEx(archiver::ArchiveHandle, std::int64_t* size) {
    *size = FakeExports::current()->original64;
    return FakeExports::current()->sizeAnswer;
}
inline archiver::Bool ARCHIVER_CALL getCompressedSizeEx(archiver::ArchiveHandle, std::int64_t* size) {
    *size = FakeExports::current()->packed64;
    return FakeExports::current()->sizeAnswer;
}
inline archiver::Bool ARCHIVER_CALL setUnicodeMode(archiver::Bool on) {
    FakeExports::current()->log("SetUnicodeMode " + std::to_string(on));
    return FakeExports::current()->unicodeAnswer;
}
inline archiver::Bool ARCHIVER_CALL setOwnerWindowEx(void* owner, archiver::ProgressCallback* callback) {
    FakeExports::current()->log("SetOwnerWindowEx");
    FakeExports::current()->owners.push_back(owner);
    FakeExports::current()->callback = FakeExports::current()->callbackTaken != 0 ? callback : nullptr;
    return FakeExports::current()->callbackTaken;
}
inline archiver::Bool ARCHIVER_CALL killOwnerWindowEx(void* owner) {
    FakeExports::current()->log("KillOwnerWindowEx");
    FakeExports::current()->owners.push_back(owner);
    FakeExports::current()->callback = nullptr;
    return 1;
}
inline archiver::Bool ARCHIVER_CALL setCommandPassword(const char* password) {
    FakeExports::current()->log("SetCommandPassword " + std::string(password == nullptr ? "none" : password));
    return FakeExports::current()->passwordTaken;
}

}  // namespace exported

/// A module with real functions behind the names.
class FakeModule final : public Module {
public:
    std::map<std::string, void*> functions;

    /// @param prefix  of all names; SetUnicodeMode and the 64-bit sizes are left out
    static std::unique_ptr<FakeModule> plain(const std::string& prefix) {
        auto module = std::make_unique<FakeModule>();
        const auto add = [&](const char* name, auto* function) {
            module->functions[prefix + name] = reinterpret_cast<void*>(function);
        };
        add("", &exported::run);
        add("GetVersion", &exported::getVersion);
        add("GetRunning", &exported::getRunning);
        add("GetBackGroundMode", &exported::getBackGroundMode);
        add("SetBackGroundMode", &exported::setBackGroundMode);
        add("GetCursorMode", &exported::getCursorMode);
        add("SetCursorMode", &exported::setCursorMode);
        add("CheckArchive", &exported::checkArchive);
        add("ConfigDialog", &exported::configDialog);
        add("OpenArchive", &exported::openArchive);
        add("FindFirst", &exported::findFirst);
        add("FindNext", &exported::findNext);
        add("CloseArchive", &exported::closeArchive);
        return module;
    }

    static std::unique_ptr<FakeModule> full(const std::string& prefix) {
        auto module = plain(prefix);
        module->functions[prefix + "GetOriginalSizeEx"] = reinterpret_cast<void*>(&exported::getOriginalSizeEx);
        module->functions[prefix + "GetCompressedSizeEx"] = reinterpret_cast<void*>(&exported::getCompressedSizeEx);
        module->functions[prefix + "SetUnicodeMode"] = reinterpret_cast<void*>(&exported::setUnicodeMode);
        return module;
    }

    /// Adds the functions of progress; GetWriteTimeEx is never called.
    void addProgress(const std::string& prefix) {
        functions[prefix + "SetOwnerWindowEx"] = reinterpret_cast<void*>(&exported::setOwnerWindowEx);
        functions[prefix + "KillOwnerWindowEx"] = reinterpret_cast<void*>(&exported::killOwnerWindowEx);
        functions[prefix + "GetWriteTimeEx"] = reinterpret_cast<void*>(&exported::getBackGroundMode);
    }

    void addPassword(const std::string& prefix) {
        functions[prefix + "SetCommandPassword"] = reinterpret_cast<void*>(&exported::setCommandPassword);
    }

    [[nodiscard]] void* find(const char* name) const override {
        const auto found = functions.find(name);
        return found == functions.end() ? nullptr : found->second;
    }
};

}  // namespace tovar::test
