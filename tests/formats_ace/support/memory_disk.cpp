#include "formats_ace/support/memory_disk.h"

#include <gtest/gtest.h>

#include "formats/support/files.h"

namespace archiver::test {

AceFileOpener MemoryDisk::opener() const {
    return [files = files_](const std::filesystem::path& name) -> InputFileResult {
        const auto found = files->find(name.string());
        if (found == files->end()) return {nullptr, kNotFindArcFile};
        return {inMemory(found->second), kOk};
    };
}

std::unique_ptr<AceReader> openBytes(std::string bytes) {
    MemoryDisk disk;
    disk.put("a.ace", std::move(bytes));
    AceOpenResult opened = disk.open("a.ace");
    EXPECT_EQ(opened.code, kOk);
    return std::move(opened.reader);
}

}  // namespace archiver::test
