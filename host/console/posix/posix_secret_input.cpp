#include "host/console/posix/posix_secret_input.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>

#include "shell/secret_text.h"
#include "shell/text_codec.h"

namespace tovar::host {
namespace {

constexpr char kInterrupt = 3;
constexpr std::size_t kMostBytes = 4096;  // a terminal's line is not longer

/// While it lives nothing is seen of what is typed. The interrupt key ends the line instead of the process, which would
/// leave a terminal that stays silent.
class Silence {
public:
    explicit Silence(int descriptor) noexcept
        : descriptor_(descriptor), changed_(::tcgetattr(descriptor, &before_) == 0) {
        if (!changed_) return;
        termios silent = before_;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO | ECHONL | ISIG);
        silent.c_lflag |= ICANON;
        silent.c_cc[VEOL] = kInterrupt;
        changed_ = ::tcsetattr(descriptor, TCSAFLUSH, &silent) == 0;
    }
    ~Silence() {
        if (changed_) ::tcsetattr(descriptor_, TCSADRAIN, &before_);
    }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;
    [[nodiscard]] bool works() const noexcept { return changed_; }

private:
    int descriptor_;
    termios before_{};
    bool changed_;
};

void write(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(descriptor, text.data(), text.size());
        if (count < 0 && errno != EINTR) return;
        if (count > 0) text.remove_prefix(static_cast<std::size_t>(count));
    }
}

/// @return false at the end of the input and on an interrupt
bool readLine(int descriptor, std::string& line) {
    for (;;) {
        char byte = 0;
        const ssize_t count = ::read(descriptor, &byte, 1);
        if (count < 0 && errno == EINTR) continue;
        if (count != 1 || byte == kInterrupt) return false;
        if (byte == '\n') return true;
        if (line.size() < kMostBytes) line += byte;
    }
}

/// The controlling terminal, opened for each question.
class OwnTerminal final : public SecretInput {
public:
    std::optional<std::wstring> ask(std::string_view question) override {
        const int descriptor = ::open("/dev/tty", O_RDWR | O_NOCTTY | O_CLOEXEC);
        if (descriptor < 0) return std::nullopt;
        auto answer = PosixSecretInput(descriptor).ask(question);
        ::close(descriptor);
        return answer;
    }
};

}  // namespace

std::optional<std::wstring> PosixSecretInput::ask(std::string_view question) {
    std::string line;
    line.reserve(kMostBytes);  // it never moves, so no copy is left where it was
    const WipedAtEnd wiped(line);
    const Silence silence(descriptor_);
    if (!silence.works()) return std::nullopt;
    write(descriptor_, question);
    const bool whole = readLine(descriptor_, line);
    write(descriptor_, "\n");
    if (!whole) return std::nullopt;
    return Utf8Codec().decode(line);
}

std::unique_ptr<SecretInput> systemSecretInput() { return std::make_unique<OwnTerminal>(); }

}  // namespace tovar::host
