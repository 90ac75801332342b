#pragma once
#include <deque>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "archivers/unpacking/unpack_events.h"

namespace archiver::test {

/// Records what the unpacker tells, and answers as a test says. Expects every call on the thread that made it.
class RecordingEvents final : public UnpackEvents {
public:
    explicit RecordingEvents(std::filesystem::path target = {}) : target_(std::move(target)) {}

    /// "unpacked docs/a.txt > docs/a.txt": the outcome in a word, the member, where it went below the target;
    /// " renamed" and " 800C" follow where they hold.
    std::vector<std::string> reports;
    std::vector<std::string> begun;              ///< members' names
    std::vector<std::string> replaceQuestions;   ///< "a.txt: 3 bytes"
    std::vector<std::string> passwordQuestions;  ///< "a.txt 1"
    std::vector<std::string> spaceQuestions;     ///< "100 of 50"
    std::vector<std::uint64_t> totals;           ///< that progress told, without repetitions
    std::size_t progresses = 0;

    std::deque<ReplaceAnswer> replaceAnswers;  ///< kCancel when there are no more
    std::deque<std::string> passwords;         ///< none when there are no more
    bool goOnWithoutSpace = false;
    std::function<bool(const UnpackProgress&)> onProgress;  ///< null: true
    std::function<bool(const Member&)> onBegin;             ///< null: true

    bool begins(const Member& member, const std::filesystem::path& file) override;
    bool progress(const UnpackProgress& progress) override;
    void ends(const MemberReport& report) override;
    ReplaceAnswer askReplace(const ReplaceQuestion& question) override;
    std::optional<std::string> askPassword(const Member& member, unsigned attempt) override;
    bool askDiskSpace(std::uint64_t needed, std::uint64_t available) override;

private:
    void expectOwnThread() const;
    [[nodiscard]] std::string below(const std::filesystem::path& file) const;

    std::filesystem::path target_;
    std::thread::id thread_ = std::this_thread::get_id();
};

}  // namespace archiver::test
