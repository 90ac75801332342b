#include "archivers/formats/tar/entry_path.h"

namespace archiver::tar {

bool copyEntryPath(struct archive_entry* entry, std::string& path) {
    const char* const text = ::archive_entry_pathname(entry);
    if (text == nullptr) return false;
    path.assign(text);
    return true;
}

}  // namespace archiver::tar
