#pragma once
#include <windows.h>

#include <optional>
#include <vector>

namespace tovar {

/// The edges of a form that a control keeps its distance to. With both of a direction it grows.
enum FormEdges : unsigned { kLeft = 1, kTop = 2, kRight = 4, kBottom = 8 };

/// Lets the controls of a form follow its size.
class FormAnchors {
public:
    struct Anchor {
        int id;
        unsigned edges;  ///< of FormEdges
    };

    /// Takes the form as it is now for the smallest that it may become. Controls that are not named stay where they
    /// are.
    void begin(HWND form, const std::vector<Anchor>& anchors);

    /// For WM_SIZE.
    void layOut() const;
    /// For WM_GETMINMAXINFO.
    void limit(MINMAXINFO& limits) const;
    /// Both, for a dialog's message; what it answers.
    [[nodiscard]] std::optional<INT_PTR> onMessage(UINT message, LPARAM lParam) const;

private:
    struct Control {
        HWND window;
        unsigned edges;
        RECT place;
    };

    HWND form_ = nullptr;
    SIZE client_{}, window_{};
    std::vector<Control> controls_;
};

}  // namespace tovar
