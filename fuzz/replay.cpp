#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

/// Runs a fuzzer's function on files and on the files of folders, where libFuzzer itself is missing.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

namespace {

void replay(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    std::printf("%s\n", file.c_str());
}

}  // namespace

int main(int argc, char** argv) {
    for (int index = 1; index < argc; ++index) {
        if (argv[index][0] == '-') continue;  // an option of libFuzzer's
        if (!std::filesystem::is_directory(argv[index])) {
            replay(argv[index]);
            continue;
        }
        for (const auto& entry : std::filesystem::recursive_directory_iterator(argv[index])) {
            if (entry.is_regular_file()) replay(entry.path());
        }
    }
}
