#include "shell/confirmation.h"

namespace tovar {
namespace {

constexpr std::wstring_view kLineEnd = L"\r\n";
constexpr std::wstring_view kOverwrites = L"If files already exist, they will be overwritten.";

}  // namespace

std::wstring Confirmation::message() const {
    std::wstring text = question;
    text.append(gap).append(list);
    if (!note.empty()) text.append(kLineEnd).append(note);
    return text;
}

Confirmation confirmExtraction(std::wstring_view list) {
    Confirmation confirmation;
    confirmation.question = L"Extract following files and folders ?";
    confirmation.gap = kLineEnd;
    confirmation.list = list;
    confirmation.note = kOverwrites;
    confirmation.progress = L"Extracting...";
    return confirmation;
}

Confirmation confirmDeletion(std::wstring_view list) {
    Confirmation confirmation;
    confirmation.question = L"Delete the following files/folders ? ";
    confirmation.gap.append(kLineEnd).append(kLineEnd);
    confirmation.list = list;
    confirmation.progress = L"Deleting...";
    return confirmation;
}

Confirmation confirmCompression(std::size_t count) {
    Confirmation confirmation;
    confirmation.question = L"Compress " + std::to_wstring(count) + L" files and folders ?";
    confirmation.note = kOverwrites;
    confirmation.progress = L"Compressing...";
    return confirmation;
}

}  // namespace tovar
