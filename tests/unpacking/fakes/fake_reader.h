#pragma once
#include <atomic>
#include <functional>
#include <string>
#include <vector>

#include "archivers/formats/archive_reader.h"

namespace archiver::test {

/// A member that a test writes down.
struct FakeMember {
    Member member;
    std::string content;
    std::uint64_t zeros = 0;           ///< bytes that follow the content, so that a large member costs no memory
    ReturnCode code = kOk;             ///< what reading comes to, after all bytes
    std::string password;              ///< that opens it, when it is encrypted
    ReturnCode wrong = kPasswordFile;  ///< what another password comes to
    bool garbage = false;              ///< another password gives bytes before that
};

FakeMember file(std::string name, std::string content = "content");
FakeMember folder(std::string name);
FakeMember symbolicLink(std::string name, std::string target);
FakeMember hardLink(std::string name, std::string target);
FakeMember encrypted(std::string name, std::string password, std::string content = "secret");

/// "f12" from "f" and 12.
std::string nameOf(std::string letters, std::size_t number);

/// An archive of such members. Counts what is asked of it.
class FakeReader final : public ArchiveReader {
public:
    explicit FakeReader(std::vector<FakeMember> members) : members_(std::move(members)) {}

    ArchiveFacts archive;
    bool detaches = false;
    ReturnCode end = kNoMoreEntries;                   ///< what stands behind the last member
    std::size_t endAt = static_cast<std::size_t>(-1);  ///< ... or behind this many
    std::function<void()> onPiece;                     ///< called on the reading thread before each piece
    std::atomic<std::size_t> nexts{0}, restarts{0}, reads{0}, detached{0};

    [[nodiscard]] const ArchiveFacts& facts() const override { return archive; }
    ReturnCode next(Member& member) override;
    ReturnCode restart() override;
    void setPassword(std::string_view utf8) override { password_ = utf8; }
    ReturnCode read(const DataSink& sink) override;
    std::unique_ptr<DetachedData> detach() override;
    [[nodiscard]] std::uint64_t consumed() const override { return at_; }

    ReturnCode readMember(const FakeMember& member, const std::string& password, const DataSink& sink);

private:
    std::vector<FakeMember> members_;
    std::size_t at_ = 0;
    bool readable_ = false;
    std::string password_;
};

}  // namespace archiver::test
