#include "create/bound_zip_library.h"

#include <string>
#include <utility>

namespace tovar {

namespace abi = archiver::zip_abi;

namespace {

constexpr std::int32_t kNone = -1;  ///< of the callbacks that ask: there is no answer

std::string_view textOrEmpty(const char* text) { return text == nullptr ? std::string_view() : text; }

/// A callback's work; what it throws stays here, for there are frames of another's library below it.
template <class Answer, class Work>
Answer answered(Answer failure, Work&& work) noexcept {
    try {
        return work();
    } catch (...) {
        return failure;
    }
}

}  // namespace

/// Leads the library's callbacks to the events of the run that is going on.
class BoundZipLibrary::Calls {
public:
    explicit Calls(ZipEvents& events) : outer_(std::exchange(current_, &events)) {}
    ~Calls() { current_ = outer_; }
    Calls(const Calls&) = delete;
    Calls& operator=(const Calls&) = delete;

    static constexpr abi::Callbacks callbacks() { return {&message, &comment, &password, &service}; }

private:
    static std::uint32_t ARCHIVER_CALL message(const char* text, std::uint32_t length) {
        return answered(length, [&] {
            if (current_ != nullptr && text != nullptr) {
                const std::string_view piece(text, length);
                current_->message(piece.substr(0, piece.find('\0')));
            }
            return length;
        });
    }
    static std::int32_t ARCHIVER_CALL comment(char* buffer) {
        return answered(kNone, [&] {
            if (buffer == nullptr) return kNone;
            *buffer = '\0';
            const std::span room(buffer, abi::kCommentSize);
            return current_ != nullptr && current_->comment(room) ? 0 : kNone;
        });
    }
    static std::int32_t ARCHIVER_CALL password(char* buffer, std::int32_t size, const char* prompt, const char* name) {
        return answered(kNone, [&] {
            if (buffer == nullptr || size <= 0) return kNone;
            *buffer = '\0';
            const std::span room(buffer, static_cast<std::size_t>(size));
            const bool given = current_ != nullptr && current_->password(room, textOrEmpty(prompt), textOrEmpty(name));
            return given ? 0 : kNone;
        });
    }
    static std::int32_t ARCHIVER_CALL service(const char* name, std::uint32_t size) {
        return answered(std::int32_t{1}, [&] {
            return current_ == nullptr || current_->service(textOrEmpty(name), size) ? std::int32_t{1}
                                                                                     : std::int32_t{0};
        });
    }

    // The callbacks get no word of ours with them. The library is called on one thread, and calls them on the same.
    static ZipEvents* current_;

    ZipEvents* outer_;
};
ZipEvents* BoundZipLibrary::Calls::current_ = nullptr;

BoundZipLibrary::BoundZipLibrary(std::unique_ptr<Module> module, const TextCodec& ansi, const SystemPaths& system)
    : module_(std::move(module)), functions_(bind(*module_)), texts_(functions_.setUnicodeMode, ansi, system) {}

BoundZipLibrary::Functions BoundZipLibrary::bind(const Module& module) {
    const auto find = [&module]<class Function>(Function*& function, const char* name) {
        function = reinterpret_cast<Function*>(module.find(name));
    };
    Functions functions{};
    find(functions.init, "ZpInit");
    find(functions.setOptions, "ZpSetOptions");
    find(functions.archive, "ZpArchive");
    find(functions.setUnicodeMode, "ZpSetUnicodeMode");
    return functions;
}

bool BoundZipLibrary::complete() const noexcept {
    return functions_.init != nullptr && functions_.setOptions != nullptr && functions_.archive != nullptr;
}

std::int32_t BoundZipLibrary::run(const abi::Options& options, const abi::Command& command, ZipEvents& events) {
    if (!complete()) return abi::result::kParameters;
    const Calls calls(events);
    // Kept by libraries that take the address, not the record.
    static constexpr abi::Callbacks kCallbacks = Calls::callbacks();
    functions_.init(&kCallbacks);
    functions_.setOptions(&options);
    return functions_.archive(command);
}

ZipLibrary* FoundZipLibraries::get() {
    if (library_) return library_.get();
    const std::wstring path = finder_.find(kLibrary);
    std::unique_ptr<Module> module = path.empty() ? nullptr : loader_.load(path);
    if (!module) return nullptr;
    auto library = std::make_unique<BoundZipLibrary>(std::move(module), ansi_, system_);
    if (!library->complete()) return nullptr;
    library_ = std::move(library);
    return library_.get();
}

}  // namespace tovar
