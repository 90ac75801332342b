#include "recording/call_log.h"

namespace recording {

CallLog::CallLog(const char* prefix, const char* function) : file_(openFileNamedBy("TOVAREX_RECORDING_LOG", "ab")) {
    if (file_) line_ = std::string(prefix) + function;
}

CallLog::~CallLog() {
    if (!file_) return;
    line_ += '\n';
    std::fwrite(line_.data(), 1, line_.size(), file_.get());
}

CallLog& CallLog::operator<<(const char* text) {
    if (!file_) return *this;
    if (text == nullptr) {
        line_ += " null";
        return *this;
    }
    line_ += " \"";
    for (; *text != '\0'; ++text) {
        const auto byte = static_cast<unsigned char>(*text);
        if (byte < 0x20 || byte > 0x7E || byte == '"' || byte == '\\') {
            constexpr char kDigits[] = "0123456789ABCDEF";
            line_ += {'\\', 'x', kDigits[byte >> 4], kDigits[byte & 0x0F]};
        } else {
            line_ += *text;
        }
    }
    line_ += '"';
    return *this;
}

CallLog& CallLog::operator<<(const void* address) {
    if (!file_) return *this;
    if (address == nullptr) {
        line_ += " null";
        return *this;
    }
    char digits[2 + 2 * sizeof address + 1];
    std::snprintf(digits, sizeof digits, "0x%llx",
                  static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(address)));
    line_ += ' ';
    line_ += digits;
    return *this;
}

}  // namespace recording
