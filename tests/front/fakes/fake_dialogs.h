#pragma once
#include <functional>
#include <memory>
#include <string>

#include "front/fakes/fake_windows.h"
#include "front/fakes/journal.h"
#include "front/ports.h"

namespace tovar::test {

/// The windows for creating archives; what is shown is journalled.
class FakeCreationWindows final : public CreationWindows {
public:
    FakeCreationWindows(Journal& log, FakeWindowSystem& system) : journal_(log), windows_(system) {}

    bool hasProgress = true;
    WindowHandle owner = nullptr;
    int closed = 0, broughtToFront = 0;
    std::function<void()> whileShown;

    std::unique_ptr<ProgressWindow> createProgress() override {
        if (!hasProgress) return nullptr;
        journal_.push_back(L"create progress");
        windows_.sizes[windowNumber(50)] = {400, 100};
        return std::make_unique<Progress>(journal_);
    }
    void preparePackDialog(int argument, WindowHandle window) override {
        journal_.push_back(L"prepare " + std::to_wstring(argument));
        owner = window;
    }
    void close() noexcept override { ++closed; }
    void bringToFront() noexcept override { ++broughtToFront; }
    void showPackDialog() override {
        journal_.push_back(L"pack");
        if (whileShown) whileShown();
    }

private:
    class Progress final : public ProgressWindow {
    public:
        explicit Progress(Journal& journal) : journal_(journal) {}
        ~Progress() override { journal_.push_back(L"destroy progress"); }
        [[nodiscard]] WindowHandle hWnd() const override { return windowNumber(50); }

    private:
        Journal& journal_;
    };

    Journal& journal_;
    FakeWindowSystem& windows_;
};

/// The configuration dialog.
class FakeConfiguration final : public ConfigurationWindow {
public:
    int shown = 0, closed = 0, broughtToFront = 0;
    std::function<void()> whileShown;

    void showModal() override {
        ++shown;
        if (whileShown) whileShown();
    }
    void close() noexcept override { ++closed; }
    void bringToFront() noexcept override { ++broughtToFront; }
};

}  // namespace tovar::test
