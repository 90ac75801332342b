#pragma once
#include <string>
#include <string_view>

namespace tovar {

class NewFolderView {
public:
    virtual ~NewFolderView() = default;
    virtual void setName(std::wstring_view name) = 0;
    virtual void enableOk(bool enabled) = 0;
    /// Puts the focus into the text box.
    virtual void focusName() = 0;
    /// A message box with the exclamation icon, the buttons OK and Cancel, and the component's name as its title.
    virtual void warn(std::wstring_view text) = 0;
    virtual void close() = 0;
};

/// The rules of the dialog that asks for the name of a new folder. It makes no folder.
class NewFolderPresenter {
public:
    /// The view must outlive the object.
    explicit NewFolderPresenter(NewFolderView& view) : view_(view) {}

    void onLoad();
    void onActivated() { view_.focusName(); }
    void onNameChanged(std::wstring_view name);
    /// Enter in the text box.
    void onEnter();
    void onOk();
    void onCancel();

    /// @return the name that was accepted; empty when the dialog was cancelled
    [[nodiscard]] const std::wstring& NewFolder() const noexcept { return newFolder_; }

private:
    NewFolderView& view_;
    std::wstring name_, newFolder_;
};

}  // namespace tovar
