#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "browser/run_extract.h"
#include "browser/unpack_view.h"
#include "shell/path_operations.h"
#include "shell/work_folder.h"

namespace tovar {

/// What the extraction dialog works for and with. All of it outlives the dialog.
struct UnpackJob {
    WindowHandle owner = nullptr;  ///< of the library's windows
    ArchiveDriver& driver;
    const std::wstring& archiveFile;  ///< full path
    Extraction& extraction;
    WorkFolder& workFolder;
    PathOperations& paths;
    FileSystem& files;
    MessageBoxes& messages;
};

/// The extraction dialog: where to, which members, with or without their folders, over files that are there or not.
class UnpackPresenter {
public:
    UnpackPresenter(UnpackView& view, const UnpackJob& job) : view_(view), job_(job) {}

    // Before the dialog is shown.
    void SetFolder(std::wstring_view path) { folder_ = path; }
    /// @param list  of members, as memberListOf makes it; empty: none is selected
    void SetFiles(std::wstring_view list) { members_ = list; }

    /// @return the target folder; the one that it began with until another one is chosen
    [[nodiscard]] const std::wstring& GetFolder() const noexcept { return folder_; }

    void onLoad();
    /// @param folder  empty when what is selected is no folder of the file system
    void onFolderSelected(const std::wstring& folder);
    /// The answer to what the view was asked last, which took long.
    void onFolderAnswer(bool there);
    void onScope(MemberScope scope);
    void onPattern(std::wstring_view text) { pattern_ = text; }
    void onOverwrite(bool checked) noexcept { overwrite_ = checked; }
    void onKeepFolders(bool checked) noexcept { keepFolders_ = checked; }
    void onNewFolder();
    void onOk();
    void onCancel() { view_.close(); }

private:
    /// A folder that has to be there before anything is done with it.
    struct Wanted {
        std::wstring folder;
        bool starts = false;  ///< the extraction; otherwise it becomes the target
    };

    void ask(Wanted wanted);
    void answer(const Wanted& wanted, bool there);
    void start();
    void allowStart(bool allowed);
    [[nodiscard]] std::wstring command() const;
    void run(const std::wstring& members);
    void tell(SystemErrorCode error);

    UnpackView& view_;
    const UnpackJob& job_;
    std::wstring folder_, members_;
    std::wstring pattern_ = L"*.*";
    MemberScope scope_ = MemberScope::All;
    bool overwrite_ = false, keepFolders_ = true;
    bool ready_ = false;  ///< the target folder is there
    std::optional<Wanted> waitsFor_;
};

}  // namespace tovar
