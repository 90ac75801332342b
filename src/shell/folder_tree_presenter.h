#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "shell/folder_source.h"

namespace tovar {

/// A folder in a tree of them. Numbers begin at 1 and are not used again.
using FolderNode = FolderWatchKey;
inline constexpr FolderNode kNoFolder = 0;

/// The control that shows a tree of folders.
class FolderTreeDisplay {
public:
    virtual ~FolderTreeDisplay() = default;

    /// @param parent  kNoFolder for the root
    /// @param after   the sibling above it; kNoFolder for the first place
    virtual void insert(FolderNode node, FolderNode parent, FolderNode after) = 0;
    /// Takes a folder away with all inside it.
    virtual void remove(FolderNode node) = 0;
    /// The name of a folder has changed, or how it is shown. Whether there are folders inside it is asked whenever it
    /// is painted.
    virtual void update(FolderNode node) = 0;
    virtual void expand(FolderNode node) = 0;
    /// Selects a folder and brings it into view; the presenter hears of it by onSelected.
    virtual void select(FolderNode node) = 0;
    /// Around every change, so that it is painted once.
    virtual void beginChange() = 0;
    virtual void endChange() = 0;

    /// The selected folder is another one, or has another path. Not called within a change.
    virtual void selectionChanged() = 0;
};

/// A tree of the computer's folders: the desktop, below it the documents, the computer with its drives, and what lies
/// on the desktop. A folder is looked into when it is opened, and followed from then on.
class FolderTreePresenter {
public:
    /// Both must outlive the object.
    FolderTreePresenter(FolderSource& source, FolderTreeDisplay& display) : source_(source), display_(display) {}

    /// Shows the places and the drives in a control that is empty.
    void start();

    /// Selects a folder, however deep, and opens the way down to it. Hidden folders on the way are shown.
    /// @param path  absolute, with "\" as separator
    /// @return false when there is no such folder: the nearest one above it is selected, if any
    bool selectFolder(std::wstring_view path);

    /// @return path of the selected folder; nullopt when none is, or the one that is has no folder of the file system
    [[nodiscard]] std::optional<std::wstring> selectedFolder() const;
    [[nodiscard]] FolderNode selected() const noexcept { return selected_; }

    // What the control asks.
    [[nodiscard]] const std::wstring& name(FolderNode node) const { return at(node).name; }
    /// @return empty for a place without a folder of the file system
    [[nodiscard]] std::wstring path(FolderNode node) const;
    /// Looks into the folder when it is asked for the first time.
    [[nodiscard]] bool mayHaveFolders(FolderNode node);
    [[nodiscard]] bool isHidden(FolderNode node) const { return at(node).hidden; }
    /// @return the icon of a place; nullopt for a folder
    [[nodiscard]] std::optional<int> placeIcon(FolderNode node) const { return at(node).icon; }
    /// @return whether the desktop may show another name or icon than those of any folder
    [[nodiscard]] bool isCustomised(FolderNode node) const { return at(node).customised; }

    // What the control tells.
    /// The folder is about to be opened.
    /// @return false when there is nothing inside: it stays closed
    bool onExpanding(FolderNode node);
    /// The folder is about to be closed.
    void onCollapsing(FolderNode node);
    /// @param node  kNoFolder when nothing is selected
    void onSelected(FolderNode node);
    /// Time to look whether something has changed on the disk.
    void onTick();
    /// Looks at everything anew.
    void refresh();

private:
    enum class Kind { Desktop, Place, Computer, Drive, Inside };
    struct Node {
        Kind kind = Kind::Inside;
        FolderNode parent = kNoFolder;
        std::wstring name;
        std::wstring path;  ///< of a place; a folder's path is that of its parent and its name
        std::optional<int> icon;
        bool hidden = false, customised = false;
        bool kept = false;    ///< shown because it was to be selected, not because it was listed
        bool loaded = false;  ///< its folders are known, and watched
        std::uint64_t created = 0;
        std::optional<bool> mayHaveFolders;
        std::vector<FolderNode> children;
    };
    class Change;

    [[nodiscard]] const Node& at(FolderNode node) const { return nodes_.at(node); }
    FolderNode add(FolderNode parent, FolderNode after, Node node);
    FolderNode addPlace(Kind kind, FolderNode parent, FolderNode after, FolderPlace place);
    FolderNode addKept(FolderNode parent, Node node);

    bool load(FolderNode node);
    void reload(FolderNode node);
    void leave(FolderNode node);
    void mergeFolders(FolderNode node, std::vector<SubFolder> folders);
    void mergeDrives();
    void findRenamed(const std::vector<SubFolder>& folders, std::unordered_map<std::wstring, FolderNode>& known);
    void forget(FolderNode node);
    void childrenAre(FolderNode node, std::vector<FolderNode> children);

    [[nodiscard]] FolderNode placeFor(const std::wstring& path);
    [[nodiscard]] FolderNode childFor(FolderNode node, const std::wstring& name);
    [[nodiscard]] FolderNode knownChild(FolderNode node, const std::wstring& name) const;
    [[nodiscard]] bool isInside(FolderNode node, FolderNode above) const;
    void tellSelection();

    FolderSource& source_;
    FolderTreeDisplay& display_;
    std::unordered_map<FolderNode, Node> nodes_;
    FolderNode next_ = 1, desktop_ = kNoFolder, computer_ = kNoFolder, selected_ = kNoFolder;
    int changes_ = 0;
    bool selectionChanged_ = false;  ///< not yet told
};

}  // namespace tovar
