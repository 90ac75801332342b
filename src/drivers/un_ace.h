#pragma once
#include "drivers/ace_library.h"
#include "drivers/listed_driver.h"
#include "drivers/password_source.h"
#include "shell/file_system.h"

namespace tovar {

/// ACE, by "UnAce.dll", which has an interface of its own and no command line.
class cUnAce final : public ListedDriver {
public:
    static const DriverDescription kDescription;

    /// All arguments outlive the driver.
    cUnAce(AceLibrary& library, MessageBoxes& messages, const RegionalSettings& regional, FileSystem& files,
           PasswordSource& passwords);

    [[nodiscard]] bool CheckArchive(std::wstring_view fileName) override;
    /// Encrypted members are not tested: nobody is asked for a password.
    [[nodiscard]] bool TestArchive(std::wstring_view fileName) override;
    std::uint32_t SetArcFile(std::wstring_view fileName) override;

    /// Unpacks members; what goes wrong is told in message boxes. A file that is there is replaced.
    /// @param members      MemberChoice's words, or "@" and the path of a list file that holds them
    /// @param keepFolders  false: all members go right below the folder
    /// @return whether there were such members and all of them are unpacked
    bool ACEExtract(std::wstring_view archive, std::wstring_view outputFolder, std::wstring_view members,
                    bool keepFolders);

    /// The same with its details; folder names are kept exactly when the command is "-d".
    ExtractResult extract(const ExtractRequest& request) override;
    void setProgress(ExtractProgressSink sink) override { progress_ = std::move(sink); }
    [[nodiscard]] const TextCodec& listCodec() override { return library_.codec(); }

private:
    AceLibrary& library_;
    FileSystem& files_;
    PasswordSource& passwords_;
    ExtractProgressSink progress_;
};

}  // namespace tovar
