#pragma once
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "drivers/archiver_library.h"
#include "drivers/driver_description.h"
#include "drivers/library_texts.h"
#include "drivers/module_loader.h"
#include "shell/text_codec.h"

namespace tovar {

/// The exported functions of a loaded archiver library.
///
/// Texts go over in UTF-8 where it exports prefix + "SetUnicodeMode", while a call of ours runs or an archive that we
/// opened is open.
class BoundLibrary final : public ArchiverLibrary {
public:
    /// @param description  its prefix names the functions; not kept
    /// @param ansi         codec of the ANSI code page; outlives the library, as `system` does
    BoundLibrary(std::unique_ptr<Module> module, const DriverDescription& description, const TextCodec& ansi,
                 const SystemPaths& system);
    ~BoundLibrary() override;

    std::uint16_t version() override;
    bool running() override;
    bool backGroundMode() override;
    bool setBackGroundMode(bool on) override;
    bool cursorMode() override;
    bool setCursorMode(bool on) override;
    std::int32_t run(WindowHandle owner, std::wstring_view commandLine, std::uint32_t bufferSize,
                     std::wstring& output) override;
    void setProgress(ExtractProgressSink sink) override { progress_ = std::move(sink); }
    bool setPassword(std::wstring_view password) override;
    const TextCodec& commandCodec() override;
    std::int32_t checkArchive(std::wstring_view fileName, std::int32_t mode) override;
    std::int32_t configDialog(WindowHandle owner, std::int32_t mode) override;
    archiver::ArchiveHandle openArchive(WindowHandle owner, std::wstring_view fileName, std::uint32_t mode) override;
    std::int32_t findFirst(archiver::ArchiveHandle archive, std::wstring_view wildName,
                           archiver::IndividualInfo& info) override;
    std::int32_t findNext(archiver::ArchiveHandle archive, archiver::IndividualInfo& info) override;
    std::int32_t closeArchive(archiver::ArchiveHandle archive) override;
    std::optional<std::uint64_t> originalSize(archiver::ArchiveHandle archive) override;
    std::optional<std::uint64_t> compressedSize(archiver::ArchiveHandle archive) override;
    void decodeTo(std::string_view bytes, std::wstring& text) const override;

private:
    /// Null where the library lacks the function.
    struct Functions {
        archiver::fn::Run* run;
        archiver::fn::GetWord* getVersion;
        archiver::fn::GetBool* getRunning;
        archiver::fn::GetBool* getBackGroundMode;
        archiver::fn::SetBool* setBackGroundMode;
        archiver::fn::GetBool* getCursorMode;
        archiver::fn::SetBool* setCursorMode;
        archiver::fn::CheckArchive* checkArchive;
        archiver::fn::ConfigDialog* configDialog;
        archiver::fn::OpenArchive* openArchive;
        archiver::fn::FindFirst* findFirst;
        archiver::fn::FindNext* findNext;
        archiver::fn::CloseArchive* closeArchive;
        archiver::fn::GetSizeEx* getOriginalSizeEx;
        archiver::fn::GetSizeEx* getCompressedSizeEx;
        archiver::fn::SetBool* setUnicodeMode;
        archiver::fn::SetOwnerWindowEx* setOwnerWindowEx;
        archiver::fn::SetOwnerWindow* killOwnerWindowEx;
        archiver::fn::SetCommandPassword* setCommandPassword;
    };

    class ProgressCall;
    class PasswordCall;

    static Functions bind(const Module& module, std::string_view prefix);

    std::unique_ptr<Module> module_;
    Functions functions_;
    LibraryTexts texts_;
    ExtractProgressSink progress_;
    std::wstring password_;
    int openArchives_ = 0;  ///< of the users of the library's texts those that are archives
};

}  // namespace tovar
