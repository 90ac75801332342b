#include "archivers/convention/library_core.h"

#include <new>
#include <string>
#include <system_error>
#include <utility>

#include "archivers/convention/archive_check.h"
#include "archivers/convention/moment_forms.h"

namespace archiver {

namespace {

/// Calls what may throw; nothing leaves an exported function.
/// @return its result, or `error`
template <class Result, class Call>
Result guarded(Result error, Call call) noexcept {
    try {
        return call();
    } catch (...) {
        return error;
    }
}

/// The same for results that are codes.
template <class Call>
std::int32_t guardedCode(Call call) noexcept {
    try {
        return call();
    } catch (const std::bad_alloc&) {
        return kEnoughMemory;
    } catch (...) {
        return kCannotRead;
    }
}

std::string_view textOrEmpty(const char* text) noexcept { return text == nullptr ? std::string_view() : text; }

std::int32_t refuse(const std::atomic<bool>& running, std::uint32_t* written) noexcept {
    if (written != nullptr) {
        *written = 0;
    }
    return running ? kAlreadyRunning : kNotSupport;
}

}  // namespace

/// The time that a command takes.
class LibraryCore::Running {
public:
    explicit Running(std::atomic<bool>& flag) noexcept : flag_(flag), started_(!flag.exchange(true)) {}
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running() {
        if (started_) {
            flag_ = false;
        }
    }
    /// False when another command runs.
    [[nodiscard]] bool started() const noexcept { return started_; }

private:
    std::atomic<bool>& flag_;
    bool started_;
};

Bool LibraryCore::queryFunctionList(std::int32_t function) const noexcept {
    struct Range {
        std::int32_t first, last;
    };
    static constexpr Range ranges[] = {
        {1, 8},    // the version, the cursor's interval, background and cursor mode, the running state
        {16, 16},  // CheckArchive
        {18, 19},  // GetFileCount, QueryFunctionList
        {23, 26},  // OpenArchive, CloseArchive, FindFirst, FindNext
        {31, 34},  // the owner window
        {40, 48},  // GetArcFileName to IsSFXFile
        {57, 72},  // GetFileName to GetAccessTimeEx
        {82, 86},  // 64-bit sizes
    };
    if (function == 0) {
        return description_.command != nullptr ? 1 : 0;
    }
    if (function == 17) {  // ConfigDialog
        return description_.configure != nullptr ? 1 : 0;
    }
    for (const Range& range : ranges) {
        if (function >= range.first && function <= range.last) {
            return 1;
        }
    }
    return 0;
}

std::int32_t LibraryCore::run(WindowHandle owner, const char* commandLine, char* output,
                              std::uint32_t outputSize) noexcept {
    const Running running(running_);
    CommandOutput text(codec(), output, outputSize);
    if (!running.started()) {
        text.text("A command is running already.\r\n");
        return kAlreadyRunning;
    }
    return guardedCode([&] { return runCommand(owner, commandLine, nullptr, text); });
}

std::int32_t LibraryCore::runCommand(WindowHandle owner, const char* commandLine, MemoryTarget* memory,
                                     CommandOutput& output) {
    if (description_.command == nullptr) {
        output.text(std::string(description_.prefix) + ": commands are not supported by this version.\r\n");
        return kNotSupport;
    }
    const std::string line = codec().decode(textOrEmpty(commandLine));
    std::string password = givenPassword_.get();
    const std::int32_t code = description_.command({.window = owner,
                                                    .progress = progressOwner(),
                                                    .commandLine = line,
                                                    .pumpMessages = backGroundMode_,
                                                    .codec = codec(),
                                                    .library = description_,
                                                    .passwords = passwords_,
                                                    .password = password,
                                                    .memory = memory},
                                                   output);
    wipePassword(password);
    return code;
}

std::int32_t LibraryCore::extractMem(WindowHandle owner, const char* commandLine, std::uint8_t* buffer,
                                     std::uint32_t size, std::int32_t* time, std::uint16_t* attribute,
                                     std::uint32_t* written) noexcept {
    if (written != nullptr) *written = 0;
    const Running running(running_);
    if (!running.started()) return kAlreadyRunning;
    return guardedCode([&]() -> std::int32_t {
        MemoryTarget memory{.buffer = {reinterpret_cast<char*>(buffer), buffer == nullptr ? 0 : size}};
        CommandOutput noText(codec(), nullptr, 0);
        const std::int32_t code = runCommand(owner, commandLine, &memory, noText);
        if (written != nullptr) *written = static_cast<std::uint32_t>(memory.written);
        if (code != kOk) return code;
        if (time != nullptr && memory.changed) *time = static_cast<std::int32_t>(secondsOf(*memory.changed));
        if (attribute != nullptr) *attribute = memory.attributes;
        return memory.whole ? kOk : kEnoughMemory;
    });
}

std::int32_t LibraryCore::compressMem(std::uint32_t* written) const noexcept { return refuse(running_, written); }

std::int32_t LibraryCore::configDialog(WindowHandle owner) noexcept {
    const Running running(running_);
    if (!running.started()) return kAlreadyRunning;
    // Without an owner window none is shown, here as everywhere.
    if (owner == nullptr || description_.configure == nullptr) return 0;
    return description_.configure(owner, description_.title) ? 1 : 0;
}

template <class Value>
Bool LibraryCore::keep(std::atomic<Value>& place, Value value) noexcept {
    if (running_) {
        return 0;
    }
    place = value;
    return 1;
}

Bool LibraryCore::setBackGroundMode(Bool on) noexcept { return keep(backGroundMode_, on != 0); }

Bool LibraryCore::setCursorMode(Bool on) noexcept { return keep(cursorMode_, on != 0); }

Bool LibraryCore::setCursorInterval(std::uint16_t milliseconds) noexcept { return keep(cursorInterval_, milliseconds); }

Bool LibraryCore::setUnicodeMode(Bool on) noexcept { return keep(unicodeMode_, on != 0); }

Bool LibraryCore::setCommandPassword(const char* password) noexcept {
    if (running_) return 0;
    return guarded<Bool>(0, [&] {
        std::string utf8 = codec().decode(textOrEmpty(password));
        givenPassword_.set(utf8);
        wipePassword(utf8);
        return 1;
    });
}

Bool LibraryCore::setOwner(ProgressOwner owner) noexcept {
    return guarded<Bool>(0, [&] {
        const std::lock_guard lock(ownerMutex_);
        if (running_) {
            return 0;
        }
        owner_ = owner;
        return 1;
    });
}

Bool LibraryCore::setOwnerWindow(WindowHandle owner) noexcept {
    return owner == nullptr ? 0 : setOwner({owner, nullptr});
}

Bool LibraryCore::clearOwnerWindow() noexcept { return setOwner({}); }

Bool LibraryCore::setOwnerWindowEx(WindowHandle owner, ProgressCallback* callback) noexcept {
    return callback == nullptr ? 0 : setOwner({owner, callback});
}

Bool LibraryCore::killOwnerWindowEx(WindowHandle owner) noexcept {
    const ProgressOwner current = progressOwner();
    return current.callback == nullptr || current.window != owner ? 0 : setOwner({});
}

ProgressOwner LibraryCore::progressOwner() noexcept {
    return guarded<ProgressOwner>({}, [&] {
        const std::lock_guard lock(ownerMutex_);
        return owner_;
    });
}

std::filesystem::path LibraryCore::fileOf(const char* fileName) const {
    const std::string_view text = textOrEmpty(fileName);
    if (text.empty()) {
        throw std::system_error(std::make_error_code(std::errc::invalid_argument));
    }
    // The current folder of this moment counts: the name must mean the same file when it is changed later.
    return std::filesystem::absolute(codec().decodePath(text));
}

Bool LibraryCore::checkArchive(const char* fileName, std::int32_t mode) noexcept {
    return guarded<Bool>(0, [&] { return archiver::checkArchive(description_.open, fileOf(fileName), mode); });
}

std::int32_t LibraryCore::fileCount(const char* fileName) noexcept {
    return guarded<std::int32_t>(-1, [&] { return countMembers(description_.open, fileOf(fileName)); });
}

std::int32_t LibraryCore::archiveType(const char* fileName) noexcept {
    return guarded<std::int32_t>(-1, [&] {
        const OpenResult opened = description_.open(fileOf(fileName));
        if (opened.reader != nullptr) {
            return opened.reader->facts().archiveType;
        }
        return opened.code == kFileStyle ? 0 : -1;
    });
}

ArchiveHandle LibraryCore::openArchive(WindowHandle, const char* fileName, std::uint32_t mode) noexcept {
    return guarded<ArchiveHandle>(nullptr, [&]() -> ArchiveHandle {
        std::filesystem::path file = fileOf(fileName);
        OpenResult opened = description_.open(file);
        if (opened.reader == nullptr) {
            return nullptr;
        }
        return handles_.add(std::make_unique<OpenedArchive>(std::move(opened.reader), std::move(file), mode));
    });
}

std::int32_t LibraryCore::findFirst(ArchiveHandle archive, const char* wildName, IndividualInfo* info) noexcept {
    return guardedCode([&] {
        const HandleTable::Access access = handles_.find(archive);
        return access ? told(*access, access->findFirst(codec().decode(textOrEmpty(wildName))), info)
                      : static_cast<std::int32_t>(kHarcIsNotOpened);
    });
}

std::int32_t LibraryCore::findNext(ArchiveHandle archive, IndividualInfo* info) noexcept {
    return guardedCode([&] {
        const HandleTable::Access access = handles_.find(archive);
        return access ? told(*access, access->findNext(), info) : static_cast<std::int32_t>(kHarcIsNotOpened);
    });
}

std::int32_t LibraryCore::told(const OpenedArchive& archive, std::int32_t code, IndividualInfo* info) const noexcept {
    if (code == kOk && info != nullptr) {
        fillRecord(*archive.current(), description_, codec(), *info);
    }
    return code;
}

std::int32_t LibraryCore::closeArchive(ArchiveHandle archive) noexcept {
    return guardedCode([&] { return handles_.close(archive) ? kOk : kHarcIsNotOpened; });
}

}  // namespace archiver
