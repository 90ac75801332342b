#pragma once
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "archivers/convention/ace_abi.h"
#include "archivers/module.h"
#include "formats_ace/support/ace_builder.h"

namespace archiver::test {

namespace abi = ace_abi;

/// The library as callers bind it, and a folder for archives and for what comes out of them. Texts are UTF-8.
class UnAceFixture : public ::testing::Test {
protected:
    UnAceFixture();
    ~UnAceFixture() override;

    /// Writes an archive and opens it.
    ArchiveHandle openBytes(const std::string& bytes, std::uint32_t mode = abi::kOpenExtract);
    /// @param result  OpenResult
    ArchiveHandle openFile(const std::filesystem::path& file, std::int32_t& result,
                           std::uint32_t mode = abi::kOpenExtract);
    /// Opens an archive that another program made.
    ArchiveHandle openSample(const std::string& file);

    /// Reads the next header, which must be there.
    abi::HeaderData header(ArchiveHandle archive);
    /// Reads headers up to that of a member.
    void goTo(ArchiveHandle archive, const std::string& name);

    void write(const std::filesystem::path& file, const std::string& bytes) const;
    [[nodiscard]] std::string read(const std::filesystem::path& file) const;
    /// All files and folders below a folder, with "/" between parts and at the end of folders, sorted.
    [[nodiscard]] std::vector<std::string> tree(const std::filesystem::path& folder) const;
    [[nodiscard]] std::string text(const std::filesystem::path& path) const;

    template <class Function>
    Function* bind(const char* name) const {
        return reinterpret_cast<Function*>(module_.find(name));
    }

private:
    archiver::testing::Module module_{"UnAce"};

protected:
    std::filesystem::path folder;
    std::filesystem::path out;
    abi::fn::Open* const open = bind<abi::fn::Open>("ACEOpenArchive");
    abi::fn::Close* const close = bind<abi::fn::Close>("ACECloseArchive");
    abi::fn::ReadHeader* const readHeader = bind<abi::fn::ReadHeader>("ACEReadHeader");
    abi::fn::ProcessFile* const process = bind<abi::fn::ProcessFile>("ACEProcessFile");
    abi::fn::SetPassword* const setPassword = bind<abi::fn::SetPassword>("ACESetPassword");
    fn::SetBool* const setUnicodeMode = bind<fn::SetBool>("ACESetUnicodeMode");

private:
    std::vector<ArchiveHandle> opened_;
};

}  // namespace archiver::test
