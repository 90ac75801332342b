#include "archivers/formats/tar/entry_path.h"

#include "archivers/formats/utf8.h"

namespace archiver::tar {
namespace {

const wchar_t* findWide(struct archive_entry* entry, EntryText which) {
    switch (which) {
        case EntryText::kSymbolicLink:
            return ::archive_entry_symlink_w(entry);
        case EntryText::kHardLink:
            return ::archive_entry_hardlink_w(entry);
        case EntryText::kPath:
            break;
    }
    return ::archive_entry_pathname_w(entry);
}

const char* find(struct archive_entry* entry, EntryText which) {
    switch (which) {
        case EntryText::kSymbolicLink:
            return ::archive_entry_symlink(entry);
        case EntryText::kHardLink:
            return ::archive_entry_hardlink(entry);
        case EntryText::kPath:
            break;
    }
    return ::archive_entry_pathname(entry);
}

}  // namespace

bool copyEntryText(struct archive_entry* entry, EntryText which, std::string& text) {
    if (const wchar_t* const wide = findWide(entry, which)) {
        text.clear();
        appendUtf8(wide, text);
        return true;
    }
    const char* const found = find(entry, which);
    if (found == nullptr) return false;
    text.assign(found);
    return true;
}

}  // namespace archiver::tar
