#pragma once
#include <memory>

#include "drivers/ace_library.h"
#include "drivers/library_texts.h"
#include "drivers/module_loader.h"

namespace tovar {

/// The exported functions of a loaded "UnAce.dll". Texts go over in UTF-8 where it exports ACESetUnicodeMode.
class BoundAceLibrary final : public AceLibrary {
public:
    /// @param ansi  codec of the ANSI code page; outlives the library, as `system` does
    BoundAceLibrary(std::unique_ptr<Module> module, const TextCodec& ansi, const SystemPaths& system);

    archiver::ArchiveHandle open(std::wstring_view fileName, std::uint32_t mode, std::int32_t& result) override;
    std::int32_t readHeader(archiver::ArchiveHandle archive, AceMember& member) override;
    std::int32_t processFile(archiver::ArchiveHandle archive, std::int32_t operation, std::wstring_view destination,
                             const AceDataSink& data) override;
    std::int32_t setPassword(archiver::ArchiveHandle archive, std::wstring_view password) override;
    std::int32_t close(archiver::ArchiveHandle archive) override;
    const TextCodec& codec() override;

private:
    /// Null where the library lacks the function.
    struct Functions {
        archiver::ace_abi::fn::Open* open;
        archiver::ace_abi::fn::ReadHeader* readHeader;
        archiver::ace_abi::fn::ProcessFile* processFile;
        archiver::ace_abi::fn::SetPassword* setPassword;
        archiver::ace_abi::fn::Close* close;
        archiver::fn::SetBool* setUnicodeMode;
    };

    static Functions bind(const Module& module);

    std::unique_ptr<Module> module_;
    Functions functions_;
    LibraryTexts texts_;
    int openArchives_ = 0;  ///< of the users of the library's texts those that are archives
};

}  // namespace tovar
