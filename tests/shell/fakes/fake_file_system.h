#pragma once
#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "shell/file_system.h"
#include "shell/paths.h"

namespace tovar::test {

/// Files and folders in memory, with the habits of Windows: "\" and "/" are the same, case does not matter, a separator
/// at the end neither. Every call is logged as its name, a blank and the path; any call on any path can be told to
/// fail.
class FakeFileSystem final : public FileSystem {
public:
    // Error numbers of Windows that the fake answers by itself.
    static constexpr SystemErrorCode kFileNotFound = 2;
    static constexpr SystemErrorCode kPathNotFound = 3;
    static constexpr SystemErrorCode kAccessDenied = 5;
    static constexpr SystemErrorCode kInvalidName = 123;
    static constexpr SystemErrorCode kNotEmpty = 145;
    static constexpr SystemErrorCode kAlreadyExists = 183;

    struct Node {
        std::wstring name;
        FileStatus status;
        std::string bytes;
        bool link = false;
        std::size_t order = 0;  // in which entries were made
    };

    /// Adds a folder, and those above it that are missing. A drive ("C:") or server share comes with its first folder.
    Node& addFolder(const std::wstring& path, FileAttributes attributes = attribute::kFolder) {
        addParents(path);
        return put(path, attributes);
    }

    Node& addFile(const std::wstring& path, std::string bytes = {}, FileAttributes attributes = attribute::kArchive) {
        addParents(path);
        Node& node = put(path, attributes);
        node.status.size = bytes.size();
        node.bytes = std::move(bytes);
        return node;
    }

    /// Adds a file that claims a size without having the bytes.
    Node& addFileOfSize(const std::wstring& path, std::uint64_t size) {
        Node& node = addFile(path);
        node.status.size = size;
        return node;
    }

    /// Makes one kind of call fail for one path until told otherwise.
    /// @param call   such as "createFolder"
    /// @param error  0 lets it work again
    void fail(const std::wstring& call, const std::wstring& path, SystemErrorCode error) {
        failures_[{call, key(path)}] = error;
    }

    /// @return null when there is nothing of that name
    [[nodiscard]] const Node* find(const std::wstring& path) const {
        const auto found = nodes_.find(key(path));
        return found == nodes_.end() ? nullptr : &found->second;
    }

    /// All calls so far, such as "createFolder C:\a\", in order.
    [[nodiscard]] const std::vector<std::wstring>& log() const { return log_; }

    /// The paths of one kind of call, in order.
    [[nodiscard]] std::vector<std::wstring> calls(const std::wstring& call) const {
        std::vector<std::wstring> paths;
        for (const std::wstring& line : log_) {
            if (line.starts_with(call + L' ')) paths.push_back(line.substr(call.size() + 1));
        }
        return paths;
    }

    void clearLog() { log_.clear(); }

    // FileSystem
    [[nodiscard]] std::optional<FileAttributes> attributes(const std::wstring& path) const override {
        if (enter(L"attributes", path) != 0 || !find(path)) return std::nullopt;
        return find(path)->status.attributes;
    }
    [[nodiscard]] std::optional<FileStatus> status(const std::wstring& path) const override {
        if (enter(L"status", path) != 0 || !find(path)) return std::nullopt;
        return find(path)->status;
    }
    SystemErrorCode setAttributes(const std::wstring& path, FileAttributes attributes) override {
        if (const auto error = enter(L"setAttributes", path)) return error;
        const auto found = nodes_.find(key(path));
        if (found == nodes_.end()) return kFileNotFound;
        FileAttributes& own = found->second.status.attributes;
        own = attributes | (own & attribute::kFolder);  // what is a folder stays one
        return 0;
    }
    SystemErrorCode createFolder(const std::wstring& path) override {
        if (const auto error = enter(L"createFolder", path)) return error;
        if (find(path)) return kAlreadyExists;
        if (!hasParent(path)) return kPathNotFound;
        put(path, attribute::kFolder);
        return 0;
    }
    SystemErrorCode listFolder(const std::wstring& folder, std::vector<FolderEntry>& entries) const override {
        if (const auto error = enter(L"listFolder", folder)) return error;
        const Node* node = find(folder);
        if (!node || !isFolder(*node)) return kPathNotFound;
        entries.push_back({L".", attribute::kFolder});
        entries.push_back({L"..", attribute::kFolder});
        for (const Node* child : children(key(folder))) {
            entries.push_back({child->name, child->status.attributes, child->status.size, child->link});
        }
        return 0;
    }
    SystemErrorCode readFile(const std::wstring& path, std::string& bytes) const override {
        if (const auto error = enter(L"readFile", path)) return error;
        const Node* node = find(path);
        if (!node) return kFileNotFound;
        if (isFolder(*node)) return kAccessDenied;
        bytes = node->bytes;
        return 0;
    }
    SystemErrorCode writeFile(const std::wstring& path, std::string_view bytes) override {
        if (const auto error = enter(L"writeFile", path)) return error;
        if (!hasParent(path)) return kPathNotFound;
        if (const Node* node = find(path);
            node && (node->status.attributes & (attribute::kFolder | attribute::kReadOnly)) != 0) {
            return kAccessDenied;
        }
        addFile(path, std::string(bytes));
        return 0;
    }
    SystemErrorCode deleteFile(const std::wstring& path) override {
        if (const auto error = enter(L"deleteFile", path)) return error;
        const Node* node = find(path);
        if (!node) return kFileNotFound;
        if ((node->status.attributes & (attribute::kFolder | attribute::kReadOnly)) != 0) return kAccessDenied;
        nodes_.erase(key(path));
        return 0;
    }

