#pragma once
#include "shell/message_boxes.h"

namespace tovar {

/// The system's own message boxes. Without an owner the windows of the calling thread wait for the answer.
class SystemMessageBoxes final : public MessageBoxes {
public:
    void show(WindowHandle owner, std::wstring_view text, std::wstring_view title, MessageIcon icon) override;
};

}  // namespace tovar
