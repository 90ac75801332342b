#include "create/zip_results.h"

namespace tovar {

std::wstring_view zipResultText(std::int32_t code) noexcept {
    switch (code) {
        case 2:
            return L"Unexpected End Of Zip File Error";
        case 3:
            return L"Zip File Structure Error";
        case 4:
            return L"Out Of Memory Error";
        case 5:
            return L"Internal Logic Error";
        case 6:
            return L"Entry Too Large To Split Error";
        case 7:
            return L"Invalid Comment Format Error";
        case 8:
            return L"Zip Test (-T) Failed Or Out Of Memory Error";
        case 9:
            return L"User Interrupted Or Abnormal Termination";
        case 10:
            return L"Error Using A Temp File";
        case 11:
            return L"Read Or Seek Error";
        case 12:
            return L"Nothing To Do";
        case 13:
            return L"Missing Or Empty Zip File Error";
        case 14:
            return L"Error Writing To A File";
        case 15:
            return L"Could't Open To Write Error";
        case 16:
            return L"Bad Command Line Argument Error";
        case 18:
            return L"Could Not Open A Specified File To Read Error";
        default:
            return {};
    }
}

}  // namespace tovar
