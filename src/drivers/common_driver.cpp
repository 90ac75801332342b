#include "drivers/common_driver.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <functional>

#include "drivers/extract_lines.h"
#include "drivers/record_text.h"
#include "drivers/return_codes.h"

namespace tovar {
namespace {

constexpr std::uint32_t kOpenMode = 0;        ///< the library's own defaults
constexpr std::int32_t kUnpackDialog = 1;     ///< settings of unpacking
constexpr std::uint32_t kLineLength = 81;     ///< what a command's output has for one file
constexpr std::uint32_t kMoreFileLines = 4;   ///< and for its frame
constexpr std::int32_t kNoMoreEntries = -1;   ///< every other answer of a search ends the listing early
constexpr std::int32_t kFirstError = 0x8000;  ///< some libraries give the number of skipped members below it
constexpr std::wstring_view kAllMembers = L"*.*";
constexpr std::wstring_view kMoreMark = L"\n[More...]";

/// A record with room behind it: a library that was built with the record unpacked takes it for two bytes longer.
struct RecordBuffer {
    archiver::IndividualInfo info;
    char slack[16];
};

/// Closes an archive at the end of its listing.
class OpenedArchive {
public:
    OpenedArchive(ArchiverLibrary& library, archiver::ArchiveHandle handle) : library_(library), handle_(handle) {}
    ~OpenedArchive() { library_.closeArchive(handle_); }
    OpenedArchive(const OpenedArchive&) = delete;
    OpenedArchive& operator=(const OpenedArchive&) = delete;

private:
    ArchiverLibrary& library_;
    archiver::ArchiveHandle handle_;
};

/// The wide form of one short field, made anew only when the field changes from one record to the next.
class LabelReader {
public:
    const std::wstring& read(const ArchiverLibrary& library, const char (&field)[8]) {
        if (std::memcmp(field, last_, sizeof last_) != 0) {
            text_.clear();
            library.decodeTo(fieldText(field), text_);
            std::memcpy(last_, field, sizeof last_);
        }
        return text_;
    }

private:
    char last_[8] = {};
    std::wstring text_;
};

/// @return whether the library came to the archive's end
bool listMembers(ArchiverLibrary& library, archiver::ArchiveHandle archive, EntryTable& entries,
                 const std::function<void()>& onMember) {
    RecordBuffer buffer{};
    const archiver::IndividualInfo& info = buffer.info;
    std::wstring name;
    LabelReader attributes;
    LabelReader type;
    std::int32_t code = library.findFirst(archive, kAllMembers, buffer.info);
    while (code == return_code::kOk) {
        EntryRecord record;
        record.original = library.originalSize(archive).value_or(info.originalSize);
        record.packed = library.compressedSize(archive).value_or(info.compressedSize);
        record.crc = info.crc;
        record.ratio = static_cast<std::int16_t>(info.ratio);
        record.date = info.date;
        record.time = info.time;
        name.clear();
        library.decodeTo(fieldText(info.fileName), name);
        entries.add(record, name, attributes.read(library, info.attribute), type.read(library, info.mode));
        onMember();
        code = library.findNext(archive, buffer.info);
    }
    return code == kNoMoreEntries;
}

}  // namespace

CommonDriver::CommonDriver(const DriverDescription& description, ArchiverLibrary& library, MessageBoxes& messages,
                           const RegionalSettings& regional)
    : ListedDriver(description, messages, regional), library_(library) {}

std::uint16_t CommonDriver::Version() {
    version_ = library_.version();
    return version_;
}

bool CommonDriver::Running() { return library_.running(); }

bool CommonDriver::BackGroundMode() { return library_.backGroundMode(); }

void CommonDriver::setBackGroundMode(bool on) { library_.setBackGroundMode(on); }

bool CommonDriver::CursorMode() { return description().hasCursorMode && library_.cursorMode(); }

void CommonDriver::setCursorMode(bool on) {
    if (description().hasCursorMode) {
        library_.setCursorMode(on);
    }
}

bool CommonDriver::CheckArchive(std::wstring_view fileName) { return library_.checkArchive(fileName, checkMode_) > 0; }

bool CommonDriver::TestArchive(std::wstring_view fileName) {
    return library_.checkArchive(fileName, archiver::check_mode::kFullCrc) > 0;
}

void CommonDriver::setCommandLine(std::wstring_view commandLine) {
    const std::uint32_t files = static_cast<std::uint32_t>(std::max<std::int16_t>(maxFileCount_, 0));
    const std::uint32_t bufferSize = (files + kMoreFileLines) * kLineLength;
    output_.clear();
    written_.clear();
    std::wstring buffer;
    returnCode_ = library_.run(hWnd(), commandLine, bufferSize, buffer);
    try {
        const std::size_t end = buffer.find(L'\0');
        cut_ = end == std::wstring::npos && !buffer.empty();
        written_ = buffer.substr(0, end);
        if (returnCode_ != return_code::kOk) {
            return;
        }
        if (end == std::wstring::npos || end == 0) {
            buffer += kMoreMark;  // also behind a buffer that stayed empty: callers know it so
        } else {
            buffer.resize(end);
        }
        output_ = std::move(buffer);
    } catch (const std::exception&) {
        returnCode_ = return_code::kOutOfMemory;
    }
}

std::wstring CommonDriver::ErrString() const { return returnCodeMessage(ReturnCode()); }

std::int32_t CommonDriver::ConfigDialog() {
    returnCode_ = library_.configDialog(hWnd(), kUnpackDialog);
    return returnCode_;
}

std::uint32_t CommonDriver::SetArcFile(std::wstring_view fileName) {
    EntryTable& entries = beginListing();
    const archiver::ArchiveHandle archive = library_.openArchive(hWnd(), fileName, kOpenMode);
    if (archive == nullptr) {
        tellNotOpened(fileName);
        return 0;
    }
    const OpenedArchive opened(library_, archive);
    try {
        PacedWork work(breather());
        setListingComplete(listMembers(library_, archive, entries, [&work] { work.done(kUnitsOfMember); }));
    } catch (const std::exception&) {
        // Memory ran out or the table is full, perhaps by a library that never ends, or nobody wants to know any more:
        // what was read stays.
    }
    return entries.size();
}

ExtractResult CommonDriver::extract(const ExtractRequest& request) {
    return runLine(request.owner, extractLine(request));
}

ExtractResult CommonDriver::runLine(WindowHandle owner, std::wstring_view commandLine) {
    setHWnd(owner);
    setCursorMode(false);
    setBackGroundMode(true);
    setCommandLine(commandLine);
    return {.code = ReturnCode(),
            .message = ErrString(),
            .text = written_,
            .cut = cut_,
            .failed = ReturnCode() < 0 || ReturnCode() >= kFirstError,
            .nothingChosen = ReturnCode() == return_code::kNoSuchMember};
}

}  // namespace tovar
