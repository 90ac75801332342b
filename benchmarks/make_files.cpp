// Makes files to pack: make_files small COUNT FOLDER | make_files large MEBIBYTES FILE
//
// What they hold packs about as well as text does: words of a fixed list in an order that a fixed sequence of numbers
// gives, so that every run on every machine packs the same.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

/// Source: G. Marsaglia, "Xorshift RNGs", 2003
class Sequence {
public:
    std::uint32_t next() {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 17;
        return state_ ^= state_ << 5;
    }

private:
    std::uint32_t state_ = 2463534242U;
};

void appendText(Sequence& sequence, std::size_t size, std::string& text) {
    static constexpr const char* kWords[] = {
        "archive", "member", "the",     "of", "folder", "and", "size",  "is",   "a",      "name",  "time",   "which",
        "window",  "to",     "library", "in", "driver", "for", "table", "with", "header", "block", "stored", "that"};
    const std::size_t end = text.size() + size;
    while (text.size() < end) {
        const std::uint32_t number = sequence.next();
        text += kWords[number % std::size(kWords)];
        if (number % 31 == 0) text += std::to_string(number);
        text += number % 11 == 0 ? '\n' : ' ';
    }
    text.resize(end);
}

int makeSmall(long count, const std::filesystem::path& folder) {
    Sequence sequence;
    std::string text;
    for (long i = 0; i < count; ++i) {
        char name[64];
        std::snprintf(name, sizeof name, "module-%03ld/file_%06ld.txt", i / 500, i);
        const auto path = folder / name;
        if (i % 500 == 0) std::filesystem::create_directories(path.parent_path());
        text.clear();
        appendText(sequence, 1024, text);
        if (!std::ofstream(path, std::ios::binary).write(text.data(), static_cast<std::streamsize>(text.size())))
            return 1;
    }
    return 0;
}

int makeLarge(long mebibytes, const char* file) {
    Sequence sequence;
    std::ofstream out(file, std::ios::binary);
    std::string text;
    for (long i = 0; i < mebibytes; ++i) {
        text.clear();
        appendText(sequence, std::size_t{1} << 20, text);
        if (!out.write(text.data(), static_cast<std::streamsize>(text.size()))) return 1;
    }
    return 0;
}

}  // namespace

int main(int count, char** arguments) {
    const std::string form = count == 4 ? arguments[1] : "";
    if (form == "small") return makeSmall(std::atol(arguments[2]), arguments[3]);
    if (form == "large") return makeLarge(std::atol(arguments[2]), arguments[3]);
    std::fprintf(stderr, "make_files small COUNT FOLDER | make_files large MEBIBYTES FILE\n");
    return 2;
}
