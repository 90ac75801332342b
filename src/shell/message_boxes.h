#pragma once
#include <string_view>

#include "shell/window_handle.h"

namespace tovar {

enum class MessageIcon { Exclamation, Information };

/// Message boxes with an Ok button. `show` returns when the user has answered.
class MessageBoxes {
public:
    virtual ~MessageBoxes() = default;
    virtual void show(WindowHandle owner, std::wstring_view text, std::wstring_view title, MessageIcon icon) = 0;
};

}  // namespace tovar
