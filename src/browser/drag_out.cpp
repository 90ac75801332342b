#include "browser/drag_out.h"

#include <exception>
#include <utility>

#include "browser/drop_recognition.h"
#include "browser/member_list.h"
#include "drivers/extract_lines.h"
#include "shell/list_file.h"
#include "shell/paths.h"
#include "shell/scoped_flag.h"

namespace tovar {
namespace {

constexpr std::wstring_view kFolderGone = L"The folder is not there any more.";

}  // namespace

class DragOut::Placeholder {
public:
    explicit Placeholder(OwnItems& items) : items_(items), path_(items.makeFile()) {}
    ~Placeholder() {
        removeDropped();
        items_.removeFile(path_);
    }
    Placeholder(const Placeholder&) = delete;
    Placeholder& operator=(const Placeholder&) = delete;

    [[nodiscard]] const std::wstring& path() const noexcept { return path_; }
    void droppedAs(const std::wstring& path) { dropped_ = path; }
    /// Who has put it there may still be at it: that is tried again when the object goes, and later.
    void removeDropped() noexcept { items_.removeFile(dropped_); }

private:
    OwnItems& items_;
    std::wstring path_, dropped_;
};

void DragOut::drag(const ArchiveScene& scene, const std::vector<ArchiveMember>& members, DragButton button) {
    if (members.empty() || cancelled_ || dragging_ || finishing_ || ports_.copies.extraction.running()) return;
    forget();
    bool taken = false;
    try {
        const ScopedFlag dragging(dragging_);
        list_ = memberListOf(scene, members);
        placeholder_ = std::make_shared<Placeholder>(ports_.copies.items);
        dragged_ =
            std::make_shared<DraggedMembers>(ports_.copies, scene, members, placeholder_->path(), ports_.fileTime);
        const std::shared_ptr<DraggedMembers> dragged = dragged_;
        taken = ports_.source.drag(dragged, button);
        dragged->end();
    } catch (const SystemError& error) {
        tell(scene.owner, ports_.copies.paths.SystemErrorText(error.code()));
    } catch (...) {
        if (dragged_) dragged_->end();
        forget();
        throw;
    }
    // Members that were taken as streams are where they belong.
    if (!dragged_ || dragged_->isCancelled() || dragged_->way() == DraggedMembers::Way::Streams ||
        ((!taken || inBin_) && folder_.empty())) {
        forget();
    } else if (!folder_.empty()) {
        finish(scene);
    }
}

void DragOut::onShellNotify(const std::wstring& first, const std::wstring& second) {
    if (!placeholder_ || !dragged_) return;
    const auto place = recogniseDrop(placeholder_->path(), first, second, ports_.copies.paths);
    if (!place) return;
    placeholder_->droppedAs(place->file);
    placeholder_->removeDropped();
    if (!place->isFolder && folder_.empty()) {
        inBin_ = true;
        if (!dragging_) forget();
        return;
    }
    if (!folder_.empty() || dragged_->isCancelled()) return;
    if (dragged_->goByPlaceholder()) folder_ = ParentPath(place->file);
}

void DragOut::finish(const ArchiveScene& scene) {
    if (!placeholder_ || folder_.empty() || finishing_) return;
    const ScopedFlag finishing(finishing_);
    const std::shared_ptr<Placeholder> placeholder = std::move(placeholder_);
    const std::wstring folder = std::exchange(folder_, {}), list = std::exchange(list_, {});
    placeholder->removeDropped();
    struct Asked {
        WindowHandle& over;
        ~Asked() { over = nullptr; }
    } const asked{askedOver_};
    askedOver_ = scene.owner;
    ports_.confirmations.ask(scene.owner, confirmExtraction(list),
                             [&](WindowHandle window) { unpack(scene, window, folder, list); });
}

void DragOut::unpack(const ArchiveScene& scene, WindowHandle window, const std::wstring& folder,
                     const std::wstring& list) {
    const MemberCopies::Ports& with = ports_.copies;
    if (cancelled_) return;
    // A library would make the folder anew, for somebody who has just removed it.
    if (!with.paths.IsFolder(folder)) {
        tell(window, kFolderGone);
        return;
    }
    const WindowHandle before = scene.driver.hWnd();
    try {
        const ListFile file(list, scene.driver.listCodec(), with.workFolder, with.files);
        with.extraction.RunExtract(scene.driver,
                                   {.owner = window,
                                    .command = extractCommand(scene.driver.description().extract, {.listed = true}),
                                    .archive = scene.archiveFile,
                                    .folder = folder,
                                    .members = file.argument()});
    } catch (const SystemError& error) {
        tell(window, with.paths.SystemErrorText(error.code()));
    }
    // The window that the library's dialogs had goes with the work.
    scene.driver.setHWnd(before);
}

void DragOut::tell(WindowHandle window, std::wstring_view text) {
    ports_.copies.messages.show(window, text, kExtractionTitle, MessageIcon::Exclamation);
}

void DragOut::forget() noexcept {
    placeholder_.reset();
    dragged_.reset();
    inBin_ = false;
    folder_.clear();
    list_.clear();
}

void DragOut::cancel() noexcept {
    cancelled_ = true;
    if (dragged_) dragged_->cancel();
    if (askedOver_ != nullptr) ports_.confirmations.decline(askedOver_);
    if (!dragging_ && !finishing_) forget();
}

}  // namespace tovar
