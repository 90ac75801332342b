#include "archivers/formats/tar/entry_path.h"

namespace archiver::tar {
namespace {

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
    const char* const found = find(entry, which);
    if (found == nullptr) return false;
    text.assign(found);
    return true;
}

}  // namespace archiver::tar
