#pragma once
#include <map>
#include <string>
#include <vector>

#include "archivers/convention/zip_abi.h"
#include "archivers/infozip32/zip_core.h"
#include "archivers/packing/source_item.h"
#include "formats/support/files.h"

namespace archiver::test {

/// A folder with sources, and the library as a caller uses it: a record, a command, callbacks. Records what comes back.
class ZipScene {
public:
    ZipScene();
    ~ZipScene();
    ZipScene(const ZipScene&) = delete;
    ZipScene& operator=(const ZipScene&) = delete;

    /// Writes a source, with the folders above it. @param name  "/"-parted UTF-8 @param age  seconds before now
    void write(const std::string& name, const std::string& bytes, long age = 0);
    void makeFolder(const std::string& name);
    [[nodiscard]] bool exists(const std::string& name) const;
    [[nodiscard]] std::filesystem::path path(const std::string& name) const;
    /// What lies beside the archive besides sources: an unfinished new archive, for one.
    [[nodiscard]] std::vector<std::string> strays() const;

    /// Runs on the archive; the first name goes in twice, as callers do it.
    std::int32_t run(const std::vector<std::string>& names);

    /// The archive's members and their contents as its reader gives them; folders have "/" at their end.
    [[nodiscard]] std::map<std::string, std::string> members(const std::string& password = {}) const;
    [[nodiscard]] std::vector<std::string> memberNames() const;
    [[nodiscard]] std::string archiveBytes() const { return readFile(archive); }

private:
    TemporaryFolder folder_;  // before the archive in it

public:
    zip_abi::Options options{};
    std::filesystem::path archive;  ///< in the folder of the sources
    std::vector<std::string> messages;
    std::vector<std::string> prompts, promptedNames;
    std::vector<std::string> passwords{"secret", "secret"};  ///< answers in turn
    std::int32_t passwordAnswer = 0;
    std::string newComment, oldComment;
    std::int32_t commentAnswer = 0;
    std::vector<std::pair<std::string, std::uint32_t>> serviced;
    long stopAt = -1;  ///< the service call, counted from 0, that asks to stop
    [[nodiscard]] std::string text() const;

    [[nodiscard]] static zip_abi::Callbacks callbacks();

private:
    infozip::ZipCore core_;
};

/// Where making a file takes milliseconds: what is done thousands of times elsewhere, is done some hundred times there.
#if defined(_WIN32)
inline constexpr bool kSlowFiles = true;
#else
inline constexpr bool kSlowFiles = false;
#endif

/// A text with a number behind it.
std::string numbered(const char* text, std::size_t number);

/// Bytes that deflate well, and such that do not.
std::string textOfSize(std::size_t size);
std::string noiseOfSize(std::size_t size);

}  // namespace archiver::test
