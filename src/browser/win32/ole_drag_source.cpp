#include "browser/win32/ole_drag_source.h"

#include "browser/win32/member_data_object.h"

namespace tovar {
namespace {

constexpr DWORD kButtons = MK_LBUTTON | MK_RBUTTON | MK_MBUTTON;

/// Follows the user's hand.
class DropSource final : public ComObject<IDropSource, IID_IDropSource> {
public:
    DropSource(std::shared_ptr<DragContents> contents, DWORD button)
        : contents_(std::move(contents)), button_(button) {}

    STDMETHODIMP QueryContinueDrag(BOOL escape, DWORD keys) noexcept override {
        const DWORD buttons = keys & kButtons;
        if (escape || contents_->isCancelled() || (buttons & ~button_) != 0) return DRAGDROP_S_CANCEL;
        if (buttons != 0) return S_OK;
        contents_->onDropped();
        return DRAGDROP_S_DROP;
    }
    STDMETHODIMP GiveFeedback(DWORD) noexcept override { return DRAGDROP_S_USEDEFAULTCURSORS; }

private:
    std::shared_ptr<DragContents> contents_;
    DWORD button_;
};

}  // namespace

bool OleDragSource::drag(const std::shared_ptr<DragContents>& contents, DragButton button) {
    if (!ole_.start()) return false;
    const ComOwner<IDataObject> data(new MemberDataObject(contents, component_ ? component_() : nullptr));
    const ComOwner<IDropSource> source(new DropSource(contents, button == DragButton::Left ? MK_LBUTTON : MK_RBUTTON));
    DWORD effect = DROPEFFECT_NONE;
    // Copies alone: members stay in their archive.
    const HRESULT result = ::DoDragDrop(data.get(), source.get(), DROPEFFECT_COPY, &effect);
    return result == DRAGDROP_S_DROP && effect != DROPEFFECT_NONE;
}

}  // namespace tovar
