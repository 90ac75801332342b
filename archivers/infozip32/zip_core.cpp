#include "archivers/infozip32/zip_core.h"

#include <zlib.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <new>
#include <system_error>

#include "archivers/infozip32/messages_pump.h"
#include "archivers/infozip32/zip_console.h"
#include "archivers/infozip32/zip_run.h"

namespace archiver::infozip {

namespace result = zip_abi::result;

namespace {

/// The process's current folder, while it lives. One that cannot be entered is not: names start there all the same.
class CurrentFolder {
public:
    explicit CurrentFolder(const std::filesystem::path& folder) {
        if (folder.empty()) return;
        before_ = std::filesystem::current_path(failure_);
        if (!failure_) std::filesystem::current_path(folder, failure_);
        entered_ = !failure_;
    }
    ~CurrentFolder() {
        if (entered_) std::filesystem::current_path(before_, failure_);
    }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;

private:
    std::error_code failure_;
    std::filesystem::path before_;
    bool entered_ = false;
};

class Busy {
public:
    explicit Busy(std::atomic<bool>& flag) noexcept : flag_(flag), mine_(!flag.exchange(true)) {}
    ~Busy() {
        if (mine_) flag_ = false;
    }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;
    [[nodiscard]] bool mine() const noexcept { return mine_; }

private:
    std::atomic<bool>& flag_;
    bool mine_;
};

std::string textOrEmpty(const char* text) { return text == nullptr ? std::string() : std::string(text); }

/// A path of a caller, who may write "\" on any system.
std::filesystem::path pathOf(const TextCodec& codec, const char* text) {
    std::filesystem::path path = codec.decodePath(text);
    if constexpr (std::filesystem::path::preferred_separator == '/') {
        auto native = path.native();
        std::ranges::replace(native, std::filesystem::path::value_type{'\\'}, std::filesystem::path::value_type{'/'});
        path = native;
    }
    return path;
}

ZipTask::Mode modeOf(const zip_abi::Options& options) noexcept {
    if (options.deleteEntries != 0) return ZipTask::Mode::kDelete;
    if (options.repair != 0) return ZipTask::Mode::kRepair;
    if (options.freshen != 0) return ZipTask::Mode::kFreshen;
    return options.update != 0 ? ZipTask::Mode::kUpdate : ZipTask::Mode::kAdd;
}

/// What is asked for and not done is refused: an archive that differs from what was asked for serves nobody. The new
/// archive always lies beside the old one and `grow` has no other way than `add`, for nothing is written into an
/// archive that is there.
bool asksForMore(const zip_abi::Options& options) noexcept {
    return options.volumeLabel != 0 || options.crLfToLf != 0 || options.lfToCrLf != 0 || options.shortNames != 0 ||
           options.excludeByDate != 0 || options.includeByDate != 0 || options.latestTime != 0;
}

}  // namespace

std::int32_t ZipCore::init(const zip_abi::Callbacks* callbacks) noexcept {
    if (callbacks == nullptr || callbacks->message == nullptr || callbacks->comment == nullptr) return 0;
    if (running_) return 0;
    callbacks_ = *callbacks;
    return 1;
}

std::int32_t ZipCore::setOptions(const zip_abi::Options* options) noexcept {
    if (options == nullptr || running_) return 0;
    try {
        date_ = textOrEmpty(options->date);
        rootFolder_ = textOrEmpty(options->rootFolder);
        temporaryFolder_ = textOrEmpty(options->temporaryFolder);
    } catch (const std::bad_alloc&) {
        return 0;
    }
    options_ = *options;
    options_.date = date_.c_str();
    options_.rootFolder = rootFolder_.c_str();
    options_.temporaryFolder = temporaryFolder_.c_str();
    return 1;
}

zip_abi::Options ZipCore::options() noexcept {
    zip_abi::Options options = options_;
    options.encryptionSupported = 1;
    return options;
}

std::int32_t ZipCore::setUnicodeMode(std::int32_t on) noexcept {
    if (running_) return 0;
    unicode_ = on != 0;
    return 1;
}

std::int32_t ZipCore::archive(const zip_abi::Command& command) noexcept {
    const Busy busy(running_);
    if (!busy.mine() || callbacks_.message == nullptr) return result::kLogic;
    try {
        return run(command);
    } catch (const std::bad_alloc&) {
        return result::kMemory;
    } catch (...) {
        return result::kLogic;
    }
}

std::int32_t ZipCore::run(const zip_abi::Command& command) {
    const TextCodec& codec = unicode_ ? utf8Codec() : ansiCodec();
    ZipConsole console(callbacks_, codec);
    console.quiet = options_.quiet != 0;
    console.verbose = options_.verbose != 0;
    const auto refuse = [&console](std::string_view why) {
        console.error(result::kParameters, why, kOk);
        return result::kParameters;
    };
    if (command.archive == nullptr || *command.archive == '\0') return refuse("no archive name");
    if (command.count < 0 || (command.count > 0 && command.names == nullptr)) return refuse("no names");
    if (options_.level < '0' || options_.level > '9') return refuse("compression level");
    if (asksForMore(options_)) return refuse("option not supported");

    ZipTask task;
    task.mode = modeOf(options_);
    task.archiveName = codec.decode(command.archive);
    const std::filesystem::path root = pathOf(codec, rootFolder_.c_str());
    const CurrentFolder current(root);
    task.archive = pathOf(codec, command.archive);
    if (!task.archive.has_root_path() && !root.empty()) task.archive = root / task.archive;
    task.base = root.empty() ? std::filesystem::current_path() : root;
    for (std::int32_t at = 0; at < command.count; ++at) {
        const char* const name = command.names[at];
        if (name != nullptr && *name != '\0') task.names.push_back(pathOf(codec, name));
    }
    task.walk.recurse = options_.recurse != 0;
    task.walk.hidden = options_.systemAndHidden != 0;
    task.walk.folderEntries = options_.noFolderEntries == 0;
    const bool packs = task.mode != ZipTask::Mode::kDelete && task.mode != ZipTask::Mode::kRepair;
    task.move = options_.move != 0 && packs;
    task.encrypt = options_.encrypt != 0 && packs;
    task.comment = options_.comment != 0;
    task.junkFolders = options_.junkFolders != 0;
    task.junkSelfExtractor = options_.junkSelfExtractor != 0;
    task.pack.level = options_.level - '0';
    task.pack.plainTimes = options_.excludeExtra != 0;

    const ZipSystems systems{systemSources(), systemPackingFiles(), ArchiveReplacement::kBuffer, pumpMessages};
    return ZipRun(std::move(task), console, systems).run();
}

void ZipCore::version(zip_abi::Version* version) noexcept {
    if (version == nullptr) return;
    *version = {};
    version->size = sizeof *version;
    version->flags = 2;
    const auto copy = [](std::span<char> field, const char* text) {
        std::copy_n(text, std::min(std::strlen(text), field.size() - 1), field.begin());
    };
    copy(version->zlibVersion, ::zlibVersion());
    version->zip = {2, 32, 0, 0};
    version->windowsLibrary = {2, 32, 0, 0};
}

}  // namespace archiver::infozip
