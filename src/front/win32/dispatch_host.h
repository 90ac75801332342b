#pragma once
#include <windows.h>

#include <oleauto.h>

#include "front/place_in_host.h"
#include "front/win32/com_support.h"

namespace tovar {

/// Finds a member of a script's object by its name.
/// @return whether there is one; `id` is its number then
[[nodiscard]] bool findMember(IDispatch& object, const wchar_t* name, DISPID& id) noexcept;

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
