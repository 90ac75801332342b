#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

/// Runs a fuzzer's function where libFuzzer itself is missing: on files, on the files of folders, and with
/// "-mutations=N" on N damaged copies of each of them. The damage follows a fixed sequence, so that every run does the
/// same; it finds less than libFuzzer, which sees what its inputs reach, but needs no other compiler.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

namespace {

using Bytes = std::vector<std::uint8_t>;

/// Source: G. Marsaglia, "Xorshift RNGs", 2003
class Sequence {
public:
    /// @return a number below `limit`, which is not 0
    std::size_t below(std::size_t limit) {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 7;
        state_ ^= state_ << 17;
        return static_cast<std::size_t>(state_ % limit);
    }

private:
    std::uint64_t state_ = 88172645463325252U;
};

void damageOnce(Bytes& bytes, Sequence& sequence) {
    static constexpr std::uint8_t kLimits[] = {0, 1, 0x7F, 0x80, 0xFE, 0xFF};
    if (bytes.empty()) {
        bytes.push_back(static_cast<std::uint8_t>(sequence.below(256)));
        return;
    }
    // Headers are where most is decided: half of the places are among the first bytes.
    const std::size_t reach = sequence.below(2) == 0 ? std::min<std::size_t>(bytes.size(), 128) : bytes.size();
    const std::size_t at = sequence.below(reach);
    const std::size_t count = 1 + sequence.below(std::min<std::size_t>(bytes.size() - at, 16));
    const auto place = bytes.begin() + static_cast<std::ptrdiff_t>(at);
    switch (sequence.below(6)) {
        case 0:
            *place ^= static_cast<std::uint8_t>(1U << sequence.below(8));
            break;
        case 1:
            *place = static_cast<std::uint8_t>(sequence.below(256));
            break;
        case 2:
            std::fill_n(place, count, kLimits[sequence.below(std::size(kLimits))]);
            break;
        case 3:
            bytes.erase(place, place + static_cast<std::ptrdiff_t>(count));
            break;
        case 4: {
            const Bytes copy(place, place + static_cast<std::ptrdiff_t>(count));
            bytes.insert(bytes.begin() + static_cast<std::ptrdiff_t>(sequence.below(bytes.size())), copy.begin(),
                         copy.end());
            break;
        }
        default:
            bytes.resize(sequence.below(bytes.size()) + 1);
    }
}

void run(const std::filesystem::path& file, long mutations, Sequence& sequence) {
    std::ifstream stream(file, std::ios::binary);
    const Bytes bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    // Told first: when it ends here, this was the input.
    std::printf("%s\n", file.c_str());
    std::fflush(stdout);
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    for (long index = 0; index < mutations; ++index) {
        Bytes damaged = bytes;
        for (std::size_t times = 1 + sequence.below(4); times > 0; --times) damageOnce(damaged, sequence);
        LLVMFuzzerTestOneInput(damaged.data(), damaged.size());
    }
}

}  // namespace

int main(int argc, char** argv) {
    static constexpr const char* kMutations = "-mutations=";
    Sequence sequence;
    long mutations = 0;
    for (int index = 1; index < argc; ++index) {
        if (std::strncmp(argv[index], kMutations, std::strlen(kMutations)) == 0) {
            mutations = std::atol(argv[index] + std::strlen(kMutations));
        }
        if (argv[index][0] == '-') continue;
        std::vector<std::filesystem::path> files;
        if (!std::filesystem::is_directory(argv[index])) {
            files.emplace_back(argv[index]);
        } else {
            for (const auto& entry : std::filesystem::recursive_directory_iterator(argv[index])) {
                if (entry.is_regular_file()) files.push_back(entry.path());
            }
            std::sort(files.begin(), files.end());
        }
        for (const auto& file : files) run(file, mutations, sequence);
    }
}
