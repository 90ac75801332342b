#include "archivers/unpacking/member_run.h"

#include <algorithm>
#include <utility>

namespace archiver {
namespace {

/// Members up to this size go through memory, so that another thread can write them. Far more files are below it than
/// above, and what costs with them is making the file.
constexpr std::size_t kBufferedSize = std::size_t{256} << 10;
/// Members up to this size, packed and unpacked together, may be held in memory whole by their reader.
constexpr std::uint64_t kMostWhole = std::uint64_t{32} << 20;
/// Larger ones are unpacked in pieces, with a dictionary.
constexpr std::uint64_t kStreamCost = std::uint64_t{4} << 20;

std::uint64_t costOf(const Member& member) {
    if (member.originalSize > kMostWhole || member.packedSize > kMostWhole - member.originalSize) return kStreamCost;
    return member.originalSize + member.packedSize;
}

}  // namespace

MemberRun::MemberRun(ArchiveReader& reader, const MemberFilter& chosen, std::string_view password, unsigned threads,
                     UnpackEvents& events)
    : events_(events),
      meter_(reader, around_, events),
      walk_(reader, chosen, meter_),
      passwords_(password, events),
      line_(around_, threads) {
    around_.writeBehind = line_.isParallel();
    around_.packedAsAWhole = !reader.facts().listedByHeaders;
}

bool MemberRun::next(Member& member) {
    if (ended()) return false;
    const ReturnCode code = walk_.next(member);
    if (code == kOk) {
        ++summary_.chosen;
        return true;
    }
    if (code == kNoMoreEntries) return false;
    end(code);
    return false;
}

bool MemberRun::begin(const Member& member, const std::filesystem::path& file) {
    if (events_.begins(member, file)) return true;
    meter_.cancel();
    end(kUserCancel);
    return false;
}

void MemberRun::end(ReturnCode code) {
    if (!endCode_) endCode_ = code;
}

/// On the caller's thread, from the reader itself.
ReturnCode MemberRun::performHere(MemberJob& job) {
    const ReadFunction read = [this](const DataSink& sink) { return walk_.reader().read(sink); };
    const GoOn goOn = [this] { return meter_.poll(); };
    meter_.show(&job);
    const bool buffered = line_.isParallel() && job.toTarget && job.member.originalSize <= kBufferedSize;
    const ReturnCode code = performJob(job, around_, read, goOn, buffered ? kBufferedSize : 0);
    meter_.show(nullptr);
    return code;
}

ReturnCode MemberRun::performEncrypted(MemberJob& job) {
    return passwords_.open(job.member, [&](const std::string& password) {
        walk_.reader().setPassword(password);
        if (proveFirst_) {
            const DataSink* const output = std::exchange(around_.output, nullptr);
            const ReturnCode code = performHere(job);
            around_.output = output;
            around_.bytes.fetch_sub(job.bytes.exchange(0));
            if (code != kOk) return code;
        }
        return performHere(job);
    });
}

void MemberRun::process(std::unique_ptr<MemberJob> job) {
    job->index = walk_.index();
    job->cost = costOf(job->member);
    const bool encrypted = job->member.encrypted;
    if (line_.isParallel() && (!encrypted || (passwords_.opened() && !severalPasswords_))) {
        if (encrypted) walk_.reader().setPassword(*passwords_.opened());
        job->data = walk_.reader().detach();
    }
    job->mayRetry = encrypted && job->data;
    if (!job->data) job->code = encrypted ? performEncrypted(*job) : performHere(*job);
    if (!job->data) job->cost = 0;
    add(std::move(job));
}

ReturnCode MemberRun::readSmall(const Member& member, std::size_t most, std::string& data) {
    const auto attempt = [&] {
        bool tooMuch = false;
        data.clear();
        const ReturnCode code = walk_.reader().read([&](const char* bytes, std::size_t size) {
            tooMuch = size > most - data.size();
            if (!tooMuch) data.append(bytes, size);
            return !tooMuch && meter_.poll();
        });
        return tooMuch ? kLongFileName : code;
    };
    if (!member.encrypted) return attempt();
    return passwords_.open(member, [&](const std::string& password) {
        walk_.reader().setPassword(password);
        return attempt();
    });
}

void MemberRun::tell(std::unique_ptr<MemberJob> job) {
    job->index = walk_.index();
    add(std::move(job));
}

void MemberRun::add(std::unique_ptr<MemberJob> job) {
    line_.add(std::move(job));
    tellDone();
    if (!line_.isFull()) return;
    // Down to half of it at once: whoever waits for every single one hands over in crumbs.
    while (line_.isHalfFull()) {
        meter_.show(line_.front());
        if (line_.waitFor(*line_.front(), ProgressMeter::kInterval)) tellFront();
        static_cast<void>(meter_.poll());
    }
}

void MemberRun::tellDone() {
    while (!line_.empty() && line_.front()->done.load(std::memory_order_acquire)) tellFront();
}

void MemberRun::settle() {
    while (!line_.empty()) {
        meter_.show(line_.front());
        if (line_.waitFor(*line_.front(), ProgressMeter::kInterval)) tellFront();
        static_cast<void>(meter_.poll());
    }
}

/// The front is done.
void MemberRun::tellFront() {
    if (line_.front()->code == kPasswordFile && line_.front()->mayRetry && !ended()) retryWithPasswords();
    std::unique_ptr<MemberJob> job = line_.takeFront();
    meter_.show(nullptr);
    if (job->code == kUserCancel) {
        meter_.cancel();
        end(kUserCancel);
        return;
    }
    const bool decided = job->outcome == MemberOutcome::kSkipped || job->outcome == MemberOutcome::kRefused;
    if (job->code != kOk && !decided) job->outcome = MemberOutcome::kFailed;
    if (onFinished_) onFinished_(*job);
    switch (job->outcome) {
        case MemberOutcome::kUnpacked:
        case MemberOutcome::kLinkMade:
        case MemberOutcome::kTested:
            ++summary_.unpacked;
            summary_.bytes += job->bytes.load();
            break;
        case MemberOutcome::kFolderMade:
            break;
        case MemberOutcome::kSkipped:
            ++summary_.skipped;
            break;
        case MemberOutcome::kRefused:
            ++summary_.refused;
            break;
        case MemberOutcome::kFailed:
            ++summary_.failed;
            break;
    }
    const bool bad = job->outcome == MemberOutcome::kRefused || job->outcome == MemberOutcome::kFailed;
    if (bad && summary_.code == kOk) summary_.code = job->code;
    if (bad && job->code == kDiskSpace) {
        end(kDiskSpace);
        around_.stop.store(true);
    }
    events_.ends({job->member, job->outcome, job->code, job->file, job->place.renamed});
    meter_.finished(std::move(job));
}

/// Some members were sent to the threads with a password that opened others but not them. From here on every encrypted
/// member is tried on this thread; those in the line are read again, in one walk, so that an archive with a password
/// for each member still costs no more than two.
void MemberRun::retryWithPasswords() {
    severalPasswords_ = true;
    for (const std::unique_ptr<MemberJob>& job : line_.jobs()) {
        while (!line_.waitFor(*job, ProgressMeter::kInterval)) static_cast<void>(meter_.poll());
    }
    const std::uint64_t here = walk_.index();
    if (const ReturnCode code = walk_.restart(); code != kOk) return end(code);
    for (const std::unique_ptr<MemberJob>& job : line_.jobs()) {
        if (!std::exchange(job->mayRetry, false) || job->code != kPasswordFile) continue;
        ReturnCode code = walk_.goTo(job->index);
        if (code == kOk) code = performEncrypted(*job);
        job->code = code;
        if (code != kOk || !job->data) continue;
        // It is in memory now: no thread waits for it, so it is written here.
        job->code = performJob(
            *job, around_, [&](const DataSink& sink) { return job->data->read(sink); },
            [this] { return meter_.poll(); });
        job->data.reset();
    }
    if (const ReturnCode code = walk_.goTo(here); code != kOk) end(code);
}

UnpackSummary MemberRun::summary() {
    settle();
    if (around_.stop.load()) end(kUserCancel);
    if (endCode_) {
        summary_.code = *endCode_;
    } else if (summary_.chosen == 0) {
        summary_.code = kNotExist;
    }
    if (passwords_.opened()) summary_.password = *passwords_.opened();
    return std::move(summary_);
}

}  // namespace archiver
