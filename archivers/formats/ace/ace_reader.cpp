#include "archivers/formats/ace/ace_reader.h"

#include <algorithm>
#include <utility>

#include "archivers/formats/ace/member_fields.h"
#include "archivers/formats/ace/member_reader.h"
#include "archivers/formats/ace/parts.h"
#include "archivers/formats/ace/volumes.h"

namespace archiver {
namespace {

namespace fs = std::filesystem;
using ace::Part;
using ace::Place;
using ace::Volume;

class Reader final : public AceReader {
public:
    Reader(ace::VolumeChain chain, const std::shared_ptr<Volume>& first, std::uint64_t fileSize)
        : chain_(std::move(chain)),
          first_{first, first->firstHeader()},
          place_(first_),
          members_(chain_, first_, (first->main().flags & ace::main_flag::kSolid) != 0) {
        ace::fillFacts(first->main(), aceFacts_);
        facts_.fileSize = fileSize;
        facts_.osType = ace::osTypeOf(first->main().host);
        facts_.selfExtracting = first->start() != 0;
    }

    [[nodiscard]] const ArchiveFacts& facts() const override { return facts_; }
    [[nodiscard]] const AceFacts& aceFacts() const override { return aceFacts_; }
    [[nodiscard]] const AceHeader& header() const override { return header_; }
    [[nodiscard]] const fs::path& missingVolume() const override { return chain_.missing(); }
    [[nodiscard]] const fs::path& currentVolume() const override {
        return (current_ ? current_->place : place_).volume->path();
    }
    void setPassword(std::string_view password) override { members_.setPassword(password); }
    void setVolumeCallback(AceVolumeCallback callback) override { chain_.setCallback(std::move(callback)); }

    ReturnCode next(Member& member) override {
        current_.reset();
        if (unpassed_) {
            if (const ReturnCode code = passParts(true, member); code != kOk) return code;
        }
        Part part;
        if (const ReturnCode code = readPart(chain_, place_, part); code != kOk) return code;
        ace::fillMember(part.header, aceFacts_.host, member);
        ace::fillHeader(part.header, header_);
        number_ = count_++;
        members_.passed(part, number_);
        if (part.header.has(ace::file_flag::kInNextVolume)) {
            // The last part has the checksum, and all of them the packed bytes. When a volume is missing the member is
            // told of all the same; the error follows when it is read or passed.
            current_ = part;
            unpassed_ = std::move(part);
            passParts(false, member);
        } else {
            place_ = part.behind();
            current_ = std::move(part);
        }
        return kOk;
    }

    ReturnCode restart() override {
        place_ = first_;
        count_ = 0;
        current_.reset();
        unpassed_.reset();
        return kOk;
    }

    ReturnCode read(const DataSink& sink) override {
        return current_ ? members_.read(*current_, number_, sink) : kNotSearchMode;
    }

private:
    /// Goes behind the last part of a member.
    ReturnCode passParts(bool ask, Member& member) {
        while (unpassed_->header.has(ace::file_flag::kInNextVolume)) {
            if (const ReturnCode code = nextPart(chain_, *unpassed_, ask); code != kOk) return code;
            if (current_) {
                member.packedSize += unpassed_->header.packedSize;
                member.crc = ~unpassed_->header.checksum;
                header_.checksum = unpassed_->header.checksum;
            }
        }
        place_ = unpassed_->behind();
        unpassed_.reset();
        return kOk;
    }

    ace::VolumeChain chain_;
    ArchiveFacts facts_;
    AceFacts aceFacts_;
    AceHeader header_;
    Place first_;
    Place place_;                   ///< of the next header
    std::optional<Part> current_;   ///< first part of the member that was given last
    std::optional<Part> unpassed_;  ///< its part that the walk came to, when others follow
    std::uint64_t number_ = 0;      ///< members in front of the current one
    std::uint64_t count_ = 0;       ///< members given so far
    ace::MemberReader members_;
};

/// The first volume beside a later one; the later one when there is none.
std::shared_ptr<Volume> firstVolumeOf(const ace::VolumeChain& chain, std::shared_ptr<Volume> opened) {
    if (!opened->multiVolume() || opened->main().volume == 0) return opened;
    const fs::path::string_type extension = opened->path().extension().native();
    const bool upper = std::any_of(extension.begin(), extension.end(), [](auto c) { return c >= 'A' && c <= 'Z'; });
    for (const char* ending : {".ace", ".exe"}) {
        fs::path path = fs::path(opened->path()).replace_extension(ending);
        if (upper) path = ace::otherCase(path);
        std::shared_ptr<Volume> first;
        for (const fs::path& candidate : {path, ace::otherCase(path)}) {
            if (chain.open(candidate, first) != kOk) continue;
            if (first->multiVolume() && first->main().volume == 0) return first;
        }
    }
    return opened;
}

}  // namespace

AceOpenResult openAceReader(const fs::path& file, AceFileOpener opener) {
    ace::VolumeChain chain(std::move(opener));
    std::shared_ptr<Volume> opened;
    if (const ReturnCode code = chain.open(file, opened); code != kOk) return {nullptr, code};
    const std::uint64_t fileSize = opened->file().size();
    const std::shared_ptr<Volume> first = firstVolumeOf(chain, std::move(opened));
    return {std::make_unique<Reader>(std::move(chain), first, fileSize), kOk};
}

OpenResult openAce(const fs::path& file) {
    AceOpenResult opened = openAceReader(file);
    return {std::move(opened.reader), opened.code};
}

}  // namespace archiver
