#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "create/zip_command.h"
#include "create/zip_engine.h"
#include "create/zip_log.h"
#include "create/zip_messages.h"
#include "create/zip_work.h"

namespace tovar {

/// The state of one run, and what its callbacks do: they feed the progress dialog, the counts and the log, and ask for
/// comment and password. Both are asked for once, however many calls of the library a run takes. The password is
/// overwritten in memory when the job goes.
class ZipJob final : public ZipEvents {
public:
    /// All of it outlives the job, but for the texts.
    struct Setting {
        const ZipPorts& ports;
        WindowHandle owner;
        const ZipCommand& command;
        std::wstring base;  ///< with a separator at its end
        const TextCodec& codec;
        ArcProgress& progress;
    };

    explicit ZipJob(Setting setting) : setting_(std::move(setting)) {}
    ~ZipJob() override;
    ZipJob(const ZipJob&) = delete;
    ZipJob& operator=(const ZipJob&) = delete;

    void begin(const ZipWork& work);
    /// A call of the library has succeeded: what was answered in it holds for the next one.
    void onCallDone();

    /// Adds the sums, or an error's text, to the log.
    void finish();
    void fail(std::wstring_view text);

    [[nodiscard]] bool cancelled() const { return setting_.progress.Canceled(); }
    [[nodiscard]] const ZipCounts& counts() const noexcept { return counts_; }
    [[nodiscard]] std::wstring log() const { return log_.text(); }

    // ZipEvents
    void message(std::string_view text) override;
    [[nodiscard]] bool comment(std::span<char> buffer) override;
    [[nodiscard]] bool password(std::span<char> buffer, std::string_view prompt, std::string_view name) override;
    [[nodiscard]] bool service(std::string_view name, std::uint32_t size) override;

private:
    void onLine(std::wstring_view line, bool complete);
    void onEntry(const ZipMessage& message);
    void advance(std::uint64_t bytes);
    void showBar();
    void finishEntry();
    [[nodiscard]] std::optional<std::uint64_t> sizeOf(const std::wstring& entry) const;
    [[nodiscard]] bool give(std::wstring_view answer, std::span<char> buffer, std::wstring_view refusal) const;
    /// Whether the bar follows the messages: the service callback does not tell of files then.
    [[nodiscard]] bool followsMessages() const noexcept {
        return setting_.command.action == ZipAction::Delete || setting_.command.verbose;
    }

    Setting setting_;
    std::uint64_t totalBytes_ = 0, doneBytes_ = 0;
    std::uint64_t entryLeft_ = 0;  ///< bytes of the entry that is being packed, while the messages are followed
    ZipCounts counts_;
    ZipLog log_;
    std::optional<std::wstring> comment_;
    bool commentAsked_ = false;
    std::wstring password_;
    bool passwordKnown_ = false;
};

}  // namespace tovar
