#include "archivers/unpacking/member_job.h"

#include <span>
#include <system_error>
#include <utility>

#include "archivers/unpacking/utf8_path.h"
#include "archivers/unpacking/write_behind.h"

namespace archiver {
namespace {

/// Bytes of a member that are written where they are unpacked: for less a thread of their own does not pay.
constexpr std::uint64_t kWrittenHere = std::uint64_t{4} << 20;

/// A file in the making, or none when the bytes go elsewhere.
class JobFile {
public:
    JobFile(const MemberJob& job, JobSurroundings& around) : job_(job), around_(around) {}

    ReturnCode write(std::string_view bytes) {
        if (!job_.toTarget) {
            return around_.output == nullptr || (*around_.output)(bytes.data(), bytes.size()) ? kOk : kUserCancel;
        }
        if (const ReturnCode code = begin(); code != kOk) return code;
        written_ += bytes.size();
        if (paysBehind() && !behind_ && written_ > kWrittenHere) writeBehind();
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

    /// What is only copied comes faster than another thread could take it over.
    [[nodiscard]] bool paysBehind() const noexcept {
        return around_.writeBehind && (around_.packedAsAWhole || job_.member.packedSize < job_.member.originalSize);
    }

    /// From here on writing costs this thread nothing. Without another thread it goes on as before.
    void writeBehind() {
        behind_ = true;
        try {
            file_ = std::make_unique<WriteBehindFile>(file_);
        } catch (const std::system_error&) {
        }
    }

    const MemberJob& job_;
    JobSurroundings& around_;
    std::unique_ptr<OutputFile> file_;
    std::uint64_t written_ = 0;
    bool behind_ = false;
};

class BufferedData final : public DetachedData {
public:
    explicit BufferedData(std::string bytes) : bytes_(std::move(bytes)) {}
    ReturnCode read(const DataSink& sink) override { return sink(bytes_.data(), bytes_.size()) ? kOk : kUserCancel; }

private:
    std::string bytes_;
};

/// One unpacking of a member, from its first byte to its file's name.
class Performance {
public:
    Performance(MemberJob& job, JobSurroundings& around, const GoOn& goOn, std::size_t toMemory)
        : job_(job), around_(around), goOn_(goOn), toMemory_(toMemory), file_(job, around) {}

    ReturnCode perform(const ReadFunction& read) {
        const ReturnCode code = read([this](const char* bytes, std::size_t size) { return take({bytes, size}); });
        if (failure_ != kOk) return failure_;
        if (code != kOk) return code;
        if (around_.stop.load(std::memory_order_relaxed)) return kUserCancel;
        if (toMemory_ == 0) return file_.commit();
        job_.cost = buffer_.size();
        job_.data = std::make_unique<BufferedData>(std::move(buffer_));
        return kOk;
    }

private:
    bool take(std::string_view bytes) {
        if (failure_ != kOk) return false;
        if (around_.stop.load(std::memory_order_relaxed) || (goOn_ && !goOn_())) {
            failure_ = kUserCancel;
        } else if (bytes.size() <= toMemory_ - buffer_.size()) {
            buffer_.append(bytes);
        } else {
            toMemory_ = 0;
            if (!buffer_.empty()) write(std::exchange(buffer_, {}));
            if (failure_ == kOk && !bytes.empty()) write(bytes);
        }
        return failure_ == kOk;
    }

    void write(std::string_view bytes) {
        failure_ = file_.write(bytes);
        job_.bytes.fetch_add(bytes.size(), std::memory_order_relaxed);
        around_.bytes.fetch_add(bytes.size(), std::memory_order_relaxed);
    }

    MemberJob& job_;
    JobSurroundings& around_;
    const GoOn& goOn_;
    std::size_t toMemory_;  ///< 0 once it is too much for that
    std::string buffer_;
    JobFile file_;
    ReturnCode failure_ = kOk;
};

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

ReturnCode performJob(MemberJob& job, JobSurroundings& around, const ReadFunction& read, const GoOn& goOn,
                      std::size_t toMemory) {
    ReturnCode code = kEnoughMemory;
    try {
        code = Performance(job, around, goOn, toMemory).perform(read);
    } catch (...) {
        code = kEnoughMemory;  // nothing below throws for any other reason
    }
    if (code != kOk) around.bytes.fetch_sub(job.bytes.exchange(0));
    return code;
}

}  // namespace archiver
