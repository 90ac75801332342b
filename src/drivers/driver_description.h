#pragma once
#include <cstdint>
#include <string_view>

#include "drivers/extract_lines.h"

namespace tovar {

/// What the contents list shows of a kind beside Name, Original, File Type and Modified.
struct ContentsColumns {
    bool attributes = true;
    bool packed = true;
    bool ratio = true;
    bool type = true;
    bool crc = true;
    std::wstring_view crcHeader = L"CRC";
    std::uint8_t crcDigits = 8;  ///< hexadecimal digits of a whole checksum
};

/// What sets one driver apart from the others: everything that is known of its archiver library beforehand.
struct DriverDescription {
    std::wstring_view library;       ///< file name, such as "UnZip32.dll"
    std::string_view prefix;         ///< of the exported functions, such as "UnZip"
    std::wstring_view messageTitle;  ///< of message boxes, such as "ZIP Message"
    std::uint16_t minimumVersion = 0;
    bool hasCursorMode = true;
    bool hasCommandLine = true;  ///< false: the driver tells of failures itself, in boxes of its own
    bool changeable = false;     ///< members can be added to and deleted from archives of the kind
    ContentsColumns columns{};
    ExtractWords extract{};
};

}  // namespace tovar
