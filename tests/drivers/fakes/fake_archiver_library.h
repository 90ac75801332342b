#pragma once
#include <cstdint>
#include <functional>
#include <new>
#include <optional>
#include <string>
#include <vector>

#include "drivers/archiver_library.h"
#include "drivers/fakes/member.h"

namespace tovar::test {

/// Answers as a test tells and logs every call as its name and arguments. Its 8-bit texts are ISO 8859-1.
class FakeArchiverLibrary final : public ArchiverLibrary {
public:
    std::vector<std::wstring> calls;
    std::vector<WindowHandle> owners;  ///< of the calls that have one, in order

    std::uint16_t versionAnswer = 540;
    bool runningAnswer = false;
    bool backGround = true;
    bool cursor = true;
    std::int32_t runAnswer = 0;
    std::function<void()> whileRunning;  ///< a command
    std::string written;                 ///< what `run` puts at the start of the output buffer
    std::uint32_t givenBufferSize = 0;
    std::int32_t checkAnswer = 0;
    std::int32_t dialogAnswer = 0;
    bool opens = true;
    std::vector<LibraryMember> members;
    std::int32_t endCode = -1;  ///< what the search answers behind the last member
    bool has64BitSizes = false;
    std::vector<std::uint64_t> originals64, packed64;  ///< by member
    ExtractProgressSink progress;
    Utf8Codec codec;
    mutable std::optional<int> decodesUntilNoMemory;

    std::uint16_t version() override {
        calls.push_back(L"version");
        return versionAnswer;
    }
    bool running() override {
        calls.push_back(L"running");
        return runningAnswer;
    }
    bool backGroundMode() override {
        calls.push_back(L"backGroundMode");
        return backGround;
    }
    bool setBackGroundMode(bool on) override {
        calls.push_back(on ? L"setBackGroundMode 1" : L"setBackGroundMode 0");
        backGround = on;
        return true;
    }
    bool cursorMode() override {
        calls.push_back(L"cursorMode");
        return cursor;
    }
    bool setCursorMode(bool on) override {
        calls.push_back(on ? L"setCursorMode 1" : L"setCursorMode 0");
        cursor = on;
        return true;
    }
    std::int32_t run(WindowHandle owner, std::wstring_view commandLine, std::uint32_t bufferSize,
                     std::wstring& output) override {
        calls.push_back(L"run " + std::wstring(commandLine));
        owners.push_back(owner);
        givenBufferSize = bufferSize;
        if (whileRunning) whileRunning();
        std::string buffer = written;
        buffer.resize(bufferSize);
        output.clear();
        decodeTo(buffer, output);
        return runAnswer;
    }
    void setProgress(ExtractProgressSink sink) override { progress = std::move(sink); }
    const TextCodec& commandCodec() override { return codec; }
    std::int32_t checkArchive(std::wstring_view fileName, std::int32_t mode) override {
        calls.push_back(L"checkArchive " + std::wstring(fileName) + L' ' + std::to_wstring(mode));
        return checkAnswer;
    }
    std::int32_t configDialog(WindowHandle owner, std::int32_t mode) override {
        calls.push_back(L"configDialog " + std::to_wstring(mode));
        owners.push_back(owner);
        return dialogAnswer;
    }
    archiver::ArchiveHandle openArchive(WindowHandle owner, std::wstring_view fileName, std::uint32_t mode) override {
        calls.push_back(L"openArchive " + std::wstring(fileName) + L' ' + std::to_wstring(mode));
        owners.push_back(owner);
        return opens ? this : nullptr;
    }
    std::int32_t findFirst(archiver::ArchiveHandle archive, std::wstring_view wildName,
                           archiver::IndividualInfo& info) override {
        calls.push_back(L"findFirst " + std::wstring(wildName));
        next_ = 0;
        return give(archive, info);
    }
    std::int32_t findNext(archiver::ArchiveHandle archive, archiver::IndividualInfo& info) override {
        calls.push_back(L"findNext");
        return give(archive, info);
    }
    std::int32_t closeArchive(archiver::ArchiveHandle archive) override {
        calls.push_back(archive == this ? L"closeArchive" : L"closeArchive of a foreign handle");
        return 0;
    }
    std::optional<std::uint64_t> originalSize(archiver::ArchiveHandle) override {
        return has64BitSizes ? std::optional(originals64.at(next_ - 1)) : std::nullopt;
    }
    std::optional<std::uint64_t> compressedSize(archiver::ArchiveHandle) override {
        return has64BitSizes ? std::optional(packed64.at(next_ - 1)) : std::nullopt;
    }
    void decodeTo(std::string_view bytes, std::wstring& text) const override {
        if (decodesUntilNoMemory && (*decodesUntilNoMemory)-- == 0) {
            throw std::bad_alloc();
        }
        for (const char each : bytes) text += static_cast<wchar_t>(static_cast<unsigned char>(each));
    }

private:
    std::int32_t give(archiver::ArchiveHandle archive, archiver::IndividualInfo& info) {
        if (archive != this) return 0x8021;
        if (next_ == members.size()) return endCode;
        info = infoOf(members[next_++]);
        return 0;
    }

    std::size_t next_ = 0;
};

}  // namespace tovar::test
