#include <windows.h>

#include <array>

#include "host/console/terminal_passwords.h"
#include "shell/text_codec.h"

namespace tovar::host {
namespace {

struct CloseConsole {
    void operator()(HANDLE handle) const noexcept { ::CloseHandle(handle); }
};
using ConsoleHandle = std::unique_ptr<void, CloseConsole>;

ConsoleHandle openConsole(const wchar_t* name) {
    const HANDLE handle = ::CreateFileW(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                        OPEN_EXISTING, 0, nullptr);
    return ConsoleHandle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

void write(HANDLE console, const std::wstring& text) {
    DWORD written = 0;
    ::WriteConsoleW(console, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

/// The process's console, opened for each question.
class OwnConsole final : public SecretInput {
public:
    std::optional<std::wstring> ask(std::string_view question) override {
        const ConsoleHandle input = openConsole(L"CONIN$"), output = openConsole(L"CONOUT$");
        DWORD before = 0;
        if (!input || !output || !::GetConsoleMode(input.get(), &before)) return std::nullopt;
        // Without ENABLE_PROCESSED_INPUT the interrupt key is a character: it must not end the process while the
        // console is silent.
        if (!::SetConsoleMode(input.get(), ENABLE_LINE_INPUT)) return std::nullopt;
        write(output.get(), Utf8Codec().decode(question));
        std::optional<std::wstring> answer = readLine(input.get());
        ::SetConsoleMode(input.get(), before);
        write(output.get(), L"\r\n");
        return answer;
    }

private:
    static std::optional<std::wstring> readLine(HANDLE input) {
        constexpr wchar_t kInterrupt = 3;
        std::array<wchar_t, 1024> line{};
        DWORD length = 0;
        const bool read =
            ::ReadConsoleW(input, line.data(), static_cast<DWORD>(line.size()), &length, nullptr) != FALSE;
        while (length > 0 && (line[length - 1] == L'\r' || line[length - 1] == L'\n')) --length;
        std::optional<std::wstring> answer;
        if (read) answer.emplace(line.data(), length);
        ::SecureZeroMemory(line.data(), sizeof line);
        if (answer && answer->find(kInterrupt) != answer->npos) answer.reset();
        return answer;
    }
};

}  // namespace

std::unique_ptr<SecretInput> systemSecretInput() { return std::make_unique<OwnConsole>(); }

}  // namespace tovar::host
