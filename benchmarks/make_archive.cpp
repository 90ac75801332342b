// Makes an archive with many small members: make_archive zip|tar COUNT FILE [spread|flat|folders]
//
// Members are spread over folders of 500, as a backup of a source tree would have them; or lie all in one folder
// (flat); or each in a folder of its own, and those in one folder (folders). Written by libarchive, so that what is
// measured did not make its own input.

#include <archive.h>
#include <archive_entry.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

int main(int count, char** arguments) {
    const char* const layout = count == 5 ? arguments[4] : "spread";
    const bool flat = std::strcmp(layout, "flat") == 0, folders = std::strcmp(layout, "folders") == 0;
    if ((count != 4 && count != 5) || (!flat && !folders && std::strcmp(layout, "spread") != 0)) {
        std::fprintf(stderr, "make_archive zip|tar COUNT FILE [spread|flat|folders]\n");
        return 2;
    }
    const bool zip = std::strcmp(arguments[1], "zip") == 0;
    const long members = std::atol(arguments[2]);
    archive* out = archive_write_new();
    if (zip) {
        archive_write_set_format_zip(out);
        archive_write_zip_set_compression_store(out);
    } else {
        archive_write_set_format_ustar(out);
    }
    if (archive_write_open_filename(out, arguments[3]) != ARCHIVE_OK) {
        std::fprintf(stderr, "%s\n", archive_error_string(out));
        return 1;
    }
    for (long i = 0; i < members; ++i) {
        char name[96], text[64];
        if (flat) {
            std::snprintf(name, sizeof name, "all/source_file_with_a_longer_name_%07ld.txt", i);
        } else if (folders) {
            std::snprintf(name, sizeof name, "all/folder_%07ld/member.txt", i);
        } else {
            std::snprintf(name, sizeof name, "project-%03ld/module-%02ld/source_file_%07ld.txt", i / 25000,
                          i / 500 % 50, i);
        }
        const int length = std::snprintf(text, sizeof text, "member number %ld\n", i);
        archive_entry* entry = archive_entry_new();
        archive_entry_set_pathname(entry, name);
        archive_entry_set_filetype(entry, AE_IFREG);
        archive_entry_set_perm(entry, 0644);
        archive_entry_set_mtime(entry, 990120658 + i, 0);
        archive_entry_set_size(entry, length);
        const bool good = archive_write_header(out, entry) == ARCHIVE_OK &&
                          archive_write_data(out, text, static_cast<std::size_t>(length)) == length;
        archive_entry_free(entry);
        if (!good) {
            std::fprintf(stderr, "%s\n", archive_error_string(out));
            return 1;
        }
    }
    const bool closed = archive_write_close(out) == ARCHIVE_OK;
    archive_write_free(out);
    return closed ? 0 : 1;
}
