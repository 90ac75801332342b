#include "drivers/bound_library.h"

#include <utility>

#include "drivers/guarded_call.h"
#include "drivers/record_text.h"
#include "drivers/return_codes.h"
#include "shell/secret_text.h"

namespace tovar {
namespace {

/// Behind each buffer that a library fills, for those that count a little beyond its end.
constexpr std::size_t kSlack = 16;

/// The convention asks for 513 bytes.
constexpr std::size_t kOptionBuffer = 4096;

std::optional<std::uint64_t> sizeOf(archiver::fn::GetSizeEx* query, archiver::ArchiveHandle archive) {
    std::int64_t size = -1;
    if (query == nullptr || query(archive, &size) == 0 || size < 0) {
        return std::nullopt;
    }
    return static_cast<std::uint64_t>(size);
}

}  // namespace

/// Has the library tell how a command gets on while the object lives.
class BoundLibrary::ProgressCall {
public:
    ProgressCall(BoundLibrary& library, WindowHandle owner) : library_(library), owner_(owner), outer_(current_) {
        if (library.progress_ && library.functions_.setOwnerWindowEx != nullptr) {
            current_ = &library;
            told_ = library.functions_.setOwnerWindowEx(owner, &ProgressCall::tell) != 0;
        }
    }
    ~ProgressCall() {
        if (told_) library_.functions_.killOwnerWindowEx(owner_);
        current_ = outer_;
    }
    ProgressCall(const ProgressCall&) = delete;
    ProgressCall& operator=(const ProgressCall&) = delete;

private:
    static archiver::Bool ARCHIVER_CALL tell(WindowHandle, std::uint32_t, std::uint32_t state,
                                             archiver::ExtractingInfoEx* info) {
        return guarded(archiver::Bool{1}, [&]() -> archiver::Bool {
            const BoundLibrary* const library = current_;
            if (library == nullptr) return 0;
            ExtractProgress progress;
            progress.state = state <= 4 ? static_cast<ExtractProgress::State>(state) : ExtractProgress::State::Working;
            if (info != nullptr) {
                library->decodeTo(fieldText(info->info.sourceFileName), progress.member);
                library->decodeTo(fieldText(info->info.destFileName), progress.file);
                progress.size = info->info.fileSize;
                progress.written = info->info.writeSize;
            }
            return library->progress_(progress) ? 0 : 1;
        });
    }

    // The callback gets no word of ours with it. Libraries are called on one thread, and call it on the same.
    static BoundLibrary* current_;

