#pragma once
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "browser/archive_browser.h"
#include "front/fakes/fake_windows.h"

namespace tovar::test {

class FakeBrowsers;

/// A browser without a window. The test closes it as a user or a dying host would.
class FakeBrowser final : public ArchiveBrowser {
public:
    FakeBrowser(FakeBrowsers& owner, BrowserRequest wanted, std::function<void()> onUnloaded, WindowHandle window)
        : request(std::move(wanted)), owner_(owner), onUnloaded_(std::move(onUnloaded)), window_(window) {}
    ~FakeBrowser() override;

    const BrowserRequest request;

    [[nodiscard]] WindowHandle hWnd() const override { return window_; }
    bool FillControl(std::wstring_view folderKey) override;
    void suspendPainting(bool suspended) override;
    void showModeless() override;
    void unload() override;

    /// The window goes: by its user, its host or unload. The browser may be gone afterwards.
    void vanish();

private:
    FakeBrowsers& owner_;
    std::function<void()> onUnloaded_;
    WindowHandle window_;
};

/// Makes fake browsers with the windows 101, 102 and so on.
class FakeBrowsers final : public BrowserFactory {
public:
    FakeBrowsers(Journal& log, FakeWindowSystem& system) : journal(log), windows(system) {}

    Journal& journal;
    std::vector<FakeBrowser*> alive;
    bool fails = false;
    std::function<void(FakeBrowser&)> whileFilling, whileShowing, whileUnloading;

    std::unique_ptr<ArchiveBrowser> create(const BrowserRequest& request, std::function<void()> onUnloaded) override {
        if (fails) return nullptr;
        const WindowHandle window = windowNumber(100 + ++made_);
        windows.sizes[window] = {500, 300};
        journal.push_back(L"create " + numberText(window));
        auto browser = std::make_unique<FakeBrowser>(*this, request, std::move(onUnloaded), window);
        alive.push_back(browser.get());
        return browser;
    }

    FakeWindowSystem& windows;

private:
    std::uintptr_t made_ = 0;
};

inline FakeBrowser::~FakeBrowser() { std::erase(owner_.alive, this); }

inline bool FakeBrowser::FillControl(std::wstring_view folderKey) {
    owner_.journal.push_back(L"fill " + std::wstring(folderKey));
    request.driver->SetArcFile(request.archiveFile);
    if (owner_.whileFilling) owner_.whileFilling(*this);
    return window_ != nullptr;
}

inline void FakeBrowser::suspendPainting(bool suspended) {
    owner_.journal.push_back(suspended ? L"painting off" : L"painting on");
}

inline void FakeBrowser::showModeless() {
    owner_.journal.push_back(L"show");
    if (owner_.whileShowing) owner_.whileShowing(*this);
}

inline void FakeBrowser::vanish() {
    if (window_ == nullptr) return;
    FakeWindowSystem& windows = owner_.windows;
    const WindowHandle window = std::exchange(window_, nullptr);
    windows.enter(window);
    std::exchange(onUnloaded_, nullptr)();
    windows.leave(window);
}

inline void FakeBrowser::unload() {
    owner_.journal.push_back(L"unload " + numberText(window_));
    if (owner_.whileUnloading) owner_.whileUnloading(*this);
    vanish();
}

}  // namespace tovar::test
