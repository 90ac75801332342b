#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "create/pack_view.h"
#include "create/zip_engine.h"
#include "drivers/common_driver.h"
#include "settings/archive_kind.h"
#include "shell/path_operations.h"
#include "shell/work_folder.h"

namespace tovar {

/// The drivers that make archives by a command line.
class PackDrivers {
public:
    virtual ~PackDrivers() = default;
    [[nodiscard]] virtual CommonDriver& lha() = 0;
    [[nodiscard]] virtual CommonDriver& cab() = 0;
};

/// What the pack dialog works for and with. All of it outlives the dialog.
struct PackJob {
    WindowHandle owner = nullptr;  ///< of the dialog and of the libraries' windows
    ArchiveKind effective = kind::kNone;
    // What is packed; written back after a run that succeeded.
    std::wstring& archiveFile;
    std::wstring& fileList;  ///< relative to the base folder, separated by CR LF
    std::wstring& baseFolder;
    ZipEngine& zip;
    PackDrivers& drivers;
    WorkFolder& workFolder;
    PathOperations& paths;
    FileSystem& files;
    SystemPaths& system;
    MessageBoxes& messages;
};

/// The pack dialog: which archive, by which packer, and how.
class PackPresenter {
public:
    PackPresenter(PackView& view, const PackJob& job) : view_(view), job_(job) {}

    void onLoad();
    /// @param index  in the list, -1 for none
    void onPacker(int index);
    void onAction(int index) noexcept { choice_.action = index; }
    void onLevel(int index) noexcept;
    void onOption(PackOption option, bool checked) noexcept;
    void onArchive(std::wstring_view path) { archive_ = path; }
    void onBrowse();
    void onPickNames();
    /// @param indexes  in ascending order
    void onRemoveNames(const std::vector<int>& indexes);
    void onOk();
    void onCancel() { view_.close(); }

private:
    [[nodiscard]] Packer packer() const noexcept;
    [[nodiscard]] int indexOf(Packer packer) const noexcept;
    [[nodiscard]] int firstPacker() const;
    void fillLists();
    void createFolder();
    void packZip();
    void packByDriver(CommonDriver& driver, const std::wstring& switches, std::wstring_view folderSuffix,
                      std::wstring_view title);
    void writeBack();
    void tell(std::wstring_view text, std::wstring_view title);

    PackView& view_;
    const PackJob& job_;
    int zipIndex_ = -1, lhaIndex_ = -1, cabIndex_ = -1;  ///< in the list of packers; -1 = not there
    int packerIndex_ = -1;
    PackChoice choice_;
    std::wstring archive_;
    std::vector<std::wstring> names_;
    bool running_ = false;
};

}  // namespace tovar
