#include "host/console/progress_line.h"

#include "host/console/json_text.h"

namespace tovar::host {
namespace {

constexpr std::size_t kNameWidth = 48;  ///< with the bytes behind it, a line of 80 columns holds it
constexpr std::string_view kErase = "\r\x1B[K";

}  // namespace

void ProgressLine::show(const ExtractProgress& progress) {
    if (progress.state == ExtractProgress::State::End) return clear();
    if (progress.member.empty()) return;
    std::string amount = std::to_string(progress.written);
    if (progress.size > 0) amount += " of " + std::to_string(progress.size);
    put(progress.member, amount + " bytes");
}

void ProgressLine::showShare(const std::wstring& name, int share) { put(name, std::to_string(share) + '%'); }

void ProgressLine::put(std::wstring name, const std::string& amount) {
    if (name.size() > kNameWidth) name.replace(0, name.size() - kNameWidth + 3, L"...");
    std::string line;
    appendPrintable(line, name);
    line += "  " + amount;
    if (line == shown_) return;
    shown_ = line;
    output_.writeError(std::string(kErase) + line);
}

void ProgressLine::clear() {
    if (shown_.empty()) return;
    shown_.clear();
    output_.writeError(kErase);
}

}  // namespace tovar::host
