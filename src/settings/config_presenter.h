#pragma once
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "settings/archiver_inventory.h"
#include "settings/settings_store.h"

namespace tovar {

/// A check box of the configuration dialog.
struct ArchiverBox {
    ArchiveKind use;
    std::wstring_view word;  ///< what its caption begins with
};

/// The boxes in their order: first `chkPacker`, then `chkUnPacker`.
inline constexpr std::array<ArchiverBox, 10> kArchiverBoxes = {{{kind::kCreateZip, L"ZIP"},
                                                                {kind::kCreateLzh, L"LHA"},
                                                                {kind::kCreateCab, L"CAB"},
                                                                {kind::kZip, L"ZIP"},
                                                                {kind::kRar, L"RAR"},
                                                                {kind::kArj, L"ARJ"},
                                                                {kind::kLzh, L"LHA"},
                                                                {kind::kCab, L"CAB"},
                                                                {kind::kTar, L"TAR"},
                                                                {kind::kAce, L"ACE"}}};
inline constexpr std::size_t kPackerBoxes = 3;  ///< how many of them are `chkPacker`

/// What the dialog says of a library on demand.
struct LibraryDetails {
    std::wstring library;  ///< file name
    std::wstring version;  ///< or why there is none
    std::wstring path;     ///< empty where it is not installed
    friend bool operator==(const LibraryDetails&, const LibraryDetails&) = default;
};

/// The configuration dialog as its presenter sees it. Boxes are numbered as in kArchiverBoxes.
class ConfigView {
public:
    virtual ~ConfigView() = default;
    virtual void showBox(std::size_t box, const std::wstring& caption, bool enabled, bool checked) = 0;
    /// @return 0 unchecked, 1 checked, 2 grayed
    [[nodiscard]] virtual int boxValue(std::size_t box) const = 0;
    virtual void showDetails(const std::vector<LibraryDetails>& libraries) = 0;
    virtual void hideDetails() = 0;
    virtual void close() = 0;
};

/// The configuration dialog: which archiver libraries may be used for creating archives, and which for opening them.
class ConfigPresenter {
public:
    /// All outlive the presenter.
    ConfigPresenter(ConfigView& view, SettingsStore& settings, ArchiverInventory& inventory)
        : view_(view), settings_(settings), inventory_(inventory) {}

    void onLoad();
    void onOk();
    void onCancel();
    /// Shows where the libraries lie, or hides it again.
    void onDetails();
    /// The window is gone: without an answer that was Cancel.
    void onGone();

    /// @return where a box's library lies, or why it cannot be chosen
    [[nodiscard]] std::wstring hintOf(std::size_t box) const;

private:
    ArchiveKind recomputeEffective();
    void discard();
    [[nodiscard]] LibraryDetails detailsOf(ArchiveKind use) const;

    ConfigView& view_;
    SettingsStore& settings_;
    ArchiverInventory& inventory_;
    bool answered_ = false, details_ = false;
};

}  // namespace tovar
