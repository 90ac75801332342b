#pragma once
#include <windows.h>

#include <oleauto.h>

#include "front/place_in_host.h"
#include "front/win32/com_support.h"

namespace tovar {

/// A host's window object, read late-bound: whatever its interface is, it only needs the three names.
class DispatchHost final : public HostWindow {
public:
    explicit DispatchHost(IDispatch& object) : object_(shareObject(&object)) {}

    [[nodiscard]] WindowHandle hWnd() override;
    [[nodiscard]] std::optional<double> Width() override;
    [[nodiscard]] std::optional<double> Height() override;

private:
    [[nodiscard]] bool read(const wchar_t* name, Variant& value) const noexcept;

    ComOwner<IDispatch> object_;
};

}  // namespace tovar
