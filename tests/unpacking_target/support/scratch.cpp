#include "unpacking_target/support/scratch.h"

#include <gtest/gtest.h>

namespace archiver::test {

std::unique_ptr<TargetFolder> openTarget(const std::filesystem::path& folder) {
    std::unique_ptr<TargetFolder> target;
    EXPECT_EQ(systemTarget().open(folder, target), kOk);
    return target;
}

ReturnCode writeFile(TargetFolder& target, const std::filesystem::path& name, std::string_view bytes, bool replace,
                     const ItemProperties& properties) {
    std::unique_ptr<OutputFile> file;
    ReturnCode code = target.createFile(name, bytes.size(), replace, file);
    if (code == kOk) code = file->write(bytes);
    return code == kOk ? file->commit(properties) : code;
}

std::unique_ptr<OutputFile> beginFile(TargetFolder& target, const std::filesystem::path& name, std::string_view bytes,
                                      bool replace) {
    std::unique_ptr<OutputFile> file;
    EXPECT_EQ(target.createFile(name, bytes.size(), replace, file), kOk);
    if (file) {
        EXPECT_EQ(file->write(bytes), kOk);
    }
    return file;
}

}  // namespace archiver::test
