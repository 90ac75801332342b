#pragma once
#include <string>
#include <vector>

#include "browser/browser_actions.h"
#include "browser/drag_contents.h"

namespace tovar {

/// What takes members of an archive out of its window: to where they are dragged, and to the clipboard. Exceptions end
/// the command and nothing else.
class MemberExports {
public:
    virtual ~MemberExports() = default;

    /// Copies members to the clipboard.
    /// @param members  the selected rows from top to bottom, never empty
    virtual void copy(const ArchiveScene& scene, const std::vector<ArchiveMember>& members) = 0;

    /// Drags members until the button is let go. What the shell tells meanwhile goes to onShellNotify.
    /// @param members  as for copy
    virtual void drag(const ArchiveScene& scene, const std::vector<ArchiveMember>& members, DragButton button) = 0;

    /// The shell tells of a file, by its path and, where it has got another one, that as well.
    virtual void onShellNotify(const std::wstring& first, const std::wstring& second) = 0;
    /// @return whether members were dragged somewhere, and the shell may still tell where that is
    [[nodiscard]] virtual bool awaitsDrop() const = 0;
    /// @return whether the shell has told where members were dropped after the drag: finishDrop is to be called
    [[nodiscard]] virtual bool hasDrop() const = 0;
    /// Unpacks what was dropped, once the user has agreed.
    virtual void finishDrop(const ArchiveScene& scene) = 0;

    /// The window is going, or has gone.
    virtual void cancel() noexcept = 0;
};

}  // namespace tovar
