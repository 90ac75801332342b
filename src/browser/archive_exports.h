#pragma once
#include <string>
#include <vector>

#include "browser/clipboard_copies.h"
#include "browser/drag_out.h"
#include "browser/member_exports.h"

namespace tovar {

/// Takes members out of the archive of one browser.
class ArchiveExports final : public MemberExports {
public:
    /// What it works with; all of it outlives the object.
    struct Ports {
        DragOut::Ports drag;
        ClipboardCopies& clipboard;
    };
    explicit ArchiveExports(const Ports& ports);
    ~ArchiveExports() override;

    void copy(const ArchiveScene& scene, const std::vector<ArchiveMember>& members) override;
    void drag(const ArchiveScene& scene, const std::vector<ArchiveMember>& members, DragButton button) override {
        drag_.drag(scene, members, button);
    }
    void onShellNotify(const std::wstring& first, const std::wstring& second) override {
        drag_.onShellNotify(first, second);
    }
    [[nodiscard]] bool awaitsDrop() const override { return drag_.awaitsDrop(); }
    [[nodiscard]] bool hasDrop() const override { return drag_.hasDrop(); }
    void finishDrop(const ArchiveScene& scene) override { drag_.finish(scene); }
    void cancel() noexcept override { drag_.cancel(); }

private:
    Ports ports_;
    DragOut drag_;
};

}  // namespace tovar
