#pragma once
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "drivers/ace_walk.h"
#include "drivers/extraction.h"
#include "drivers/member_choice.h"
#include "drivers/password_source.h"
#include "shell/file_system.h"

namespace tovar {

/// What one extraction from an ACE archive goes by.
struct AceExtractOptions {
    std::wstring_view archive;  ///< full path
    std::wstring_view folder;   ///< full path; made when it is not there
    bool keepFolders = true;
    bool keepExisting = false;
    WindowHandle owner = nullptr;
};

/// What it stands on.
struct AceExtractPorts {
    AceLibrary& library;
    FileSystem& files;
    PasswordSource& passwords;
    std::function<void(std::wstring_view)> tell;  ///< shows a warning
    const ExtractProgressSink& progress;
};

/// One extraction. The library is given the full name of each member's file, which also makes the flat form: no member
/// finds its way by its own name.
class AceExtraction {
public:
    AceExtraction(const AceExtractOptions& options, const MemberChoice& choice, const AceExtractPorts& ports);
    ~AceExtraction();
    AceExtraction(const AceExtraction&) = delete;
    AceExtraction& operator=(const AceExtraction&) = delete;

    /// Shows warnings on the way, and at the end one that names what could not be unpacked.
    ExtractResult run();

private:
    void member(AceWalk& walk);
    void failed(const AceMember& member, std::int32_t code);
    [[nodiscard]] bool makeFolders(const std::wstring& file);
    [[nodiscard]] bool makeFolder(const std::wstring& folder);
    [[nodiscard]] std::int32_t unpack(AceWalk& walk, const std::wstring& file);
    [[nodiscard]] std::int32_t unpackEncrypted(AceWalk& walk, const std::wstring& file);
    bool askPassword();
    void measure();
    bool report(ExtractProgress::State state, const AceMember& member, const std::wstring& file);

    const AceExtractOptions& options_;
    const MemberChoice& choice_;
    const AceExtractPorts& ports_;
    std::wstring folder_;      ///< with a separator at its end
    std::wstring madeFolder_;  ///< the last one that is known to be there
    std::wstring password_;
    bool noPassword_ = false;      ///< none is to be had
    bool passwordProven_ = false;  ///< a member opened with it
    bool toldMethod_ = false;
    bool cancelled_ = false;
    bool anyChosen_ = false;
    std::vector<std::wstring> failures_;  ///< names of the first ones
    std::size_t failureCount_ = 0;
    std::uint64_t total_ = 0, done_ = 0;  ///< bytes of all members, and of those that it is through with
    std::uint32_t written_ = 0;           ///< bytes of the current one
    ExtractResult result_;
};

}  // namespace tovar
