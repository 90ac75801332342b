#pragma once
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>

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

    [[nodiscard]] bool isWindow(WindowHandle window) const override { return sizes.contains(window); }
    [[nodiscard]] PixelSize sizeOf(WindowHandle window) const override { return sizes.at(window); }
    bool setParent(WindowHandle window, WindowHandle parent) override {
        if (refusesParents) return false;
        journal_.push_back(L"parent of " + numberText(window) + L" is " + numberText(parent));
        return true;
    }
    void move(WindowHandle window, PixelPlace place, PixelSize size) override {
        sizes.at(window) = size;
        journal_.push_back(L"move " + numberText(window) + L" to " + std::to_wstring(place.left) + L"," +
                           std::to_wstring(place.top) + L" size " + std::to_wstring(size.width) + L"x" +
                           std::to_wstring(size.height));
    }

private:
    Journal& journal_;
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
