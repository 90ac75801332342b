#include "unpacking/fakes/fake_reader.h"

#include <algorithm>
#include <utility>

namespace archiver::test {
namespace {

class FakeData final : public DetachedData {
public:
    FakeData(FakeReader& reader, const FakeMember& member, std::string password)
        : reader_(reader), member_(member), password_(std::move(password)) {}
    ReturnCode read(const DataSink& sink) override { return reader_.readMember(member_, password_, sink); }

private:
    FakeReader& reader_;
    const FakeMember& member_;
    std::string password_;
};

}  // namespace

FakeMember file(std::string name, std::string content) {
    FakeMember made;
    made.member.name = std::move(name);
    made.member.originalSize = made.member.packedSize = content.size();
    made.member.written = Moment{1'000'000'000, 0};
    made.member.attributes = attribute::kArchive;
    made.content = std::move(content);
    return made;
}

FakeMember folder(std::string name) {
    FakeMember made = file(std::move(name), "");
    made.member.kind = MemberKind::kFolder;
    made.member.attributes = attribute::kFolder;
    return made;
}

FakeMember symbolicLink(std::string name, std::string target) {
    FakeMember made = file(std::move(name), "");
    made.member.kind = MemberKind::kSymbolicLink;
    made.member.linkTarget = std::move(target);
    return made;
}

FakeMember hardLink(std::string name, std::string target) {
    FakeMember made = symbolicLink(std::move(name), std::move(target));
    made.member.kind = MemberKind::kHardLink;
    return made;
}

FakeMember encrypted(std::string name, std::string password, std::string content) {
    FakeMember made = file(std::move(name), std::move(content));
    made.member.encrypted = true;
    made.password = std::move(password);
    return made;
}

std::string nameOf(std::string letters, std::size_t number) {
    letters += std::to_string(number);
    return letters;
}

ReturnCode FakeReader::next(Member& member) {
    ++nexts;
    readable_ = false;
    if (at_ == std::min(endAt, members_.size())) return end;
    member = members_[at_++].member;
    readable_ = true;
    return kOk;
}

ReturnCode FakeReader::restart() {
    ++restarts;
    at_ = 0;
    readable_ = false;
    return kOk;
}

ReturnCode FakeReader::read(const DataSink& sink) {
    if (!readable_) return kNotSearchMode;
    const FakeMember& member = members_[at_ - 1];
    if (!member.member.encrypted) readable_ = false;
    return readMember(member, password_, sink);
}

std::unique_ptr<DetachedData> FakeReader::detach() {
    if (!detaches || !readable_) return nullptr;
    ++detached;
    readable_ = false;
    return std::make_unique<FakeData>(*this, members_[at_ - 1], password_);
}

ReturnCode FakeReader::readMember(const FakeMember& member, const std::string& password, const DataSink& sink) {
    ++reads;
    const auto give = [&](const char* bytes, std::size_t size) {
        if (onPiece) onPiece();
        return sink(bytes, size);
    };
    if (member.member.encrypted && password != member.password) {
        if (member.garbage && !give("#####", std::min<std::size_t>(5, member.content.size()))) return kUserCancel;
        return member.wrong;
    }
    if (!member.content.empty() && !give(member.content.data(), member.content.size())) return kUserCancel;
    static const std::string zeros(std::size_t{64} << 10, '\0');
    for (std::uint64_t left = member.zeros; left > 0;) {
        const auto size = static_cast<std::size_t>(std::min<std::uint64_t>(left, zeros.size()));
        if (!give(zeros.data(), size)) return kUserCancel;
        left -= size;
    }
    return member.code;
}

}  // namespace archiver::test
