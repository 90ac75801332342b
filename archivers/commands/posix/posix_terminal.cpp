#include "archivers/commands/posix/posix_terminal.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>

#include "archivers/commands/question_texts.h"
#include "archivers/commands/secret_text.h"

namespace archiver {
namespace {

/// One byte; nullopt at the end of the input.
std::optional<char> readByte(int descriptor) noexcept {
    char byte = 0;
    for (;;) {
        const ssize_t count = ::read(descriptor, &byte, 1);
        if (count == 1) return byte;
        if (count == 0 || errno != EINTR) return std::nullopt;
    }
}

/// Gives each key as it is pressed, unseen. The interrupt key is a byte like others, so that the process does not end
/// with a terminal that stays silent.
class HiddenInput {
public:
    explicit HiddenInput(int descriptor) noexcept
        : descriptor_(descriptor), changed_(::tcgetattr(descriptor, &before_) == 0) {
        if (!changed_) return;
        termios hidden = before_;
        hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO | ECHONL | ICANON | ISIG);
        hidden.c_cc[VMIN] = 1;
        hidden.c_cc[VTIME] = 0;
        changed_ = ::tcsetattr(descriptor, TCSAFLUSH, &hidden) == 0;
    }
    ~HiddenInput() {
        if (changed_) ::tcsetattr(descriptor_, TCSADRAIN, &before_);
    }
    HiddenInput(const HiddenInput&) = delete;
    HiddenInput& operator=(const HiddenInput&) = delete;
    [[nodiscard]] bool works() const noexcept { return changed_; }

private:
    int descriptor_;
    termios before_{};
    bool changed_;
};

bool continues(char byte) noexcept { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

void removeLastCharacter(std::string& utf8) noexcept {
    while (!utf8.empty() && continues(utf8.back())) utf8.pop_back();
    if (!utf8.empty()) utf8.pop_back();
}

}  // namespace

PosixTerminal::~PosixTerminal() {
    if (owned_) ::close(descriptor_);
}

std::unique_ptr<Terminal> PosixTerminal::ofProcess() {
    const int descriptor = ::open("/dev/tty", O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (descriptor >= 0) return std::make_unique<PosixTerminal>(descriptor, true);
    if (::isatty(STDIN_FILENO) == 0) return nullptr;
    return std::make_unique<PosixTerminal>(STDIN_FILENO, false);
}

void PosixTerminal::write(std::string_view utf8) {
    while (!utf8.empty()) {
        const ssize_t count = ::write(descriptor_, utf8.data(), utf8.size());
        if (count < 0 && errno != EINTR) return;
        if (count > 0) utf8.remove_prefix(static_cast<std::size_t>(count));
    }
}

std::optional<std::string> PosixTerminal::readLine() {
    constexpr std::size_t kLongest = 4096;
    std::string line;
    for (;;) {
        const std::optional<char> byte = readByte(descriptor_);
        if (!byte) return std::nullopt;
        if (*byte == '\n') return line;
        if (line.size() < kLongest) line += *byte;
    }
}

std::optional<std::string> PosixTerminal::readHidden() {
    constexpr char kInterrupt = 3, kEndOfInput = 4, kBackspace = 8, kKillLine = 21, kDelete = 127;
    constexpr std::size_t kMostBytes = kLongestPassword * 4;
    const HiddenInput hidden(descriptor_);
    if (!hidden.works()) return std::nullopt;
    std::string line;
    line.reserve(kMostBytes + kLongestPassword);  // it never moves, so no copy is left where it was
    unsigned characters = 0;
    bool taken = true;  // the character whose bytes come
    for (;;) {
        const std::optional<char> byte = readByte(descriptor_);
        if (!byte || *byte == kInterrupt || *byte == kEndOfInput) {
            wipe(line);
            return std::nullopt;
        }
        if (*byte == '\n' || *byte == '\r') return line;
        if (*byte == kBackspace || *byte == kDelete) {
            if (characters > 0) --characters;
            removeLastCharacter(line);
        } else if (*byte == kKillLine) {
            wipe(line);
            characters = 0;
        } else if (continues(*byte)) {
            if (taken && line.size() < kMostBytes) line += *byte;
        } else {
            taken = characters < kLongestPassword;
            if (taken) ++characters;
            if (taken) line += *byte;
        }
    }
}

}  // namespace archiver
