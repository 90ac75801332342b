#pragma once
#include <filesystem>
#include <string>

namespace archiver::testing {

/// A file with given bytes in the temporary folder; removed with the object.
class ScratchFile {
public:
    ScratchFile(const char* name, const std::string& bytes);
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;
    ~ScratchFile();

    [[nodiscard]] std::string name() const { return path_.string(); }

private:
    std::filesystem::path path_;
};

/// The bytes of a sample.
std::string bytesOf(const std::string& file);

}  // namespace archiver::testing
