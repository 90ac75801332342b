#pragma once
#include <deque>
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

/// What is known of the selected folder.
enum class FolderState {
    There,
    Reading,  ///< asked for, but the answer takes long: nothing may rely on it yet
    Missing,
};

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

    /// The selected folder is another one, has another path, or is in another state. Not called within a change.
    virtual void selectionChanged() = 0;
};

/// A tree of the computer's folders: the desktop, below it the documents, the computer with its drives, and what lies
/// on the desktop. A folder is looked into when it is opened, and followed from then on. Where that takes long, the
/// tree goes on meanwhile: the folder is marked as one that is read, and opens when the answer is there.
class FolderTreePresenter {
public:
    /// Both must outlive the object.
    FolderTreePresenter(FolderSource& source, FolderTreeDisplay& display) : source_(source), display_(display) {}

    /// Shows the places and the drives in a control that is empty.
    void start();

    /// Selects a folder, however deep, and opens the way down to it. Hidden folders on the way are shown.
    /// @param path  absolute, with "\" as separator
    /// @return false when there is no such folder: the nearest one above it is selected, if any. Where the answer takes
    ///         long, true; the folder, or the nearest one, is selected when it is there, unless another one was
    ///         selected before.
    bool selectFolder(std::wstring_view path);

    /// @return path of the selected folder; nullopt when none is, or the one that is has no folder of the file system
    [[nodiscard]] std::optional<std::wstring> selectedFolder() const;
    [[nodiscard]] FolderNode selected() const noexcept { return selected_; }
    /// @return of the selected folder, or of the one that is to be selected
    [[nodiscard]] FolderState selectedState() const;

    // What the control asks.
    [[nodiscard]] const std::wstring& name(FolderNode node) const { return at(node).name; }
    /// @return empty for a place without a folder of the file system
    [[nodiscard]] std::wstring path(FolderNode node) const;
    /// Looks into the folder when it is asked for the first time.
    [[nodiscard]] bool mayHaveFolders(FolderNode node);
    [[nodiscard]] bool isHidden(FolderNode node) const { return at(node).hidden; }
    /// @return whether it is to be shown that the folder is being looked into
    [[nodiscard]] bool isReading(FolderNode node) const { return at(node).reading && !at(node).loaded; }
    /// @return the icon of a place; nullopt for a folder
    [[nodiscard]] std::optional<int> placeIcon(FolderNode node) const { return at(node).icon; }
    /// @return whether the desktop may show another name or icon than those of any folder
    [[nodiscard]] bool isCustomised(FolderNode node) const { return at(node).customised; }

    // What the control tells.
    /// The folder is about to be opened.
    /// @return false when there is nothing inside, or that is not known yet: it stays closed
    bool onExpanding(FolderNode node);
    /// The folder is about to be closed.
    void onCollapsing(FolderNode node);
    /// @param node  kNoFolder when nothing is selected
    void onSelected(FolderNode node);
    /// Time to look whether something has changed on the disk, or answers have come in.
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
        bool kept = false;          ///< shown because it was to be selected, not because it was listed
        bool loaded = false;        ///< its folders are known, and watched
        bool reading = false;       ///< it was asked for what is inside
        bool readAgain = false;     ///< it has changed since
        bool openWhenRead = false;  ///< its user wants to see what is inside
        bool missing = false;       ///< the last look found that there is no such folder
        std::uint64_t created = 0;
        std::optional<bool> mayHaveFolders;
        std::vector<FolderNode> children;
    };
    using KnownFolders = std::unordered_map<std::wstring, FolderNode>;  ///< folders inside another one, by their names
    /// One change of what is shown, painted when it ends.
    class Change {
    public:
        explicit Change(FolderTreePresenter& tree) : tree_(tree) {
            if (tree_.changes_++ == 0) tree_.display_.beginChange();
        }
        ~Change() {
            if (--tree_.changes_ == 0) tree_.display_.endChange();
        }
        Change(const Change&) = delete;
        Change& operator=(const Change&) = delete;

    private:
        FolderTreePresenter& tree_;
    };
    /// The way down to a folder that is to be selected.
    struct Walk {
        FolderNode node = kNoFolder;  ///< as far as it is gone
        std::deque<std::wstring> names;
        bool asked = false;  ///< what is inside the node, for this walk
        bool told = false;   ///< that it takes long
    };

    [[nodiscard]] const Node& at(FolderNode node) const { return nodes_.at(node); }
    [[nodiscard]] std::wstring pathInside(FolderNode node, std::wstring_view name) const;
    FolderNode add(FolderNode parent, FolderNode after, Node node);
    FolderNode addPlace(Kind kind, FolderNode parent, FolderNode after, FolderPlace place);
    FolderNode addKept(FolderNode parent, Node node);

    bool load(FolderNode node);
    void reload(FolderNode node);
    void look(FolderNode node);
    void onLook(FolderNode node, FolderLook look);
    void onLateLook(FolderNode node, FolderLook look);
    void leave(FolderNode node);
    void removeNode(FolderNode node);
    void mergeFolders(FolderNode node, std::vector<SubFolder> folders);
    void mergeFolder(FolderNode node, const SubFolder& folder);
    std::vector<FolderNode> forgetUnlisted(FolderNode node, const KnownFolders& unlisted);
    void mergeDrives();
    void findRenamed(const std::vector<SubFolder>& folders, KnownFolders& known);
    void forget(FolderNode node);
    void childrenAre(FolderNode node, std::vector<FolderNode> children);

    bool walkOn();
    bool askForWalk();
    bool stepDown();
    FolderNode removeMissing(FolderNode node);
    void openWayTo(FolderNode node);
    [[nodiscard]] bool isUnproven(FolderNode node) const;
    [[nodiscard]] FolderNode placeFor(const std::wstring& path);
    [[nodiscard]] FolderNode childFor(FolderNode node, const std::wstring& name, bool justLooked);
    [[nodiscard]] FolderNode knownChild(FolderNode node, const std::wstring& name) const;
    [[nodiscard]] bool isInside(FolderNode node, FolderNode above) const;
    void tellSelection();

    FolderSource& source_;
    FolderTreeDisplay& display_;
    std::unordered_map<FolderNode, Node> nodes_;
    FolderNode next_ = 1, desktop_ = kNoFolder, computer_ = kNoFolder, selected_ = kNoFolder;
    std::optional<Walk> walk_;
    int changes_ = 0;
    bool selectionChanged_ = false;  ///< not yet told
};

}  // namespace tovar
