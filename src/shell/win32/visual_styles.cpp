#include "shell/win32/visual_styles.h"

#include <array>

#include "shell/win32/module_instance.h"

namespace tovar {
namespace {

constexpr WORD kManifest = 2;

}  // namespace

VisualStyles::VisualStyles() noexcept {
    std::array<wchar_t, 32768> path;  // a path of the system is never longer
    const DWORD length = ::GetModuleFileNameW(moduleInstance(), path.data(), static_cast<DWORD>(path.size()));
    if (length == 0 || length >= path.size()) return;
    ACTCTXW description{};
    description.cbSize = sizeof description;
    description.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID | ACTCTX_FLAG_HMODULE_VALID;
    description.lpSource = path.data();
    description.lpResourceName = MAKEINTRESOURCEW(kManifest);
    description.hModule = moduleInstance();
    context_ = ::CreateActCtxW(&description);
    active_ = context_ != INVALID_HANDLE_VALUE && ::ActivateActCtx(context_, &cookie_);
}

VisualStyles::~VisualStyles() {
    if (active_) ::DeactivateActCtx(0, cookie_);
    if (context_ != INVALID_HANDLE_VALUE) ::ReleaseActCtx(context_);
}

}  // namespace tovar
