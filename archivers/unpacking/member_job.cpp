#include "archivers/unpacking/member_job.h"

#include <span>
#include <utility>

#include "archivers/unpacking/utf8_path.h"

namespace archiver {
namespace {

/// A file in the making, or none when the bytes go elsewhere.
class JobFile {
public:
    JobFile(const MemberJob& job, JobSurroundings& around) : job_(job), around_(around) {}

    ReturnCode write(std::span<const char> bytes) {
        if (!job_.toTarget) {
            return around_.output == nullptr || (*around_.output)(bytes.data(), bytes.size()) ? kOk : kUserCancel;
        }
        if (const ReturnCode code = begin(); code != kOk) return code;
        return file_->write(bytes);
    }

    ReturnCode commit() {
        if (!job_.toTarget) return kOk;
        if (const ReturnCode code = begin(); code != kOk) return code;
        return file_->commit(propertiesOf(job_.member, around_.restoreAttributes, around_.webMark));
    }

private:
    ReturnCode begin() {
        if (file_) return kOk;
        return around_.target->createFile(pathOfUtf8(job_.place.name), job_.expectedSize, job_.place.replace, file_);
    }

    const MemberJob& job_;
    JobSurroundings& around_;
    std::unique_ptr<OutputFile> file_;
};

ReturnCode performUnguarded(MemberJob& job, JobSurroundings& around, const ReadFunction& read, const GoOn& goOn) {
    JobFile file(job, around);
    ReturnCode failure = kOk;
    const ReturnCode code = read([&](const char* bytes, std::size_t size) {
        if (failure != kOk) return false;
        if (around.stop.load(std::memory_order_relaxed) || (goOn && !goOn())) failure = kUserCancel;
        if (failure == kOk && size != 0) {
            failure = file.write({bytes, size});
            job.bytes.fetch_add(size, std::memory_order_relaxed);
            around.bytes.fetch_add(size, std::memory_order_relaxed);
        }
        return failure == kOk;
    });
    if (failure == kOk) failure = code;
    if (failure == kOk && around.stop.load(std::memory_order_relaxed)) failure = kUserCancel;
    return failure == kOk ? file.commit() : failure;
}

class BufferedData final : public DetachedData {
public:
    explicit BufferedData(std::string bytes) : bytes_(std::move(bytes)) {}
    ReturnCode read(const DataSink& sink) override { return sink(bytes_.data(), bytes_.size()) ? kOk : kUserCancel; }

private:
    std::string bytes_;
};

ReturnCode bufferUnguarded(MemberJob& job, JobSurroundings& around, const ReadFunction& read, const GoOn& goOn) {
    std::string buffer;
    ReturnCode failure = kOk;
    const ReturnCode code = read([&](const char* bytes, std::size_t size) {
        if (around.stop.load(std::memory_order_relaxed) || (goOn && !goOn())) failure = kUserCancel;
        // More than the header claims: the reader will say so; memory goes no further than the claim.
        if (failure == kOk && size > job.member.originalSize - buffer.size()) failure = kFileCrc;
        if (failure != kOk) return false;
        buffer.append(bytes, size);
        return true;
    });
    if (failure == kOk) failure = code;
    if (failure != kOk) return failure;
    job.data = std::make_unique<BufferedData>(std::move(buffer));
    return kOk;
}

template <class Work>
ReturnCode guarded(const Work& work) noexcept {
    try {
        return work();
    } catch (...) {
        return kEnoughMemory;  // nothing below throws for any other reason
    }
}

}  // namespace

ItemProperties propertiesOf(const Member& member, bool restoreAttributes, std::string_view webMark) {
    ItemProperties properties;
    properties.written = writtenOf(member);
    properties.created = member.created;
    properties.accessed = member.accessed;
    if (restoreAttributes) properties.attributes = member.attributes;
    properties.webMark = webMark;
    return properties;
}

ReturnCode performJob(MemberJob& job, JobSurroundings& around, const ReadFunction& read, const GoOn& goOn) {
    const ReturnCode code = guarded([&] { return performUnguarded(job, around, read, goOn); });
    if (code != kOk) around.bytes.fetch_sub(job.bytes.exchange(0));
    return code;
}

ReturnCode bufferJob(MemberJob& job, JobSurroundings& around, const ReadFunction& read, const GoOn& goOn) {
    return guarded([&] { return bufferUnguarded(job, around, read, goOn); });
}

}  // namespace archiver
