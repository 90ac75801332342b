#include "convention/fake_archive.h"

#include <new>

namespace archiver::testing {

namespace {

FakeDisk* currentDisk = nullptr;

class FakeReader final : public ArchiveReader {
public:
    FakeReader(FakeDisk& disk, const FakeArchive& archive) : disk_(disk), archive_(archive) { ++disk_.readers; }
    ~FakeReader() override { --disk_.readers; }

    [[nodiscard]] const ArchiveFacts& facts() const override { return archive_.facts; }

    ReturnCode next(Member& member) override {
        ++disk_.nextCalls;
        if (position_ == archive_.members.size()) {
            return archive_.endCode;
        }
        if (archive_.throwOnNext && position_ + 1 == archive_.members.size()) {
            throw std::bad_alloc();
        }
        member = archive_.members[position_++].member;
        return kOk;
    }

    ReturnCode restart() override {
        position_ = 0;
        return archive_.restartCode;
    }

    ReturnCode read(const DataSink& sink) override {
        ++disk_.readCalls;
        sink("data", 4);
        return archive_.members[position_ - 1].readCode;
    }

private:
    FakeDisk& disk_;
    const FakeArchive& archive_;
    std::size_t position_ = 0;
};

}  // namespace

FakeDisk::FakeDisk() { currentDisk = this; }

FakeDisk::~FakeDisk() { currentDisk = nullptr; }

FakeArchive& FakeDisk::add(const std::string& utf8Name) {
    return archives_[std::filesystem::current_path() / std::u8string(utf8Name.begin(), utf8Name.end())];
}

OpenResult FakeDisk::open(const std::filesystem::path& file) {
    currentDisk->lastOpened = file;
    const auto found = currentDisk->archives_.find(file);
    if (found == currentDisk->archives_.end()) {
        return {nullptr, kNotFindArcFile};
    }
    if (found->second.openCode != kOk) {
        return {nullptr, found->second.openCode};
    }
    return {std::make_unique<FakeReader>(*currentDisk, found->second), kOk};
}

FakeArchive::FakeMember file(const std::string& utf8Name) {
    FakeArchive::FakeMember made;
    made.member.name = utf8Name;
    made.member.originalSize = 1000;
    made.member.packedSize = 250;
    made.member.crc = 0x1A2B3C4D;
    made.member.osType = os_type::kUnix;
    made.member.dosDate = 0x2AB1;  // 2001-05-17
    made.member.dosTime = 0x8BDD;  // 17:30:58
    made.member.attributes = attribute::kArchive;
    made.member.method = "Deflate";
    return made;
}

}  // namespace archiver::testing
