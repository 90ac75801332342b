#pragma once
#include <atomic>
#include <cstdint>
#include <string>

#include "archivers/convention/text_codec.h"
#include "archivers/convention/zip_abi.h"

namespace archiver::infozip {

/// What the exported functions do. Nothing throws; callbacks come from the thread that called `archive`.
class ZipCore {
public:
    /// Takes the callbacks. @return 0 when those for messages and comments are missing, else 1
    std::int32_t init(const zip_abi::Callbacks* callbacks) noexcept;
    /// Takes the options and copies their texts. @return 1; 0 for no record
    std::int32_t setOptions(const zip_abi::Options* options) noexcept;
    /// The options as they were set; the texts are this object's, until the next call of `setOptions`.
    [[nodiscard]] zip_abi::Options options() noexcept;
    /// Performs the command. The root folder is the process's current one meanwhile.
    /// @return zip_abi::result; kLogic while another command runs, or before `init`
    std::int32_t archive(const zip_abi::Command& command) noexcept;
    /// Texts are UTF-8 from now on, or those of the ANSI code page. @return 1; 0 while a command runs
    std::int32_t setUnicodeMode(std::int32_t on) noexcept;
    static void version(zip_abi::Version* version) noexcept;

private:
    std::int32_t run(const zip_abi::Command& command);

    zip_abi::Callbacks callbacks_{};
    zip_abi::Options options_{};
    std::string date_, rootFolder_, temporaryFolder_;
    std::atomic<bool> running_{false};
    std::atomic<bool> unicode_{false};
};

}  // namespace archiver::infozip
