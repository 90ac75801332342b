#pragma once
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "drivers/ace_library.h"

namespace tovar::test {

/// Answers as a test tells and logs every call as its name and arguments.
class FakeAceLibrary final : public AceLibrary {
public:
    std::vector<std::wstring> calls;
    std::int32_t openResult = 0;
    std::vector<AceMember> members;
    std::int32_t endCode = 128;
    /// What processing a member answers, by its name; 0 where nothing is said.
    std::map<std::wstring, std::int32_t> answers;
    std::wstring password;  ///< that encrypted members open with; others give `wrongPassword`
    std::int32_t wrongPassword = 9;
    std::wstring unspeakable = L"\x2603";  ///< a password that its texts cannot hold
    /// Does what unpacking does to the disk.
    std::function<void(const AceMember& member, const std::wstring& destination)> unpacks;
    std::vector<std::uint32_t> pieces;  ///< of data that each member is told to have
    Utf8Codec utf8;

    archiver::ArchiveHandle open(std::wstring_view fileName, std::uint32_t mode, std::int32_t& result) override {
        calls.push_back(L"open " + std::wstring(fileName) + L' ' + std::to_wstring(mode));
        result = openResult;
        if (openResult != 0) return nullptr;
        next_ = 0;
        given_.clear();
        needsProcessing_ = false;
        return this;
    }
    std::int32_t readHeader(archiver::ArchiveHandle archive, AceMember& member) override {
        calls.push_back(L"readHeader");
        if (archive != this) return 129;
        if (needsProcessing_) return 10;  // as a library may that was not told what to do with the last member
        if (next_ == members.size()) return endCode;
        member = members[next_++];
        needsProcessing_ = true;
        return 0;
    }
    std::int32_t processFile(archiver::ArchiveHandle archive, std::int32_t operation, std::wstring_view destination,
                             const AceDataSink& data) override {
        static constexpr const wchar_t* kWords[] = {L"skip", L"test", L"extract"};
        calls.push_back(kWords[operation] + (destination.empty() ? L"" : L" " + std::wstring(destination)));
        if (archive != this || !needsProcessing_) return 129;
        needsProcessing_ = false;
        if (operation == 0) return 0;
        const AceMember& member = members[next_ - 1];
        if (member.encrypted() && given_.empty()) return 131;
        if (member.encrypted() && given_ != password) return wrongPassword;
        if (operation == 2 && unpacks) unpacks(member, std::wstring(destination));
        for (const std::uint32_t bytes : pieces) {
            if (data && !data(bytes)) return 255;
        }
        const auto found = answers.find(member.name);
        return found == answers.end() ? 0 : found->second;
    }
    std::int32_t setPassword(archiver::ArchiveHandle archive, std::wstring_view text) override {
        calls.push_back(L"setPassword " + std::wstring(text));
        given_ = text;
        if (text == unspeakable) return 130;
        return archive == this ? 0 : 129;
    }
    std::int32_t close(archiver::ArchiveHandle archive) override {
        calls.push_back(archive == this ? L"close" : L"close of a foreign handle");
        return 0;
    }
    const TextCodec& codec() override { return utf8; }

private:
    std::size_t next_ = 0;
    bool needsProcessing_ = false;
    std::wstring given_;
};

}  // namespace tovar::test
