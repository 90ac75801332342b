#pragma once
#include <memory>
#include <string>
#include <vector>

#include "browser/drag_contents.h"
#include "browser/dragged_members.h"
#include "browser/member_copies.h"
#include "shell/confirmation.h"

namespace tovar {

/// Drags members out of one browser. What is dragged is an empty file, the placeholder: the folder where the shell
/// tells that it has come to lie is the one into which the members are unpacked. No placeholder stays there, or in the
/// work folder, whatever comes of it.
class DragOut {
public:
    /// What it works with; all of it outlives the object.
    struct Ports {
        MemberCopies::Ports copies;
        Confirmations& confirmations;
        DragSource& source;
        FileTimeOf fileTime;
    };
    explicit DragOut(const Ports& ports) : ports_(ports) {}
    ~DragOut() { cancel(); }
    DragOut(const DragOut&) = delete;
    DragOut& operator=(const DragOut&) = delete;

    /// Drags until the button is let go, and unpacks when the shell has told of the drop by then.
    void drag(const ArchiveScene& scene, const std::vector<ArchiveMember>& members, DragButton button);
    void onShellNotify(const std::wstring& first, const std::wstring& second);
    /// @return whether the shell may still tell of the drop
    [[nodiscard]] bool awaitsDrop() const noexcept { return placeholder_ != nullptr && folder_.empty(); }
    /// @return whether it has told of it after the drag
    [[nodiscard]] bool hasDrop() const noexcept { return !dragging_ && !folder_.empty(); }
    /// Unpacks what was dropped, once the user has agreed.
    void finish(const ArchiveScene& scene);
    /// The window is going, or has gone. A drag or question ends, and nothing is unpacked any more.
    void cancel() noexcept;

private:
    /// A file that goes with the object, here and where it was dropped.
    class Placeholder;

    void unpack(const ArchiveScene& scene, WindowHandle window, const std::wstring& folder, const std::wstring& list);
    void tell(WindowHandle window, std::wstring_view text);
    void forget() noexcept;

    Ports ports_;
    std::shared_ptr<Placeholder> placeholder_;  ///< of the drag whose drop may still come, or has come
    std::shared_ptr<DraggedMembers> dragged_;
    std::wstring list_;                 ///< the members, as libraries are told of them
    std::wstring folder_;               ///< where they were dropped; with a separator at its end
    WindowHandle askedOver_ = nullptr;  ///< the window of the question that is up
    bool dragging_ = false;
    bool finishing_ = false;
    bool inBin_ = false;      ///< there the drag ends
    bool cancelled_ = false;  ///< the window is going
};

}  // namespace tovar
