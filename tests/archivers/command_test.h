#pragma once
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "archivers/loaded_library.h"
#include "commands/scratch_folder.h"

namespace archiver::testing {

/// What a command answered.
struct Answer {
    std::int32_t code = 0;
    std::string output;
};

/// Runs command lines through the exported functions, in a folder of its own that is the current one.
class CommandTest : public ::testing::Test {
protected:
    CommandTest(const char* module, const char* prefix) : library(module, prefix) {}
    void SetUp() override { ASSERT_TRUE(library.loaded()); }

    Answer run(const std::string& line, std::uint32_t size = 16384) {
        std::string buffer(size, '#');
        Answer answer;
        answer.code = library.call<fn::Run>("", nullptr, line.c_str(), buffer.data(), size);
        answer.output = buffer.c_str();
        return answer;
    }

    /// The bytes of a file in the test's folder; nullopt when it is not there.
    [[nodiscard]] std::optional<std::string> bytes(const std::filesystem::path& name) const {
        if (!std::filesystem::is_regular_file(folder.path() / name)) return std::nullopt;
        std::ifstream stream(folder.path() / name, std::ios::binary);
        return std::string{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }
    [[nodiscard]] bool isFolder(const std::filesystem::path& name) const {
        return std::filesystem::is_directory(folder.path() / name);
    }
    /// Files and folders below a folder of the test's.
    [[nodiscard]] std::size_t countBelow(const std::filesystem::path& name) const {
        std::size_t count = 0;
        std::error_code missing;
        for ([[maybe_unused]] const auto& entry :
             std::filesystem::recursive_directory_iterator(folder.path() / name, missing)) {
            ++count;
        }
        return count;
    }
    /// Copies an archive that another program made into the test's folder.
    void take(const char* name) {
        std::filesystem::copy_file(sample(name), folder.path() / std::filesystem::path(name).filename());
    }

    LoadedLibrary library;
    ScratchFolder folder{"archiver-commands"};
};

}  // namespace archiver::testing
