#pragma once
#include <string>
#include <vector>

#include "shell/message_boxes.h"

namespace tovar::test {

/// Records what a user would have seen.
class FakeMessageBoxes final : public MessageBoxes {
public:
    struct Shown {
        WindowHandle owner = nullptr;
        std::wstring text, title;
        MessageIcon icon = MessageIcon::Exclamation;
    };
    std::vector<Shown> shown;

    void show(WindowHandle owner, std::wstring_view text, std::wstring_view title, MessageIcon icon) override {
        shown.push_back({owner, std::wstring(text), std::wstring(title), icon});
    }
};

}  // namespace tovar::test
