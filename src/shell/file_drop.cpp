#include "shell/file_drop.h"

#include <cstddef>
#include <cstdint>

#include "shell/byte_order.h"

namespace tovar {
namespace {

constexpr std::size_t kHeaderSize = 20, kWideFlagAt = 16;

std::uint32_t numberAt(std::string_view block, std::size_t at) {
    std::uint32_t number = 0;
    for (std::size_t place = 4; place-- > 0;) {
        number = number << 8 | static_cast<unsigned char>(block[at + place]);
    }
    return number;
}

/// @return nullopt where a name has no form in the code page
std::optional<std::string> listInCodePage(const std::vector<std::wstring>& paths, const TextCodec& codec) {
    std::string list;
    for (const std::wstring& path : paths) {
        const std::optional<std::string> name = codec.encode(path);
        if (!name) return std::nullopt;
        list += *name;
        list += '\0';
    }
    list += '\0';
    return list;
}

std::string wideList(const std::vector<std::wstring>& paths) {
    std::string list;
    for (const std::wstring& path : paths) {
        putWide(list, path);
        putUnit(list, 0);
    }
    putUnit(list, 0);
    return list;
}

std::wstring textOfUnits(std::string_view bytes) {
    std::wstring text;
    const auto unit = [&](std::size_t at) {
        return static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at]) |
                                          static_cast<unsigned char>(bytes[at + 1]) << 8);
    };
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        std::uint32_t code = unit(at);
        const bool begins = code >= 0xD800 && code < 0xDC00 && at + 3 < bytes.size();
        // A name in Windows may hold half a character, and needs it to be found again.
        if (sizeof(wchar_t) > 2 && begins && unit(at + 2) >= 0xDC00 && unit(at + 2) < 0xE000) {
            code = 0x10000 + (code - 0xD800) * 0x400 + (unit(at + 2) - 0xDC00);
            at += 2;
        }
        text += static_cast<wchar_t>(code);
    }
    return text;
}

/// @return where the next NUL character is; npos when there is none
std::size_t endOfName(std::string_view list, std::size_t begin, std::size_t width) {
    for (std::size_t at = begin; at + width <= list.size(); at += width) {
        if (list[at] == '\0' && (width == 1 || list[at + 1] == '\0')) return at;
    }
    return list.npos;
}

}  // namespace

std::string buildFileDrop(const std::vector<std::wstring>& paths, const TextCodec& codec) {
    const std::optional<std::string> narrow = listInCodePage(paths, codec);
    std::string block;
    putNumber(block, kHeaderSize);
    for (int field = 0; field < 3; ++field) putNumber(block, 0);
    putNumber(block, narrow ? 0 : 1);
    block += narrow ? *narrow : wideList(paths);
    return block;
}

std::optional<std::vector<std::wstring>> readFileDrop(std::string_view block, const TextCodec& codec) {
    if (block.size() < kHeaderSize) return std::nullopt;
    const std::uint32_t offset = numberAt(block, 0);
    if (offset < kHeaderSize || offset > block.size()) return std::nullopt;
    const std::string_view list = block.substr(offset);
    const std::size_t width = numberAt(block, kWideFlagAt) != 0 ? 2 : 1;
    std::vector<std::wstring> paths;
    std::size_t begin = 0;
    // Some programs leave out the last NUL: the list then ends with the block.
    while (begin + width <= list.size()) {
        const std::size_t end = endOfName(list, begin, width);
        if (end == list.npos) return std::nullopt;
        if (end == begin) break;
        const std::string_view name = list.substr(begin, end - begin);
        paths.push_back(width == 2 ? textOfUnits(name) : codec.decode(name));
        begin = end + width;
    }
    return paths;
}

}  // namespace tovar
