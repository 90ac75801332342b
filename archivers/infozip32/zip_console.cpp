#include "archivers/infozip32/zip_console.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <system_error>
#include <vector>

#include "archivers/formats/legacy_text.h"
#include "archivers/formats/utf8.h"

namespace archiver::infozip {

namespace result = zip_abi::result;

namespace {

/// Bytes of the comment callback's buffer, the NUL included.
constexpr std::size_t kCommentBuffer = std::size_t{64} << 10;
constexpr std::int32_t kPasswordBuffer = 256;

std::errc errorOf(ReturnCode cause) noexcept {
    switch (cause) {
        case kDiskSpace:
            return std::errc::no_space_on_device;
        case kReadOnly:
        case kArcReadOnly:
            return std::errc::permission_denied;
        case kArcFileOpen:
            return std::errc::device_or_resource_busy;
        case kTmpOpen:
            return std::errc::no_such_file_or_directory;
        default:
            return std::errc::io_error;
    }
}

/// The comment in an archive, whose encoding is told nowhere: UTF-8 if it is that.
std::string textOfComment(const std::string& bytes) {
    std::string text;
    if (isUtf8(bytes)) return bytes;
    appendLegacyText(bytes, LegacyPage::kOem, text);
    return text;
}

}  // namespace

unsigned savedPerCent(std::uint64_t original, std::uint64_t packed) noexcept {
    if (original > 0xFFFFFF) {
        original >>= 8;
        packed >>= 8;
    }
    if (original == 0 || packed >= original) return 0;
    return static_cast<unsigned>((1 + 200 * (original - packed) / original) / 2);
}

std::string_view textOf(std::int32_t code) noexcept {
    switch (code) {
        case result::kUnexpectedEnd:
            return "Unexpected end of zip file";
        case result::kStructure:
            return "Zip file structure invalid";
        case result::kMemory:
            return "Out of memory";
        case result::kLogic:
            return "Internal logic error";
        case result::kTooLarge:
            return "Entry too big to split";
        case result::kComment:
            return "Invalid comment format";
        case result::kTest:
            return "Zip file invalid or could not spawn unzip";
        case result::kInterrupted:
            return "Interrupted";
        case result::kTemporaryFile:
            return "Temporary file failure";
        case result::kRead:
            return "Input file read failure";
        case result::kNothingToDo:
            return "Nothing to do!";
        case result::kNoArchive:
            return "Missing or empty zip file";
        case result::kWrite:
            return "Output file write failure";
        case result::kCreate:
            return "Could not create output file";
        case result::kParameters:
            return "Invalid command arguments";
        case result::kOpen:
            return "File not found or no read permission";
        default:
            return {};
    }
}

void ZipConsole::print(std::string_view text) {
    if (callbacks_.message == nullptr) return;
    // A copy with a NUL at its end, which the length does not count.
    const std::string piece(text);
    static_cast<void>(callbacks_.message(piece.c_str(), static_cast<std::uint32_t>(piece.size())));
}

std::string ZipConsole::encoded(std::string_view utf8) const {
    std::string text(utf8.size() * 2 + 8, '\0');
    for (;;) {
        const TextCodec::Written written = codec_.encode(utf8, text.data(), text.size());
        if (written.whole) {
            text.resize(written.length);
            return text;
        }
        text.resize(text.size() * 2);
    }
}

void ZipConsole::begin(Verb verb, std::string_view name) {
    if (quiet) return;
    static constexpr std::string_view kVerbs[] = {"  adding: ", "updating: ", "freshening: "};
    print(std::string(kVerbs[static_cast<std::size_t>(verb)]) + encoded(name));
}

void ZipConsole::dot() {
    if (verbose && !quiet) print(".");
}

void ZipConsole::end(std::uint64_t original, std::uint64_t packed, bool deflated) {
    if (quiet) return;
    if (verbose) print("\t(in=" + std::to_string(original) + ") (out=" + std::to_string(packed) + ")");
    const unsigned saved = deflated ? savedPerCent(original, packed) : 0;
    print((deflated ? " (deflated " : " (stored ") + std::to_string(saved) + "%)\n");
}

void ZipConsole::deleting(std::string_view name) {
    if (!quiet) print("deleting: " + encoded(name) + "\n");
}

void ZipConsole::totals(std::uint64_t original, std::uint64_t packed) {
    if (!verbose || quiet) return;
    print("total bytes=" + std::to_string(original) + ", compressed=" + std::to_string(packed) + " -> " +
          std::to_string(savedPerCent(original, packed)) + "% savings\n");
}

void ZipConsole::warning(std::string_view text, std::string_view name) {
    print("\tzip warning: " + std::string(text) + encoded(name) + "\n");
}

void ZipConsole::warningOf(std::string_view name, std::string_view text) {
    print("\tzip warning: " + encoded(name) + std::string(text) + "\n");
}

void ZipConsole::error(std::int32_t code, std::string_view detail, ReturnCode cause) {
    if (cause != kOk) print(std::make_error_code(errorOf(cause)).message());
    print("\nzip error: " + std::string(textOf(code)) + " (" + encoded(detail) + ")\n");
}

bool ZipConsole::service(std::string_view name, std::uint64_t size) {
    if (callbacks_.service == nullptr) return true;
    const auto shown =
        static_cast<std::uint32_t>(std::min<std::uint64_t>(size, std::numeric_limits<std::uint32_t>::max()));
    return callbacks_.service(encoded(name).c_str(), shown) == 0;
}

std::int32_t ZipConsole::password(std::string_view name, std::string& password, std::string& detail) {
    detail = "no password given";
    if (callbacks_.password == nullptr) return result::kParameters;
    const std::string archive = encoded(name);
    std::string answers[2];
    static constexpr const char* kPrompts[] = {"Enter password: ", "Verify password: "};
    std::int32_t code = result::kOk;
    for (int turn = 0; turn < 2 && code == result::kOk; ++turn) {
        std::vector<char> buffer(static_cast<std::size_t>(kPasswordBuffer), '\0');
        const std::int32_t answer =
            callbacks_.password(buffer.data(), kPasswordBuffer, kPrompts[turn], archive.c_str());
        buffer.back() = '\0';
        answers[turn] = buffer.data();
        std::ranges::fill(buffer, '\0');
        if (answer != 0) code = result::kInterrupted;
        if (answer == 0 && answers[turn].empty()) {
            detail = "zero length password not allowed";
            code = result::kParameters;
        }
    }
    if (code == result::kInterrupted) detail = "aborting";
    if (code == result::kOk && answers[0] != answers[1]) {
        detail = "password verification failed";
        code = result::kParameters;
    }
    if (code == result::kOk) password = answers[0];
    for (std::string& each : answers) std::ranges::fill(each, '\0');
    return code;
}

/// The callback's result does not count; but a caller that tells that there is none leaves an empty text, and the old
/// comment stays then.
void ZipConsole::comment(std::string& comment) {
    if (callbacks_.comment == nullptr) return;
    const std::string before = encoded(textOfComment(comment)).substr(0, kCommentBuffer - 1);
    std::vector<char> buffer(kCommentBuffer + 1, '\0');  // and one for who writes one too many
    std::ranges::copy(before, buffer.begin());
    const std::int32_t answer = callbacks_.comment(buffer.data());
    buffer.back() = '\0';
    const std::string after = buffer.data();
    if (after == before || (after.empty() && answer != 0)) return;
    comment = codec_.decode(after);
}

}  // namespace archiver::infozip
