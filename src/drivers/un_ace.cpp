#include "drivers/un_ace.h"

#include <algorithm>
#include <exception>
#include <string>

#include "drivers/ace_extraction.h"
#include "drivers/ace_walk.h"
#include "shell/paths.h"

namespace tovar {
namespace {

namespace abi = archiver::ace_abi;
namespace code = abi::result;

constexpr std::wstring_view kKeepFolders = L"-D";
constexpr std::uint32_t kStored = 0;  ///< method
constexpr std::int16_t kWhole = 1000;

/// Per mille. A member that is not smaller packed counts as whole, and so does an empty one, which has no ratio:
/// "100.0".
std::int16_t ratioOf(const AceMember& member) {
    if (member.packed >= member.original) return kWhole;
    return static_cast<std::int16_t>(std::uint64_t{member.packed} * 1000 / member.original);
}

/// As other archivers' libraries show attributes.
std::wstring attributeText(std::uint32_t attributes) {
    std::wstring text = L"---w";
    if ((attributes & attribute::kArchive) != 0) text[0] = L'a';
    if ((attributes & attribute::kFolder) != 0) text[0] = L'd';
    if ((attributes & attribute::kSystem) != 0) text[1] = L's';
    if ((attributes & attribute::kHidden) != 0) text[2] = L'h';
    if ((attributes & attribute::kReadOnly) != 0) text[3] = L'-';
    return text;
}

void addEntry(EntryTable& entries, const AceMember& member) {
    EntryRecord record;
    record.original = member.original;
    record.packed = member.packed;
    record.crc = member.crc;
    record.ratio = ratioOf(member);
    record.date = static_cast<std::uint16_t>(member.time >> 16);
    record.time = static_cast<std::uint16_t>(member.time);
    std::wstring name = member.name;
    if (member.folder() && !name.ends_with(L'\\') && !name.ends_with(L'/')) name += L'\\';
    entries.add(record, name, attributeText(member.attributes), member.method == kStored ? L"STORED" : L"LZ77");
}

}  // namespace

constinit const DriverDescription cUnAce::kDescription{
    .library = L"UnAce.dll",
    .prefix = "ACE",
    .messageTitle = L"ACE Message",
    .hasCursorMode = false,
    .hasCommandLine = false,
    .columns = {.attributes = false},
    .extract = {.base = L"-d", .keepFolder = L"-d", .overwriteOption = false},
};

cUnAce::cUnAce(AceLibrary& library, MessageBoxes& messages, const RegionalSettings& regional, FileSystem& files,
               PasswordSource& passwords)
    : ListedDriver(kDescription, messages, regional), library_(library), files_(files), passwords_(passwords) {}

bool cUnAce::CheckArchive(std::wstring_view fileName) { return AceWalk(library_, fileName, abi::kOpenList).isOpen(); }

bool cUnAce::TestArchive(std::wstring_view fileName) {
    AceWalk walk(library_, fileName, abi::kOpenExtract);
    bool good = walk.isOpen();
    while (good && walk.next()) {
        if (!walk.member().encrypted()) good = walk.process(abi::kTest) == code::kOk;
    }
    return good && walk.atEnd();
}

std::uint32_t cUnAce::SetArcFile(std::wstring_view fileName) {
    EntryTable& listed = beginListing();
    AceWalk walk(library_, fileName, abi::kOpenList);
    if (!walk.isOpen()) {
        tellNotOpened(fileName);
        return 0;
    }
    try {
        PacedWork work(breather());
        while (walk.next()) {
            addEntry(listed, walk.member());
            work.done(kUnitsOfMember);
        }
        setListingComplete(walk.atEnd());
    } catch (const std::exception&) {
        // Memory ran out, the table is full, or nobody wants to know any more: what was read stays.
    }
    return listed.size();
}

bool cUnAce::ACEExtract(std::wstring_view archive, std::wstring_view outputFolder, std::wstring_view members,
                        bool keepFolders) {
    const ExtractResult result = extract({.owner = hWnd(),
                                          .command = keepFolders ? L"-d" : L"",
                                          .archive = std::wstring(archive),
                                          .folder = std::wstring(outputFolder),
                                          .members = std::wstring(members)});
    return !result.failed && !result.nothingChosen;
}

ExtractResult cUnAce::extract(const ExtractRequest& request) {
    setHWnd(request.owner);
    std::wstring words = request.members;
    if (words.starts_with(L'@')) {
        std::string bytes;
        if (files_.readFile(words.substr(1), bytes) != 0) {
            tell(L"Can not open '" + words.substr(1) + L"' !");
            return {.code = code::kRead, .failed = true};
        }
        words = library_.codec().decode(bytes);
    }
    const MemberChoice choice(words);
    const AceExtractOptions options{.archive = request.archive,
                                    .folder = request.folder,
                                    .keepFolders = upperCase(request.command) == kKeepFolders,
                                    .keepExisting = request.keepExisting,
                                    .owner = request.owner};
    const AceExtractPorts ports{library_, files_, passwords_, [this](std::wstring_view text) { tell(text); },
                                progress_};
    ExtractResult result = AceExtraction(options, choice, ports).run();
    result.failed = result.code != code::kOk;
    if (result.code == code::kOpen && result.text.empty()) tellNotOpened(request.archive);
    return result;
}

}  // namespace tovar
