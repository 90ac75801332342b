#pragma once
#include <functional>
#include <memory>

#include "browser/drag_contents.h"
#include "shell/win32/ole_session.h"

namespace tovar {

/// Drags by OLE.
class OleDragSource final : public DragSource {
public:
    /// @param component  gives what has to stay as long as a target holds something of a drag
    explicit OleDragSource(std::function<std::shared_ptr<const void>()> component) : component_(std::move(component)) {}

    bool drag(const std::shared_ptr<DragContents>& contents, DragButton button) override;

private:
    std::function<std::shared_ptr<const void>()> component_;
    /// From the first drag on: targets in other programs may hold on to something for a while.
    OleSession ole_;
};

}  // namespace tovar
