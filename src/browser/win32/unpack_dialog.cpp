#include "browser/win32/unpack_dialog.h"

#include <cstdint>
#include <utility>

#include "browser/win32/unpack_dialog_controls.h"
#include "shell/prompt_new_folder.h"
#include "shell/win32/form_placement.h"
#include "shell/win32/long_paths.h"
#include "shell/win32/message_map.h"
#include "shell/win32/new_folder_dialog.h"

namespace tovar {
namespace {

constexpr std::uint32_t kFolderQuestion = 1;
constexpr UINT_PTR kAnswerTimer = 1;
constexpr UINT kBetweenLooks = 50;  // milliseconds
constexpr DWORD kPatience = 150;    // milliseconds, in which most answers come and nobody waits for the window

/// Closes what a dialog has opened over itself: another dialog, or a message box.
BOOL CALLBACK closeIfAbove(HWND window, LPARAM dialog) {
    const bool above = ::GetWindow(window, GW_OWNER) == reinterpret_cast<HWND>(dialog);
    if (above && ::IsWindowVisible(window)) ::PostMessageW(window, WM_CLOSE, 0, 0);
    return TRUE;
}

}  // namespace

void fArcUnPack::SetFolder(std::wstring_view path) {
    presenter_.SetFolder(path);
    if (hwnd() != nullptr) showInTree(std::wstring(path));
}

void fArcUnPack::ask() { showModal(static_cast<HWND>(job_.owner), IDD_ARC_UNPACK, fontName_); }

void fArcUnPack::cancel() noexcept {
    if (hwnd() == nullptr) return;
    ::EnumThreadWindows(::GetCurrentThreadId(), &closeIfAbove, reinterpret_cast<LPARAM>(hwnd()));
    ::EndDialog(hwnd(), IDCANCEL);
}

void fArcUnPack::onLoad() {
    tree_.createInstead(hwnd(), IDC_WEN_FOLDER_TREE_VIEW1, [this] { onTree(); });
    anchors_.begin(hwnd(), {{IDC_LBL_FOLDER, kLeft | kRight},
                            {IDC_WEN_FOLDER_TREE_VIEW1, kLeft | kTop | kRight | kBottom},
                            {IDC_CMD_NEW_FOLDER, kLeft | kBottom},
                            {IDOK, kRight | kBottom},
                            {IDCANCEL, kRight | kBottom},
                            {IDC_GRP_FILES, kRight},
                            {IDC_OPT_EXTRACT, kRight},
                            {IDC_OPT_EXTRACT_ALL, kRight},
                            {IDC_OPT_EXTRACT_MATCHING, kRight},
                            {IDC_LBL_PATTERN, kRight},
                            {IDC_TXT_EXTENSION, kRight},
                            {IDC_GRP_OPTIONS, kRight},
                            {IDC_CHK_OPT, kRight},
                            {IDC_CHK_OPT_KEEP_FOLDERS, kRight}});
    CenterDialog(hwnd(), ::GetAncestor(static_cast<HWND>(job_.owner), GA_ROOT));
    keepOnScreen(hwnd());
    presenter_.onLoad();
}

bool fArcUnPack::onCommand(WPARAM wParam) {
    static constexpr CommandRoute<fArcUnPack> routes[] = {
        {IDOK, BN_CLICKED, &fArcUnPack::onOk},
        {IDCANCEL, BN_CLICKED, &fArcUnPack::onCancel},
        {IDC_CMD_NEW_FOLDER, BN_CLICKED, &fArcUnPack::onNewFolder},
        {IDC_OPT_EXTRACT, BN_CLICKED, &fArcUnPack::onSelected},
        {IDC_OPT_EXTRACT_ALL, BN_CLICKED, &fArcUnPack::onAll},
        {IDC_OPT_EXTRACT_MATCHING, BN_CLICKED, &fArcUnPack::onMatching},
        {IDC_TXT_EXTENSION, EN_CHANGE, &fArcUnPack::onPattern},
        {IDC_CHK_OPT, BN_CLICKED, &fArcUnPack::onOverwrite},
        {IDC_CHK_OPT_KEEP_FOLDERS, BN_CLICKED, &fArcUnPack::onKeepFolders},
    };
    return dispatchCommand(*this, routes, wParam);
}

std::optional<INT_PTR> fArcUnPack::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_TIMER && wParam == kAnswerTimer) {
        onTimer();
        return TRUE;
    }
    return anchors_.onMessage(message, lParam);
}

// A folder of a computer that has not answered yet is none to begin with, and to ask for it here would take long.
void fArcUnPack::onTree() {
    const bool there = tree_.State() == FolderState::There;
    presenter_.onFolderSelected(there ? tree_.SelectedFolder().value_or(std::wstring()) : std::wstring());
}

