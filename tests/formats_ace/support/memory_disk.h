#pragma once
#include <map>
#include <memory>
#include <string>

#include "archivers/formats/ace/ace_reader.h"

namespace archiver::test {

/// Files in memory, by their names.
class MemoryDisk {
public:
    /// Puts a file in its place, also while an archive is open.
    void put(const std::string& name, std::string bytes) { (*files_)[name] = std::move(bytes); }

    /// Opens files of this disk, now and later.
    [[nodiscard]] AceFileOpener opener() const;

    /// Opens an archive.
    [[nodiscard]] AceOpenResult open(const std::string& name) const { return openAceReader(name, opener()); }

private:
    std::shared_ptr<std::map<std::string, std::string>> files_ = std::make_shared<std::map<std::string, std::string>>();
};

/// Opens an archive in memory; fails the running test when that does not work.
std::unique_ptr<AceReader> openBytes(std::string bytes);

}  // namespace archiver::test
