#pragma once
#include "drivers/ace_library.h"
#include "drivers/archiver_library.h"
#include "drivers/return_codes.h"

namespace tovar {

/// Stands in for a library that is not there: every function answers like a failing one, the version is that of an
/// unusable library.
class MissingLibrary final : public ArchiverLibrary {
public:
    std::uint16_t version() override { return kUnusableVersion; }
    bool running() override { return false; }
    bool backGroundMode() override { return false; }
    bool setBackGroundMode(bool) override { return false; }
    bool cursorMode() override { return false; }
    bool setCursorMode(bool) override { return false; }
    std::int32_t run(WindowHandle, std::wstring_view, std::uint32_t, std::wstring& output) override {
        output.clear();
        return return_code::kUnsupported;
    }
    void setProgress(ExtractProgressSink) override {}
    const TextCodec& commandCodec() override { return codec_; }
    std::int32_t checkArchive(std::wstring_view, std::int32_t) override { return 0; }
    std::int32_t configDialog(WindowHandle, std::int32_t) override { return return_code::kUnsupported; }
    archiver::ArchiveHandle openArchive(WindowHandle, std::wstring_view, std::uint32_t) override { return nullptr; }
    std::int32_t findFirst(archiver::ArchiveHandle, std::wstring_view, archiver::IndividualInfo&) override {
        return return_code::kUnsupported;
    }
    std::int32_t findNext(archiver::ArchiveHandle, archiver::IndividualInfo&) override {
        return return_code::kUnsupported;
    }
    std::int32_t closeArchive(archiver::ArchiveHandle) override { return return_code::kUnsupported; }
    std::optional<std::uint64_t> originalSize(archiver::ArchiveHandle) override { return std::nullopt; }
    std::optional<std::uint64_t> compressedSize(archiver::ArchiveHandle) override { return std::nullopt; }
    void decodeTo(std::string_view, std::wstring&) const override {}

private:
    Utf8Codec codec_;
};

/// The same in place of "UnAce.dll".
class MissingAceLibrary final : public AceLibrary {
public:
    archiver::ArchiveHandle open(std::wstring_view, std::uint32_t, std::int32_t& result) override {
        result = archiver::ace_abi::result::kOther;
        return nullptr;
    }
    std::int32_t readHeader(archiver::ArchiveHandle, AceMember&) override { return archiver::ace_abi::result::kHandle; }
    std::int32_t processFile(archiver::ArchiveHandle, std::int32_t, std::wstring_view, const AceDataSink&) override {
        return archiver::ace_abi::result::kHandle;
    }
    std::int32_t setPassword(archiver::ArchiveHandle, std::wstring_view) override {
        return archiver::ace_abi::result::kHandle;
    }
    std::int32_t close(archiver::ArchiveHandle) override { return archiver::ace_abi::result::kHandle; }
    const TextCodec& codec() override { return codec_; }

private:
    Utf8Codec codec_;
};

}  // namespace tovar
