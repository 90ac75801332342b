#pragma once
#include <functional>
#include <utility>

#include "browser/clipboard_copies.h"
#include "shell/win32/clipboard_update_watch.h"

namespace tovar {

/// Hears of Windows' clipboard. Without it copies stay until the next ones, or until the component goes.
class WindowsClipboardWatch final : public ClipboardWatch {
public:
    void start(std::function<void()> onChanged) override { static_cast<void>(watch_.start(std::move(onChanged))); }
    void stop() noexcept override { watch_.stop(); }

private:
    ClipboardUpdateWatch watch_;
};

}  // namespace tovar
