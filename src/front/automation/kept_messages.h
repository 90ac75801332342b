#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "shell/message_boxes.h"

namespace tovar {

/// Keeps messages that nobody is to see at once: a program without windows tells of them in its own way.
class KeptMessages final : public MessageBoxes {
public:
    void show(WindowHandle, std::wstring_view text, std::wstring_view title, MessageIcon icon) override {
        kept_.push_back({std::wstring(text), std::wstring(title), icon});
    }
    void clear() noexcept { kept_.clear(); }
    void dropLast() {
        if (!kept_.empty()) kept_.pop_back();
    }
    void showIn(MessageBoxes& messages) const {
        for (const Kept& each : kept_) messages.show(nullptr, each.text, each.title, each.icon);
    }
    /// @return the text of the last one; empty when there was none
    [[nodiscard]] std::wstring_view last() const noexcept {
        return kept_.empty() ? std::wstring_view() : std::wstring_view(kept_.back().text);
    }

private:
    struct Kept {
        std::wstring text, title;
        MessageIcon icon;
    };
    std::vector<Kept> kept_;
};

}  // namespace tovar
