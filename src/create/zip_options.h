#pragma once
#include <string>

#include "archivers/convention/zip_abi.h"
#include "create/zip_command.h"

namespace tovar {

/// The zip library's option record, with the texts that it points to.
class ZipOptions {
public:
    /// @param rootFolder       in the library's 8-bit form, as the other one
    ZipOptions(const ZipCommand& command, std::string rootFolder, std::string temporaryFolder);
    ZipOptions(const ZipOptions&) = delete;
    ZipOptions& operator=(const ZipOptions&) = delete;

    [[nodiscard]] const archiver::zip_abi::Options& record() const noexcept { return record_; }

private:
    std::string rootFolder_, temporaryFolder_;
    archiver::zip_abi::Options record_{};
};

}  // namespace tovar
