#pragma once
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "shell/arc_progress.h"

namespace tovar::test {

/// Remembers what a user would see of progress dialogs, as lines such as "caption Extracting...".
class FakeProgressDialogs final : public ProgressDialogs {
public:
    std::vector<std::wstring> seen;
    std::vector<WindowHandle> owners;
    int open = 0;           ///< dialogs that are shown now
    bool canceled = false;  ///< the user has pressed Cancel
    std::function<void()> whilePending;

    [[nodiscard]] std::unique_ptr<ArcProgress> show(WindowHandle owner) override {
        owners.push_back(owner);
        return std::make_unique<Dialog>(*this);
    }

private:
    class Dialog final : public ArcProgress {
    public:
        explicit Dialog(FakeProgressDialogs& all) : all_(all) { ++all_.open; }
        ~Dialog() override { --all_.open; }
        void SetCaption(std::wstring_view title) override { note(L"caption ", title); }
        void Summary(std::wstring_view text) override { note(L"summary ", text); }
        void SetPrg1(float processed, float total) override {
            note(L"bytes ", std::to_wstring(static_cast<long long>(processed)) + L" of " +
                                std::to_wstring(static_cast<long long>(total)));
            if (all_.whilePending) all_.whilePending();
        }
        [[nodiscard]] bool Canceled() const override { return all_.canceled; }
        void showFolder(std::wstring_view path) override { note(L"folder ", path); }
        void showFile(std::wstring_view name) override { note(L"file ", name); }

    private:
        void note(std::wstring_view what, std::wstring_view text) {
            all_.seen.push_back(std::wstring(what).append(text));
        }

        FakeProgressDialogs& all_;
    };
};

}  // namespace tovar::test
