#include "archivers/formats/tar/entry_path.h"

#include "archivers/formats/utf8.h"

namespace archiver::tar {

bool copyEntryPath(struct archive_entry* entry, std::string& path) {
    if (const wchar_t* const wide = ::archive_entry_pathname_w(entry)) {
        path.clear();
        appendUtf8(wide, path);
        return true;
    }
    const char* const text = ::archive_entry_pathname(entry);
    if (text == nullptr) return false;
    path.assign(text);
    return true;
}

}  // namespace archiver::tar
