#include "front/win32/creation_windows.h"

#include <utility>

namespace tovar {

class HostedProgressDialogs::Prepared final : public ProgressWindow {
public:
    explicit Prepared(std::shared_ptr<fArcProgress> dialog) : dialog_(std::move(dialog)) {}
    [[nodiscard]] WindowHandle hWnd() const override { return dialog_->hWnd(); }

private:
    std::shared_ptr<fArcProgress> dialog_;
};

/// A dialog that is shown; closed with the object.
class HostedProgressDialogs::Shown final : public ArcProgress {
public:
    explicit Shown(std::shared_ptr<fArcProgress> dialog) : dialog_(std::move(dialog)) { dialog_->show(); }
    ~Shown() override { dialog_->unload(); }
    Shown(const Shown&) = delete;
    Shown& operator=(const Shown&) = delete;

    void SetCaption(std::wstring_view title) override { dialog_->SetCaption(title); }
    void Summary(std::wstring_view text) override { dialog_->Summary(text); }
    void SetPrg1(float processed, float total) override { dialog_->SetPrg1(processed, total); }
    [[nodiscard]] bool Canceled() const override { return dialog_->Canceled(); }
    void showFolder(std::wstring_view path) override { dialog_->showFolder(path); }
    void showFile(std::wstring_view name) override { dialog_->showFile(name); }

private:
    std::shared_ptr<fArcProgress> dialog_;
};

std::unique_ptr<ProgressWindow> HostedProgressDialogs::prepare() {
    auto dialog = std::make_shared<fArcProgress>(regional_);
    if (!dialog->load(nullptr, fontName_())) return nullptr;
    prepared_ = dialog;
    return std::make_unique<Prepared>(std::move(dialog));
}

std::unique_ptr<ArcProgress> HostedProgressDialogs::show(WindowHandle owner) {
    std::shared_ptr<fArcProgress> dialog = std::exchange(prepared_, {}).lock();
    if (!dialog || dialog->hWnd() == nullptr) {
        dialog = std::make_shared<fArcProgress>(regional_);
        dialog->load(static_cast<HWND>(owner), fontName_());
    }
    return std::make_unique<Shown>(std::move(dialog));
}

// The argument has had one value, ever: nothing depends on it.
void WindowsCreationWindows::preparePackDialog(int, WindowHandle owner) {
    if (dialog_) return;
    job_.emplace(PackJob{.owner = owner,
                         .effective = ports_.state.effective,
                         .archiveFile = ports_.state.archiveFile,
                         .fileList = ports_.state.fileList,
                         .baseFolder = ports_.state.archiveFolder,
                         .zip = ports_.zip,
                         .drivers = *this,
                         .workFolder = ports_.workFolder,
                         .paths = ports_.paths,
                         .files = ports_.files,
                         .system = ports_.system,
                         .messages = ports_.messages});
    dialog_ = std::make_unique<fArcPack>(*job_, ports_.state.fontName);
}

void WindowsCreationWindows::showPackDialog() {
    if (!dialog_) return;
    dialog_->ask();
    dialog_.reset();
    job_.reset();
}

void WindowsCreationWindows::close() noexcept {
    if (dialog_) dialog_->cancel();
}

void WindowsCreationWindows::bringToFront() noexcept {
    if (dialog_) dialog_->bringToFront();
}

CommonDriver& WindowsCreationWindows::lha() {
    lha_ =
        std::make_unique<cUnLHA>(ports_.libraries.getOrMissing(cUnLHA::kDescription), ports_.messages, ports_.regional);
    return *lha_;
}

CommonDriver& WindowsCreationWindows::cab() {
    cab_ =
        std::make_unique<cUnCab>(ports_.libraries.getOrMissing(cUnCab::kDescription), ports_.messages, ports_.regional);
    return *cab_;
}

}  // namespace tovar
