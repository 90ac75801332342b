#include "shell/win32/form_anchors.h"

#include <algorithm>
#include <vector>

#include "shell/win32/child_control.h"

namespace tovar {
namespace {

/// One direction of a control: it keeps its place, moves or grows.
void follow(LONG& begin, LONG& end, LONG growth, bool keepsBegin, bool keepsEnd) {
    if (!keepsEnd) return;
    end += growth;
    if (!keepsBegin) begin += growth;
}

}  // namespace

void FormAnchors::begin(HWND form, const std::vector<Anchor>& anchors) {
    RECT client{}, window{};
    ::GetClientRect(form, &client);
    ::GetWindowRect(form, &window);
    client_ = {client.right, client.bottom};
    window_ = {window.right - window.left, window.bottom - window.top};
    controls_.clear();
    for (const Anchor& anchor : anchors) {
        const HWND control = ::GetDlgItem(form, anchor.id);
        RECT place{};
        if (control == nullptr || !::GetWindowRect(control, &place)) continue;
        ::MapWindowPoints(nullptr, form, reinterpret_cast<POINT*>(&place), 2);
        controls_.push_back({control, anchor.edges, place});
    }
    form_ = form;
}

void FormAnchors::layOut() const {
    RECT client{};
    if (form_ == nullptr || !::GetClientRect(form_, &client)) return;
    const LONG wider = std::max<LONG>(client.right - client_.cx, 0);
    const LONG higher = std::max<LONG>(client.bottom - client_.cy, 0);
    std::vector<ControlPlace> places;
    for (const Control& control : controls_) {
        RECT place = control.place;
        follow(place.left, place.right, wider, (control.edges & kLeft) != 0, (control.edges & kRight) != 0);
        follow(place.top, place.bottom, higher, (control.edges & kTop) != 0, (control.edges & kBottom) != 0);
        places.push_back({control.window, static_cast<int>(place.left), static_cast<int>(place.top),
                          static_cast<int>(place.right - place.left), static_cast<int>(place.bottom - place.top)});
    }
    placeControls(places, SWP_NOCOPYBITS);
}

void FormAnchors::limit(MINMAXINFO& limits) const {
    if (form_ != nullptr) limits.ptMinTrackSize = {window_.cx, window_.cy};
}

std::optional<INT_PTR> FormAnchors::onMessage(UINT message, LPARAM lParam) const {
    switch (message) {
        case WM_SIZE:
            layOut();
            return TRUE;
        case WM_GETMINMAXINFO:
            limit(*reinterpret_cast<MINMAXINFO*>(lParam));
            return TRUE;
        default:
            return std::nullopt;
    }
}

}  // namespace tovar
