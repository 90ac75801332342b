#include "drivers/return_codes.h"

#include <gtest/gtest.h>

#include <string_view>

namespace tovar {
namespace {

struct CodeCase {
    std::int32_t code;
    std::wstring_view message;
};

class ReturnCodeMessage : public testing::TestWithParam<CodeCase> {};

TEST_P(ReturnCodeMessage, HasItsText) { EXPECT_EQ(returnCodeMessage(GetParam().code), GetParam().message); }

std::string codeName(const testing::TestParamInfo<CodeCase>& each) {
    const auto code = each.param.code;
    return code < 0 ? "Minus" + std::to_string(-static_cast<std::int64_t>(code)) : std::to_string(code);
}

INSTANTIATE_TEST_SUITE_P(
    Known, ReturnCodeMessage,
    testing::Values(
        CodeCase{0, L""}, CodeCase{32773, L"Not enough disk space to extract file"},
        CodeCase{32774, L"Directory to extract file is read-only"},
        CodeCase{32775, L"Skipped extraction by user request"}, CodeCase{32780, L"Archive file CRC error"},
        CodeCase{32781, L"Can not open file to extraction"}, CodeCase{32782, L"More recent file already exists"},
        CodeCase{32783, L"File not found at extraction directory"}, CodeCase{32786, L"Can not make directory"},
        CodeCase{32787, L"Write error detected when extracting files"},
        CodeCase{32788, L"Broken Huffman code in archive file"},
        CodeCase{32789, L"Broken comment header in archive file"}, CodeCase{32790, L"CRC error in archive file"},
        CodeCase{32791, L"Broken header in archive file"}, CodeCase{32792, L"Can not open archive file"},
        CodeCase{32793, L"Archive file not in LZH format"}, CodeCase{32794, L"Error reading archive file"},
        CodeCase{32795, L"File not in LZH format"}, CodeCase{32796, L"Illegal command"},
        CodeCase{32797, L"Unable to allocate work heap memory"}, CodeCase{32798, L"Unable to allocate global memory"},
        CodeCase{32799, L"DLL already running"}, CodeCase{32800, L"User cancel detected while extracting"},
        CodeCase{32801, L"FindFirst() called before archive\r\nfile handle assigned by OpenArchive()"},
        CodeCase{
            32802,
            L"FindNext() called before FindFirst().\r\nOr GetFileName() function called before\r\nthese functions."},
        CodeCase{32803, L"Unsupported function called"}, CodeCase{32804, L"Illegal date or time format"},
        CodeCase{32805, L"Unable to open temporary file"}, CodeCase{32806, L"Directory path too long"},
        CodeCase{32807, L"Archive file is read only"}, CodeCase{32808, L"File already exists in the archive file"},
        CodeCase{32809, L"Can not find LZH file in the specified directory"},
        CodeCase{32810, L"Error reading batch file"}, CodeCase{32811, L"File name required"},
        CodeCase{-32724, L"Can not write back to temporary archive file"}),
    codeName);

INSTANTIATE_TEST_SUITE_P(Unknown, ReturnCodeMessage,
                         testing::Values(CodeCase{0x8030, L"Unknown return code 'H8030'\r\nMaybe nothing to do."},
                                         CodeCase{32812, L"Unknown return code 'H802C'\r\nMaybe nothing to do."},
                                         CodeCase{0x8008, L"Unknown return code 'H8008'\r\nMaybe nothing to do."},
                                         CodeCase{0x8009, L"Unknown return code 'H8009'\r\nMaybe nothing to do."},
                                         CodeCase{0x800A, L"Unknown return code 'H800A'\r\nMaybe nothing to do."},
                                         CodeCase{0x800B, L"Unknown return code 'H800B'\r\nMaybe nothing to do."},
                                         CodeCase{0x8010, L"Unknown return code 'H8010'\r\nMaybe nothing to do."},
                                         CodeCase{0x8011, L"Unknown return code 'H8011'\r\nMaybe nothing to do."},
                                         CodeCase{1, L"Unknown return code 'H1'\r\nMaybe nothing to do."},
                                         CodeCase{-1, L"Unknown return code 'HFFFFFFFF'\r\nMaybe nothing to do."},
                                         CodeCase{-2147483647 - 1,
                                                  L"Unknown return code 'H80000000'\r\nMaybe nothing to do."}),
                         codeName);

}  // namespace
}  // namespace tovar
