#pragma once
#include <windows.h>

#include <ole2.h>

#include <string>
#include <vector>

#include "win32/create/file_list_block.h"

namespace tovar::test {

/// Data in one format, held by this program. Lives longer than whoever takes it.
class OneFormat final : public IDataObject {
public:
    OneFormat(CLIPFORMAT format, std::string bytes) : format_(format), bytes_(std::move(bytes)) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        const bool known = id == IID_IUnknown || id == IID_IDataObject;
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    HRESULT STDMETHODCALLTYPE GetData(FORMATETC* format, STGMEDIUM* medium) override {
        if (QueryGetData(format) != S_OK) return DV_E_FORMATETC;
        *medium = {};
        medium->tymed = TYMED_HGLOBAL;
        medium->hGlobal = globalOf(bytes_);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* format) override {
        return format->cfFormat == format_ && (format->tymed & TYMED_HGLOBAL) != 0 ? S_OK : DV_E_FORMATETC;
    }
    HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC*, FORMATETC*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD, IEnumFORMATETC**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DUnadvise(DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA**) override { return E_NOTIMPL; }

private:
    CLIPFORMAT format_;
    std::string bytes_;
};

/// What came of a drag.
struct Dragged {
    HRESULT result = E_FAIL;  ///< DRAGDROP_S_DROP when something was dropped
    DWORD effect = 0;
};

/// Drags data with the mouse, from a small window of this thread to a place on the screen, and lets it go there. OLE
/// is initialised.
class MouseDrag final : public IDropSource {
public:
    static Dragged run(IDataObject& data, DWORD allowed, POINT to) {
        MouseDrag drag(to);
        current_ = &drag;
        Dragged dragged;
        if (drag.press()) {
            const UINT_PTR timer = ::SetTimer(nullptr, 0, kInterval, &onTimer);
            dragged.result = ::DoDragDrop(&data, &drag, allowed, &dragged.effect);
            ::KillTimer(nullptr, timer);
        }
        current_ = nullptr;
        return dragged;
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        const bool known = id == IID_IUnknown || id == IID_IDropSource;
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE QueryContinueDrag(BOOL escape, DWORD keys) override {
        if (escape) return DRAGDROP_S_CANCEL;
        return (keys & MK_LBUTTON) == 0 ? DRAGDROP_S_DROP : S_OK;
    }
    HRESULT STDMETHODCALLTYPE GiveFeedback(DWORD) override { return DRAGDROP_S_USEDEFAULTCURSORS; }

private:
    static constexpr UINT kInterval = 20;  // milliseconds
    static constexpr int kSteps = 4;       // on the way
    static constexpr int kWaitsForPress = 25;
    static constexpr int kMostWaits = 500;  // intervals until a press has arrived
    static constexpr POINT kFrom{1000, 4};  // in the corner of the screen, where no other window is

    explicit MouseDrag(POINT to)
        : to_(to),
          window_(::CreateWindowExW(WS_EX_TOPMOST | WS_EX_NOACTIVATE, L"STATIC", L"", WS_POPUP | WS_VISIBLE | SS_NOTIFY,
                                    kFrom.x - 4, kFrom.y - 4, 16, 16, nullptr, nullptr, nullptr, nullptr)) {}
    ~MouseDrag() { ::DestroyWindow(window_); }

    /// Presses the button on the window, once the pointer is seen there, and waits until it has heard of that. A press
    /// that activates a window may be lost, and is made again.
    bool press() {
        const auto isMove = [](UINT message) { return message == WM_MOUSEMOVE; };
        const auto isPress = [](UINT message) { return message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK; };
        const bool pressed = waitFor(isMove, [](int wait) { ::SetCursorPos(kFrom.x + wait % 2, kFrom.y); }) &&
                             waitFor(isPress, [](int wait) {
                                 if (wait % kWaitsForPress != 0) return;
                                 if (wait != 0) ::mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
                                 ::SetCursorPos(kFrom.x, kFrom.y);
                                 ::mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
                             });
        if (!pressed) ::mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
        return pressed;
    }
    template <class IsWanted, class Act>
    bool waitFor(const IsWanted& isWanted, const Act& act) {
        for (int wait = 0; wait < kMostWaits; ++wait) {
            act(wait);
            ::MsgWaitForMultipleObjects(0, nullptr, FALSE, kInterval, QS_ALLINPUT);
            MSG message{};
            while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
                if (message.hwnd == window_ && isWanted(message.message)) return true;
                ::DispatchMessageW(&message);
            }
        }
        return false;
    }
    // Messages of the mouse come before those of timers: each step has been heard of when the next one is made.
    static void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD) {
        if (current_ == nullptr) return;
        MouseDrag& drag = *current_;
        if (drag.step_ == kSteps) {
            ::mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
        } else {
            const int left = kSteps - ++drag.step_;
            ::SetCursorPos(drag.to_.x + 3 * left, drag.to_.y + 3 * left);
        }
    }

    static inline MouseDrag* current_ = nullptr;
    POINT to_;
    HWND window_;
    int step_ = 0;
};

}  // namespace tovar::test
