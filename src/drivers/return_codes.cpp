#include "drivers/return_codes.h"

#include <string_view>

namespace tovar {
namespace {

struct Message {
    std::int32_t code;
    std::wstring_view text;
};

constexpr Message kMessages[] = {
    {0, L""},
    {0x8005, L"Not enough disk space to extract file"},
    {0x8006, L"Directory to extract file is read-only"},
    {0x8007, L"Skipped extraction by user request"},
    {0x800C, L"Archive file CRC error"},
    {0x800D, L"Can not open file to extraction"},
    {0x800E, L"More recent file already exists"},
    {0x800F, L"File not found at extraction directory"},
    {0x8012, L"Can not make directory"},
    {0x8013, L"Write error detected when extracting files"},
    {0x8014, L"Broken Huffman code in archive file"},
    {0x8015, L"Broken comment header in archive file"},
    {0x8016, L"CRC error in archive file"},
    {0x8017, L"Broken header in archive file"},
    {0x8018, L"Can not open archive file"},
    {0x8019, L"Archive file not in LZH format"},
    {0x801A, L"Error reading archive file"},
    {0x801B, L"File not in LZH format"},
    {0x801C, L"Illegal command"},
    {0x801D, L"Unable to allocate work heap memory"},
    {0x801E, L"Unable to allocate global memory"},
    {0x801F, L"DLL already running"},
    {0x8020, L"User cancel detected while extracting"},
    {0x8021, L"FindFirst() called before archive\r\nfile handle assigned by OpenArchive()"},
    {0x8022, L"FindNext() called before FindFirst().\r\nOr GetFileName() function called before\r\nthese functions."},
    {0x8023, L"Unsupported function called"},
    {0x8024, L"Illegal date or time format"},
    {0x8025, L"Unable to open temporary file"},
    {0x8026, L"Directory path too long"},
    {0x8027, L"Archive file is read only"},
    {0x8028, L"File already exists in the archive file"},
    {0x8029, L"Can not find LZH file in the specified directory"},
    {0x802A, L"Error reading batch file"},
    {0x802B, L"File name required"},
    // Filed under the 16-bit reading of 0x802C on purpose: a library's positive 0x802C has no message of its own.
    {-32724, L"Can not write back to temporary archive file"},
};

std::wstring hexadecimal(std::uint32_t number) {
    std::wstring digits;
    do {
        digits.insert(digits.begin(), L"0123456789ABCDEF"[number & 0x0F]);
        number >>= 4;
    } while (number != 0);
    return digits;
}

}  // namespace

std::wstring returnCodeMessage(std::int32_t code) {
    for (const Message& message : kMessages) {
        if (message.code == code) {
            return std::wstring(message.text);
        }
    }
    return L"Unknown return code 'H" + hexadecimal(static_cast<std::uint32_t>(code)) + L"'\r\nMaybe nothing to do.";
}

std::wstring notOpenedText(std::wstring_view fileName) {
    return L"Can not open '" + std::wstring(fileName) + L"' (corrupted archive) !";
}

}  // namespace tovar
