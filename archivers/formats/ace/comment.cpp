#include "archivers/formats/ace/comment.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

#include "archivers/formats/ace/code_table.h"

namespace archiver::ace {
namespace {

class TextSource final : public ByteSource {
public:
    explicit TextSource(std::string_view text) noexcept : rest_(text) {}
    std::size_t fill(std::span<char> into) override {
        const std::size_t count = std::min(into.size(), rest_.size());
        std::copy_n(rest_.begin(), count, into.begin());
        rest_.remove_prefix(count);
        return count;
    }

private:
    std::string_view rest_;
};

}  // namespace

std::optional<std::string> unpackComment(std::string_view packed) {
    constexpr unsigned kLiterals = 256, kSymbols = 284;
    constexpr unsigned kShortest = 2;
    TextSource source(packed);
    BitReader reader(source);
    const std::size_t length = reader.take(15);
    CodeTable<11, kSymbols> table;
    if (!table.read(reader)) return std::nullopt;

    std::string text;
    std::array<std::size_t, 511> places{};  // where a text stood last behind two bytes of this sum
    while (text.size() < length) {
        std::size_t from = 0;
        if (text.size() >= 2) {
            const std::size_t sum = static_cast<unsigned char>(text[text.size() - 1]) +
                                    std::size_t{static_cast<unsigned char>(text[text.size() - 2])};
            from = places[sum];
            places[sum] = text.size();
        }
        const unsigned symbol = table.take(reader);
        if (symbol > kSymbols || reader.overrun()) return std::nullopt;
        if (symbol < kLiterals) {
            text += static_cast<char>(symbol);
            continue;
        }
        if (from >= text.size()) return std::nullopt;
        for (unsigned i = symbol - kLiterals + kShortest; i > 0 && text.size() < length; --i) text += text[from++];
    }
    return text;
}

}  // namespace archiver::ace