void fArcUnPack::onPattern() { presenter_.onPattern(textOf(control(IDC_TXT_EXTENSION))); }

bool fArcUnPack::isChecked(int option) const {
    return ::IsDlgButtonChecked(hwnd(), IDC_CHK_OPT + option) == BST_CHECKED;
}

void fArcUnPack::setCaption(std::wstring_view caption) { ::SetWindowTextW(hwnd(), std::wstring(caption).c_str()); }

void fArcUnPack::check(bool overwrite, bool keepFolders) {
    ::CheckDlgButton(hwnd(), IDC_CHK_OPT, overwrite ? BST_CHECKED : BST_UNCHECKED);
    ::CheckDlgButton(hwnd(), IDC_CHK_OPT_KEEP_FOLDERS, keepFolders ? BST_CHECKED : BST_UNCHECKED);
}

void fArcUnPack::enableOverwrite(bool enabled) { enable(IDC_CHK_OPT, enabled); }

void fArcUnPack::choose(MemberScope scope) {
    ::CheckRadioButton(hwnd(), IDC_OPT_EXTRACT, IDC_OPT_EXTRACT_MATCHING, IDC_OPT_EXTRACT + static_cast<int>(scope));
}

void fArcUnPack::enableSelected(bool enabled) { enable(IDC_OPT_EXTRACT, enabled); }

void fArcUnPack::setPattern(std::wstring_view pattern) {
    ::SetWindowTextW(control(IDC_TXT_EXTENSION), std::wstring(pattern).c_str());
}

void fArcUnPack::enablePattern(bool enabled) {
    enable(IDC_LBL_PATTERN, enabled);
    enable(IDC_TXT_EXTENSION, enabled);
}

void fArcUnPack::showInTree(const std::wstring& folder) { tree_.SelectFolder(folder); }

void fArcUnPack::showFolder(std::wstring_view folder) {
    ::SetWindowTextW(control(IDC_LBL_FOLDER), std::wstring(folder).c_str());
}

void fArcUnPack::enableOk(bool enabled) { enable(IDOK, enabled); }

void fArcUnPack::enableNewFolder(bool enabled) { enable(IDC_CMD_NEW_FOLDER, enabled); }

std::optional<bool> fArcUnPack::askForFolder(const std::wstring& folder) {
    if (!isSlowPlace(folder)) return job_.paths.IsFolder(folder);
    const auto question = [&paths = job_.paths, folder] { return paths.IsFolder(folder); };
    const std::optional<bool> there = lateAnswers_.ask(kFolderQuestion, question, kPatience);
    if (!there) ::SetTimer(hwnd(), kAnswerTimer, kBetweenLooks, nullptr);
    return there;
}

void fArcUnPack::onTimer() {
    const auto answers = lateAnswers_.takeAnswers();
    // Before the answer is told: a whole extraction may follow from it.
    if (!lateAnswers_.isOpen(kFolderQuestion)) ::KillTimer(hwnd(), kAnswerTimer);
    for (const auto& [question, there] : answers) presenter_.onFolderAnswer(there);
}

std::wstring fArcUnPack::promptNewFolder(std::wstring& parent) {
    fNewFolder dialog(hwnd(), fontName_);
    return PromptNewFolder(parent, dialog, job_.paths);
}

// The library's windows belong to the owner's: that one has to be able to take the focus, or another program gets it.
void fArcUnPack::hide() {
    ::EnableWindow(::GetAncestor(static_cast<HWND>(job_.owner), GA_ROOT), TRUE);
    ::ShowWindow(hwnd(), SW_HIDE);
}

void fArcUnPack::close() {
    if (hwnd() != nullptr) ::EndDialog(hwnd(), IDOK);
}

void fArcUnPack::enable(int id, bool enabled) {
    const HWND window = control(id);
    // The keyboard would be lost with a control that can no longer take it.
    if (!enabled && window != nullptr && ::GetFocus() == window) ::SendMessageW(hwnd(), WM_NEXTDLGCTL, 0, FALSE);
    ::EnableWindow(window, enabled ? TRUE : FALSE);
}

std::wstring WindowsUnpackDialogs::show(const UnpackJob& job, const std::wstring& folder, const std::wstring& files,
                                        const std::wstring& fontName) {
    fArcUnPack dialog(job, fontName);
    dialog.SetFolder(folder);
    dialog.SetFiles(files);
    fArcUnPack* const outer = std::exchange(shown_, &dialog);
    dialog.ask();
    shown_ = outer;
    return dialog.GetFolder();
}

void WindowsUnpackDialogs::closeAll() noexcept {
    if (shown_ != nullptr) shown_->cancel();
}

}  // namespace tovar