    BoundLibrary& library_;
    WindowHandle owner_;
    BoundLibrary* outer_;
    bool told_ = false;
};
BoundLibrary* BoundLibrary::ProgressCall::current_ = nullptr;

/// The library has the password while the object lives, and not longer: another caller's command must not find it.
class BoundLibrary::PasswordCall {
public:
    explicit PasswordCall(BoundLibrary& library) : set_(library.functions_.setCommandPassword) {
        if (set_ == nullptr || library.password_.empty()) return;
        std::optional<std::string> bytes = library.texts_.encode(library.password_);
        if (!bytes) return;  // the library's code page cannot hold it: the archive's password is another
        const WipedAtEnd<char> wiped(*bytes);
        given_ = set_(bytes->c_str()) != 0;
    }
    ~PasswordCall() {
        if (given_) set_(nullptr);
    }
    PasswordCall(const PasswordCall&) = delete;
    PasswordCall& operator=(const PasswordCall&) = delete;

private:
    archiver::fn::SetCommandPassword* set_;
    bool given_ = false;
};

BoundLibrary::~BoundLibrary() { wipe(password_); }

bool BoundLibrary::setPassword(std::wstring_view password) {
    wipe(password_);
    password_ = password;
    return functions_.setCommandPassword != nullptr;
}

BoundLibrary::BoundLibrary(std::unique_ptr<Module> module, const DriverDescription& description, const TextCodec& ansi,
                           const SystemPaths& system)
    : module_(std::move(module)),
      functions_(bind(*module_, description.prefix)),
      texts_(functions_.setUnicodeMode, ansi, system) {}

BoundLibrary::Functions BoundLibrary::bind(const Module& module, std::string_view prefix) {
    const auto find = [&module, prefix]<class Function>(Function*& function, const char* name) {
        function = reinterpret_cast<Function*>(module.find((std::string(prefix) + name).c_str()));
    };
    Functions functions{};
    find(functions.run, "");
    find(functions.getVersion, "GetVersion");
    find(functions.getRunning, "GetRunning");
    find(functions.getBackGroundMode, "GetBackGroundMode");
    find(functions.setBackGroundMode, "SetBackGroundMode");
    find(functions.getCursorMode, "GetCursorMode");
    find(functions.setCursorMode, "SetCursorMode");
    find(functions.checkArchive, "CheckArchive");
    find(functions.configDialog, "ConfigDialog");
    find(functions.openArchive, "OpenArchive");
    find(functions.findFirst, "FindFirst");
    find(functions.findNext, "FindNext");
    find(functions.closeArchive, "CloseArchive");
    find(functions.getOriginalSizeEx, "GetOriginalSizeEx");
    find(functions.getCompressedSizeEx, "GetCompressedSizeEx");
    find(functions.setUnicodeMode, "SetUnicodeMode");
    find(functions.setCommandPassword, "SetCommandPassword");
    // Older libraries do not agree on which answer of the callback means "cancel". Those that give times as FILETIME
    // came later and do.
    if (module.find((std::string(prefix) + "GetWriteTimeEx").c_str()) != nullptr) {
        find(functions.setOwnerWindowEx, "SetOwnerWindowEx");
        find(functions.killOwnerWindowEx, "KillOwnerWindowEx");
        if (functions.killOwnerWindowEx == nullptr) functions.setOwnerWindowEx = nullptr;
    }
    return functions;
}

const TextCodec& BoundLibrary::commandCodec() {
    const LibraryTexts::Use use(texts_);
    return texts_.codec();
}

std::uint16_t BoundLibrary::version() {
    return functions_.getVersion != nullptr ? functions_.getVersion() : kUnusableVersion;
}

bool BoundLibrary::running() { return functions_.getRunning != nullptr && functions_.getRunning() != 0; }

bool BoundLibrary::backGroundMode() {
    return functions_.getBackGroundMode != nullptr && functions_.getBackGroundMode() != 0;
}

bool BoundLibrary::setBackGroundMode(bool on) {
    return functions_.setBackGroundMode != nullptr && functions_.setBackGroundMode(on ? 1 : 0) != 0;
}

bool BoundLibrary::cursorMode() { return functions_.getCursorMode != nullptr && functions_.getCursorMode() != 0; }

bool BoundLibrary::setCursorMode(bool on) {
    return functions_.setCursorMode != nullptr && functions_.setCursorMode(on ? 1 : 0) != 0;
}

std::int32_t BoundLibrary::run(WindowHandle owner, std::wstring_view commandLine, std::uint32_t bufferSize,
                               std::wstring& output) {
    output.clear();
    if (functions_.run == nullptr) {
        return return_code::kUnsupported;
    }
    return guarded(return_code::kOutOfMemory, [&] {
        const LibraryTexts::Use use(texts_);
        const std::optional<std::string> command = texts_.encode(commandLine);
        if (!command) {
            return return_code::kIllegalCommand;
        }
        std::string buffer(bufferSize + kSlack, '\0');
        const ProgressCall progress(*this, owner);
        const PasswordCall password(*this);
        const std::int32_t code = functions_.run(owner, command->c_str(), buffer.data(), bufferSize);
        texts_.codec().decodeTo(std::string_view(buffer).substr(0, bufferSize), output);
        return code;
    });
}

std::int32_t BoundLibrary::checkArchive(std::wstring_view fileName, std::int32_t mode) {
    if (functions_.checkArchive == nullptr) {
        return 0;
    }
    return guarded(0, [&] {
        const LibraryTexts::Use use(texts_);
        const std::optional<std::string> name = texts_.encodeFileName(fileName, archiver::kNameSize - 1);
        return name ? functions_.checkArchive(name->c_str(), mode) : 0;
    });
}

std::int32_t BoundLibrary::configDialog(WindowHandle owner, std::int32_t mode) {
    if (functions_.configDialog == nullptr) {
        return return_code::kUnsupported;
    }
    return guarded(return_code::kOutOfMemory, [&] {
        const LibraryTexts::Use use(texts_);
        std::string options(kOptionBuffer, '\0');
        return functions_.configDialog(owner, options.data(), mode);
    });
}

archiver::ArchiveHandle BoundLibrary::openArchive(WindowHandle owner, std::wstring_view fileName, std::uint32_t mode) {
    if (functions_.openArchive == nullptr) {
        return nullptr;
    }
    return guarded(archiver::ArchiveHandle{}, [&] {
        const LibraryTexts::Use use(texts_);
        const std::optional<std::string> name = texts_.encodeFileName(fileName, archiver::kNameSize - 1);
        const archiver::ArchiveHandle archive =
            name ? functions_.openArchive(owner, name->c_str(), mode) : archiver::ArchiveHandle{};
        if (archive != nullptr) {
            texts_.enter();
            ++openArchives_;
        }
        return archive;
    });
}

std::int32_t BoundLibrary::findFirst(archiver::ArchiveHandle archive, std::wstring_view wildName,
                                     archiver::IndividualInfo& info) {
    info = {};
    if (functions_.findFirst == nullptr) {
        return return_code::kUnsupported;
    }
    return guarded(return_code::kOutOfMemory, [&] {
        const std::optional<std::string> pattern = texts_.encode(wildName);
        return pattern ? functions_.findFirst(archive, pattern->c_str(), &info) : return_code::kIllegalCommand;
    });
}

std::int32_t BoundLibrary::findNext(archiver::ArchiveHandle archive, archiver::IndividualInfo& info) {
    info = {};
    return functions_.findNext != nullptr ? functions_.findNext(archive, &info) : return_code::kUnsupported;
}

std::int32_t BoundLibrary::closeArchive(archiver::ArchiveHandle archive) {
    const std::int32_t code =
        functions_.closeArchive != nullptr ? functions_.closeArchive(archive) : return_code::kUnsupported;
    if (openArchives_ > 0) {
        --openArchives_;
        texts_.leave();
    }
    return code;
}

std::optional<std::uint64_t> BoundLibrary::originalSize(archiver::ArchiveHandle archive) {
    return sizeOf(functions_.getOriginalSizeEx, archive);
}

std::optional<std::uint64_t> BoundLibrary::compressedSize(archiver::ArchiveHandle archive) {
    return sizeOf(functions_.getCompressedSizeEx, archive);
}

void BoundLibrary::decodeTo(std::string_view bytes, std::wstring& text) const { texts_.codec().decodeTo(bytes, text); }

}  // namespace tovar
