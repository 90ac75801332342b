#include "create/zip_job.h"

#include <algorithm>
#include <utility>

#include "shell/paths.h"
#include "shell/secret_text.h"

namespace tovar {
namespace {

constexpr std::wstring_view kTitle = L"Zip Message";
constexpr std::wstring_view kBadPassword = L"The password is too long, or has characters that the archive cannot take.";
constexpr std::wstring_view kBadComment = L"The comment is too long, or has characters that the archive cannot take.";
constexpr std::uint64_t kTickBytes = 32768;  ///< what a "." stands for; the end of the entry corrects it
constexpr float kUnchanged = -1;             ///< for the bar

struct Sum {
    std::uint64_t ZipCounts::*count;
    std::wstring_view running;  ///< behind the count while the work goes on
};
constexpr Sum kSums[] = {
    {&ZipCounts::added, L" files added, "},
    {&ZipCounts::updated, L" files updated, "},
    {&ZipCounts::freshened, L" files freshened, "},
    {&ZipCounts::deleted, L" files deleted, "},
};
constexpr std::wstring_view kSumSeparator = L", ";

struct Entry {
    ZipMessageKind kind;
    std::uint64_t ZipCounts::*count;
    std::wstring_view shown;
};
constexpr Entry kEntries[] = {
    {ZipMessageKind::Adding, &ZipCounts::added, L"Adding... "},
    {ZipMessageKind::Updating, &ZipCounts::updated, L"Updating... "},
    {ZipMessageKind::Freshening, &ZipCounts::freshened, L"Freshening... "},
    {ZipMessageKind::Deleting, &ZipCounts::deleted, L"Deleting... "},
};

std::wstring sumLine(const ZipCounts& counts) {
    std::wstring line;
    for (const Sum& sum : kSums) {
        if (counts.*sum.count == 0) continue;
        line.append(std::to_wstring(counts.*sum.count)).append(sum.running);
    }
    if (line.ends_with(kSumSeparator)) line.resize(line.size() - kSumSeparator.size());
    return line;
}

}  // namespace

ZipJob::~ZipJob() { wipe(password_); }

void ZipJob::begin(const ZipWork& work) {
    totalBytes_ = work.bytes;
    showBar();
}

void ZipJob::onCallDone() { passwordKnown_ = !password_.empty(); }

void ZipJob::finish() {
    finishEntry();
    log_.appendLine(std::to_wstring(counts_.added) + L" files are added");
    log_.appendLine(std::to_wstring(counts_.updated) + L" files are updated");
    log_.appendLine(std::to_wstring(counts_.deleted) + L" files are deleted");
}

void ZipJob::fail(std::wstring_view text) {
    if (!text.empty()) log_.appendLine(text);
}

void ZipJob::message(std::string_view text) {
    const std::wstring wide = setting_.codec.decode(text);
    for (std::wstring_view rest = wide; !rest.empty();) {
        const std::size_t end = rest.find(L'\n');
        onLine(rest.substr(0, end), end != rest.npos);
        rest.remove_prefix(end == rest.npos ? rest.size() : end + 1);
    }
}

void ZipJob::onLine(std::wstring_view line, bool complete) {
    const ZipMessage message = readZipMessage(line);
    if (message.kind == ZipMessageKind::Tick) {
        const std::uint64_t bytes = std::min(entryLeft_, kTickBytes);
        entryLeft_ -= bytes;
        advance(bytes);
        return;
    }
    if (message.kind != ZipMessageKind::Text) {
        finishEntry();
        log_.endLine();
    }
    if (message.begins()) onEntry(message);
    if (message.finished) finishEntry();
    log_.append(message.text);
    if (complete) log_.endLine();
}

void ZipJob::onEntry(const ZipMessage& message) {
    for (const Entry& each : kEntries) {
        if (message.kind != each.kind) continue;
        ++(counts_.*each.count);
        std::wstring name = message.entry;
        std::ranges::replace(name, L'/', L'\\');
        setting_.progress.showFile(std::wstring(each.shown) + name);
    }
    setting_.progress.Summary(sumLine(counts_));
    if (!followsMessages()) return;
    entryLeft_ = message.kind == ZipMessageKind::Deleting ? 1 : sizeOf(message.entry).value_or(0);
    if (message.kind == ZipMessageKind::Deleting) finishEntry();
}

void ZipJob::finishEntry() {
    if (entryLeft_ != 0) advance(std::exchange(entryLeft_, 0));
}

void ZipJob::advance(std::uint64_t bytes) {
    doneBytes_ += bytes;
    showBar();
}

// Amounts are shown in single precision; they are kept whole, since a sum of many small files would stand still.
void ZipJob::showBar() { setting_.progress.SetPrg1(static_cast<float>(doneBytes_), static_cast<float>(totalBytes_)); }

std::optional<std::uint64_t> ZipJob::sizeOf(const std::wstring& entry) const {
    std::wstring path = setting_.base;
    const wchar_t separator = path.empty() ? L'\\' : path.back();
    std::wstring name = entry;
    std::ranges::replace(name, separator == L'\\' ? L'/' : L'\\', separator);
    // With folder information the entries have the base folder in front, without its drive.
    const std::wstring_view below =
        HasDriveRoot(path) ? std::wstring_view(path).substr(3) : std::wstring_view(path).substr(path.empty() ? 0 : 1);
    if (setting_.command.folderInfo && !below.empty() && name.starts_with(below)) name.erase(0, below.size());
    path += name;
    const std::optional<FileStatus> status = setting_.ports.files.status(path);
    if (!status || (status->attributes & attribute::kFolder) != 0) return std::nullopt;
    return status->size;
}

bool ZipJob::comment(std::span<char> buffer) {
    if (!std::exchange(commentAsked_, true)) comment_ = setting_.ports.comments.ask(setting_.owner);
    return comment_ && give(*comment_, buffer, kBadComment);
}

bool ZipJob::password(std::span<char> buffer, std::string_view prompt, std::string_view name) {
    if (!passwordKnown_) {
        std::wstring label = setting_.codec.decode(prompt);
        label.resize(label.find_last_not_of(L": ") + 1);
        if (!label.empty() && !name.empty()) label += L": ";
        label += setting_.codec.decode(name);
        wipe(password_);
        std::optional<std::wstring> answer = setting_.ports.passwords.ask(setting_.owner, label);
        if (!answer) return false;
        const WipedAtEnd<wchar_t> wiped(*answer);
        password_ = *answer;
    }
    return !password_.empty() && give(password_, buffer, kBadPassword);
}

// An answer that was cut would be another one: nobody could open the archive with the password that was entered.
bool ZipJob::give(std::wstring_view answer, std::span<char> buffer, std::wstring_view refusal) const {
    std::optional<std::string> bytes = setting_.codec.encode(answer);
    if (!bytes || bytes->size() >= buffer.size() || bytes->find('\0') != std::string::npos) {
        if (bytes) wipe(*bytes);
        setting_.ports.messages.show(setting_.owner, refusal, kTitle, MessageIcon::Exclamation);
        return false;
    }
    const WipedAtEnd<char> wiped(*bytes);
    std::ranges::copy(*bytes, buffer.begin());
    buffer[bytes->size()] = '\0';
    return true;
}

bool ZipJob::service(std::string_view name, std::uint32_t) {
    const std::optional<std::uint64_t> size = followsMessages() ? std::nullopt : sizeOf(setting_.codec.decode(name));
    if (size) {
        advance(*size);
    } else {
        setting_.progress.SetPrg1(kUnchanged, kUnchanged);  // lets the Cancel button be pressed
    }
    return cancelled();
}

}  // namespace tovar