    SystemErrorCode removeFolder(const std::wstring& path) override {
        if (const auto error = enter(L"removeFolder", path)) return error;
        const Node* node = find(path);
        if (!node || !isFolder(*node)) return kPathNotFound;
        if ((node->status.attributes & attribute::kReadOnly) != 0) return kAccessDenied;
        if (!children(key(path)).empty()) return kNotEmpty;
        nodes_.erase(key(path));
        return 0;
    }

private:
    static std::wstring key(const std::wstring& path) {
        std::wstring text = upperCase(path);
        std::ranges::replace(text, L'/', L'\\');
        while (text.size() > 1 && text.back() == L'\\') text.pop_back();
        return text;
    }

    static bool isFolder(const Node& node) { return (node.status.attributes & attribute::kFolder) != 0; }

    // Length of the part above a key, without its separator; 0 for what has nothing above: "C:", "\\server", "name".
    static std::size_t parentLength(const std::wstring& path) {
        const std::size_t separator = path.rfind(L'\\');
        return separator == path.npos || separator < 2 ? 0 : separator;
    }

    [[nodiscard]] bool hasParent(const std::wstring& path) const {
        const std::size_t length = parentLength(key(path));
        const auto parent = nodes_.find(key(path).substr(0, length));
        return length != 0 && parent != nodes_.end() && isFolder(parent->second);
    }

    void addParents(const std::wstring& path) {
        const std::size_t length = parentLength(key(path));
        if (length == 0 || find(path.substr(0, length))) return;
        addFolder(path.substr(0, length));
    }

    Node& put(const std::wstring& path, FileAttributes attributes) {
        Node& node = nodes_[key(path)];
        if (node.name.empty()) node.order = ++made_;
        node.name = FileNamePart(path.substr(0, key(path).size()));
        node.status.attributes = attributes;
        return node;
    }

    [[nodiscard]] std::vector<const Node*> children(const std::wstring& folder) const {
        std::vector<const Node*> found;
        for (auto each = nodes_.upper_bound(folder + L'\\'); each != nodes_.end(); ++each) {
            if (!each->first.starts_with(folder + L'\\')) break;
            if (parentLength(each->first) == folder.size()) found.push_back(&each->second);
        }
        std::ranges::sort(found, {}, &Node::order);
        return found;
    }

    // Logs a call; answers the error it is to fail with.
    SystemErrorCode enter(const std::wstring& call, const std::wstring& path) const {
        log_.push_back(call + L' ' + path);
        if (path.find(L'\0') != path.npos) return kInvalidName;
        const auto failure = failures_.find({call, key(path)});
        return failure == failures_.end() ? 0 : failure->second;
    }

    std::map<std::wstring, Node> nodes_;
    std::map<std::pair<std::wstring, std::wstring>, SystemErrorCode> failures_;
    std::size_t made_ = 0;
    mutable std::vector<std::wstring> log_;
};

}  // namespace tovar::test
