#pragma once
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "archivers/convention/ace_abi.h"
#include "archivers/convention/text_codec.h"
#include "archivers/formats/ace/ace_reader.h"
#include "archivers/unace/open_record.h"

namespace archiver::unace {

/// An open archive with what its caller wants of it. One call at a time.
class AceArchive {
public:
    AceArchive(std::unique_ptr<AceReader> reader, std::filesystem::path file, const OpenWishes& wishes);
    AceArchive(const AceArchive&) = delete;
    AceArchive& operator=(const AceArchive&) = delete;

    /// @param codec  of the texts of this call, as with the others
    std::int32_t readHeader(ace_abi::HeaderData& header, const TextCodec& codec);

    /// @param destination  null or empty: the current folder. An existing folder, or a text with a separator at its
    ///                     end: the folder that the member goes below, by its name made safe. Else the file itself.
    std::int32_t process(std::int32_t operation, const char* destination, const TextCodec& codec);

    std::int32_t setPassword(const char* password, const TextCodec& codec);

private:
    struct Target {
        std::filesystem::path folder;
        std::string name;  ///< UTF-8, below the folder
    };

    [[nodiscard]] bool changeVolume(std::filesystem::path& volume, AceVolumeEvent event) const;
    [[nodiscard]] bool tellData(const char* bytes, std::size_t size) const;
    [[nodiscard]] ReturnCode targetOf(const char* destination, const TextCodec& codec, Target& target) const;
    ReturnCode test();
    ReturnCode extract(const Target& target);

    std::unique_ptr<AceReader> reader_;
    std::filesystem::path file_;
    OpenWishes wishes_;
    const TextCodec* codec_;        ///< of the call that runs
    std::optional<Member> member_;  ///< the one whose header was read last
    bool passwordSet_ = false;
    std::optional<std::string> webMark_;  ///< of the archive, once it was asked for
};

}  // namespace archiver::unace
