#include "drivers/ace_extraction.h"

#include <algorithm>

#include "drivers/member_path.h"
#include "shell/paths.h"
#include "shell/secret_text.h"

namespace tovar {
namespace {

namespace abi = archiver::ace_abi;
namespace code = abi::result;

constexpr std::size_t kNamedFailures = 10;
constexpr std::wstring_view kWrongPassword = L"Password is not correct ! Try it again.";
constexpr std::wstring_view kUnknownMethod = L"Unknown compression method !";
constexpr std::wstring_view kNotUnpacked = L"Can not extract:";
constexpr std::wstring_view kNewLine = L"\r\n";

bool isSeparator(wchar_t character) { return character == L'\\' || character == L'/'; }

/// A wrong password cannot be told from damage: its data come to a wrong checksum.
bool refusesPassword(std::int32_t answer) { return answer == code::kNoPassword || answer == code::kCrc; }

std::wstring withSeparator(std::wstring_view folder) {
    std::wstring path = AddTrailingSeparator(folder);
    if (!path.empty() && !isSeparator(path.back())) path += L'\\';
    return path;
}

}  // namespace

AceExtraction::AceExtraction(const AceExtractOptions& options, const MemberChoice& choice, const AceExtractPorts& ports)
    : options_(options), choice_(choice), ports_(ports), folder_(withSeparator(trimBlanks(options.folder))) {}

AceExtraction::~AceExtraction() { wipe(password_); }

ExtractResult AceExtraction::run() {
    if (ports_.progress) measure();
    AceWalk walk(ports_.library, options_.archive, abi::kOpenExtract);
    if (!walk.isOpen()) {
        result_.code = walk.code();
        return std::move(result_);
    }
    while (!cancelled_ && walk.next()) {
        if (!choice_.contains(walk.member().name)) continue;
        member(walk);
        done_ += walk.member().original;
    }
    result_.nothingChosen = !anyChosen_ && walk.atEnd();
    if (!cancelled_ && !walk.atEnd() && result_.code == code::kOk) result_.code = walk.code();
    if (failureCount_ > 0) {
        std::wstring text(kNotUnpacked);
        for (const std::wstring& name : failures_) (text += kNewLine) += name;
        if (failureCount_ > failures_.size()) (text += kNewLine) += L"...";
        ports_.tell(text);
    }
    if (cancelled_) result_.code = code::kUser;
    return std::move(result_);
}

/// How much there is to do: headers are read quickly.
void AceExtraction::measure() {
    constexpr std::uint32_t kMembersAtOnce = 256;
    AceWalk walk(ports_.library, options_.archive, abi::kOpenList);
    for (std::uint32_t count = 1; !cancelled_ && walk.next(); ++count) {
        if (choice_.contains(walk.member().name)) total_ += walk.member().original;
        if (count % kMembersAtOnce == 0) cancelled_ = !ports_.progress({.state = ExtractProgress::State::Open});
    }
}

void AceExtraction::member(AceWalk& walk) {
    anyChosen_ = true;
    const AceMember member = walk.member();
    if (member.folder() && !options_.keepFolders) return;
    std::wstring_view name = member.name;
    while (member.folder() && !name.empty() && isSeparator(name.back())) name.remove_suffix(1);
    const wchar_t separator = folder_.empty() ? L'\\' : folder_.back();
    const auto path = safeMemberPath(name, options_.keepFolders, separator);
    if (!path || (member.flags & abi::kFlagFromPrevious) != 0) return failed(member, code::kOther);
    const std::wstring file = folder_ + *path;
    if (member.folder()) {
        if (!makeFolder(file)) failed(member, code::kWrite);
        return;
    }
    const auto existing = ports_.files.attributes(file);
    if (existing && options_.keepExisting) {
        ((result_.text += L"Skipping ") += member.name) += kNewLine;
        return;
    }
    // A folder of that name would have the library put the member into it, by the name that the archive gives.
    if ((existing && (*existing & attribute::kFolder) != 0) || !makeFolders(file)) return failed(member, code::kWrite);
    written_ = 0;
    if (!report(ExtractProgress::State::Begin, member, file)) return;
    const std::int32_t answer = member.encrypted() ? unpackEncrypted(walk, file) : unpack(walk, file);
    if (answer == code::kOk) {
        ((result_.text += L"Extracting ") += member.name) += kNewLine;
        return;
    }
    if (!existing) ports_.files.deleteFile(file);  // some libraries leave half a file
    if (answer == code::kUser) {
        cancelled_ = true;
        return;
    }
    if (answer == code::kMethod && !toldMethod_) {
        toldMethod_ = true;
        ports_.tell(kUnknownMethod);
    }
    failed(member, answer);
}

void AceExtraction::failed(const AceMember& member, std::int32_t answer) {
    if (result_.code == code::kOk) result_.code = answer;
    if (++failureCount_ <= kNamedFailures) failures_.push_back(member.name);
    ((result_.text += L"Not extracted: ") += member.name) += kNewLine;
}

std::int32_t AceExtraction::unpack(AceWalk& walk, const std::wstring& file) {
    written_ = 0;
    if (!ports_.progress) return walk.process(abi::kExtract, file);
    const std::int32_t answer = walk.process(abi::kExtract, file, [&](std::uint32_t bytes) {
        // A damaged header says less than there is.
        written_ += std::min(bytes, walk.member().original - std::min(walk.member().original, written_));
        return report(ExtractProgress::State::Working, walk.member(), file);
    });
    return cancelled_ ? code::kUser : answer;
}

std::int32_t AceExtraction::unpackEncrypted(AceWalk& walk, const std::wstring& file) {
    if (password_.empty() && !askPassword()) return code::kNoPassword;
    // Until it is right or the user gives up: who mistypes a long password three times has not lost it.
    while (true) {
        std::int32_t answer = walk.setPassword(password_);
        // The library's 8-bit texts cannot hold it: the archive's password is another.
        if (answer == code::kConstant)
            answer = code::kNoPassword;
        else if (answer == code::kOk)
            answer = unpack(walk, file);
        if (answer == code::kOk) passwordProven_ = true;
        if (passwordProven_ || !refusesPassword(answer)) return answer;
        ports_.tell(kWrongPassword);
        wipe(password_);
        if (!askPassword()) return answer;
        if (!walk.again()) return walk.code();
    }
}

bool AceExtraction::askPassword() {
    if (noPassword_) return false;
    auto password = ports_.passwords.ask(options_.owner, options_.archive);
    noPassword_ = !password || password->empty();
    if (password) {
        const WipedAtEnd wiped(*password);
        password_ = *password;
    }
    return !noPassword_;
}

bool AceExtraction::makeFolders(const std::wstring& file) { return makeFolder(ParentPath(file)); }

bool AceExtraction::makeFolder(const std::wstring& folder) {
    std::wstring path = folder;
    while (path.size() > 1 && isSeparator(path.back()) && !(path.size() == 3 && path[1] == L':')) path.pop_back();
    if (path.empty() || path == madeFolder_) return true;
    const auto existing = ports_.files.attributes(path);
    bool there = existing && (*existing & attribute::kFolder) != 0;
    if (!existing) {
        const std::wstring parent = ParentPath(path);
        if (parent != path && !makeFolder(parent)) return false;
        there = ports_.files.createFolder(path) == 0;
    }
    if (there) madeFolder_ = path;
    return there;
}

bool AceExtraction::report(ExtractProgress::State state, const AceMember& member, const std::wstring& file) {
    if (!ports_.progress) return true;
    cancelled_ = !ports_.progress({.state = state,
                                   .member = member.name,
                                   .file = file,
                                   .size = member.original,
                                   .written = written_,
                                   .done = done_ + written_,
                                   .total = total_});
    return !cancelled_;
}

}  // namespace tovar
