#pragma once
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "front/fakes/journal.h"
#include "front/place_in_host.h"
#include "front/ports.h"

namespace tovar::test {

/// A window handle of a test: a small number.
inline WindowHandle windowNumber(std::uintptr_t number) { return reinterpret_cast<WindowHandle>(number); }
inline std::wstring numberText(WindowHandle window) {
    return std::to_wstring(reinterpret_cast<std::uintptr_t>(window));
}

/// Windows by their sizes; what changes one is journalled.
class FakeWindowSystem final : public WindowSystem {
public:
    explicit FakeWindowSystem(Journal& journal) : journal_(journal) {}

    std::map<WindowHandle, PixelSize> sizes;
    bool refusesParents = false;
    bool refusesWatches = false;

    [[nodiscard]] bool isWindow(WindowHandle window) const override { return sizes.contains(window); }
    [[nodiscard]] PixelSize sizeOf(WindowHandle window) const override { return sizes.at(window); }
    bool setParent(WindowHandle window, WindowHandle parent) override {
        if (refusesParents) return false;
        journal_.push_back(L"parent of " + numberText(window) + L" is " + numberText(parent));
        return true;
    }
    [[nodiscard]] std::unique_ptr<WindowWatch> watch(WindowHandle window) override {
        return refusesWatches ? nullptr : std::make_unique<Watch>(*this, window);
    }

    /// A message of a window begins and ends.
    void enter(WindowHandle window) { ++running_[window]; }
    void leave(WindowHandle window) {
        if (--running_[window] != 0) return;
        const auto action = std::exchange(waiting_[window], nullptr);
        if (action) action();
    }

    void move(WindowHandle window, PixelPlace place, PixelSize size) override {
        sizes.at(window) = size;
        journal_.push_back(L"move " + numberText(window) + L" to " + std::to_wstring(place.left) + L"," +
                           std::to_wstring(place.top) + L" size " + std::to_wstring(size.width) + L"x" +
                           std::to_wstring(size.height));
    }

private:
    class Watch final : public WindowWatch {
    public:
        Watch(FakeWindowSystem& owner, WindowHandle window) : owner_(owner), window_(window) {}
        void whenIdle(std::function<void()> action) override {
            if (owner_.running_[window_] == 0) {
                action();
            } else {
                owner_.waiting_[window_] = std::move(action);
            }
        }

    private:
        FakeWindowSystem& owner_;
        WindowHandle window_;
    };

    Journal& journal_;
    std::map<WindowHandle, int> running_;
    std::map<WindowHandle, std::function<void()>> waiting_;
};

/// A host's window object whose properties say what the test wants.
class FakeHost final : public HostWindow {
public:
    WindowHandle window = nullptr;
    std::optional<double> width, height;

    [[nodiscard]] WindowHandle hWnd() override { return window; }
    [[nodiscard]] std::optional<double> Width() override { return width; }
    [[nodiscard]] std::optional<double> Height() override { return height; }
};

class FakePointer final : public MousePointer {
public:
    explicit FakePointer(Journal& journal) : journal_(journal) {}
    void show(PointerShape shape) override {
        journal_.push_back(L"pointer " + std::to_wstring(static_cast<int>(shape)));
    }

private:
    Journal& journal_;
};

class FakePump final : public MessagePump {
public:
    explicit FakePump(Journal& journal) : journal_(journal) {}

    std::function<void()> whilePending;

    void processPending() override {
        journal_.push_back(L"messages");
        if (whilePending) whilePending();
    }

private:
    Journal& journal_;
};

}  // namespace tovar::test
