#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>

#include "archivers/formats/rar/rar_reader.h"
#include "corpus/support/corpus.h"
#include "corpus/support/uudecode.h"
#include "formats/support/files.h"

/// The RAR archives that libarchive is tested with: members and bytes are those of its tests and of "bsdtar", what the
/// bytes are is told by the archives' own checksums.
namespace archiver::test {
namespace {

namespace fs = std::filesystem;

struct Archive {
    const char* name;  ///< behind "test_"; of several volumes the first one
    std::size_t members;
    std::uint64_t bytes;       ///< of all regular files
    ReturnCode reading = kOk;  ///< the first code that is not kOk, of listing or reading
    bool isOpened = true;
};

constexpr Archive kArchives[] = {
    {"rar_multivolume_multiple_files.part1.rar", 2, 40222},
    {"rar_multivolume_single_file.part1.rar", 1, 20111},
    {"rar_multivolume_uncompressed_files.part01.rar", 16, 120666},
    {"read_format_rar.rar", 5, 40},
    {"read_format_rar_binary_data.rar", 2, 1081194},
    {"read_format_rar_compress_best.rar", 6, 40242},
    {"read_format_rar_compress_normal.rar", 6, 40242},
    {"read_format_rar_encryption_data.rar", 2, 0, kPasswordFile},
    {"read_format_rar_encryption_header.rar", 0, 0, kPasswordFile, false},
    {"read_format_rar_encryption_partially.rar", 2, 16, kPasswordFile},
    {"read_format_rar_filter.rar", 1, 204288},
    {"read_format_rar_invalid1.rar", 1, 0, kCannotRead},
    {"read_format_rar_multi_lzss_blocks.rar", 1, 20131111},
    {"read_format_rar_multivolume.part0001.rar", 7, 241688220},
    {"read_format_rar_noeof.rar", 1, 20},
    {"read_format_rar_overflow.rar", 0, 0, kHeaderBroken, false},
    {"read_format_rar_ppmd_lzss_conversion.rar", 1, 241647978},
    {"read_format_rar_ppmd_use_after_free.rar", 0, 0, kHeaderBroken, false},
    {"read_format_rar_ppmd_use_after_free2.rar", 0, 0, kHeaderBroken, false},
    {"read_format_rar_sfx.exe", 5, 473},
    {"read_format_rar_subblock.rar", 1, 20},
    {"read_format_rar_unicode.rar", 6, 21},
    {"read_format_rar_windows.rar", 5, 473},
    {"read_format_rar5_arm.rar", 1, 90808},
    {"read_format_rar5_arm_filter_on_window_boundary.rar", 0, 0, kHeaderBroken, false},
    {"read_format_rar5_bad_window_sz_in_mltarc_file.rar", 0, 0, kHeaderBroken, false},
    {"read_format_rar5_blake2.rar", 1, 814},
    {"read_format_rar5_block_size_is_too_small.rar", 0, 0, kHeaderBroken, false},
    {"read_format_rar5_compressed.rar", 1, 1200},
    {"read_format_rar5_decode_number_out_of_bounds_read.rar", 0, 0, kHeaderBroken, false},
    {"read_format_rar5_different_solid_window_size.rar", 0, 0, kHeaderBroken, false},
    {"read_format_rar5_different_window_size.rar", 0, 0, kHeaderBroken, false},
    {"read_format_rar5_different_winsize_on_merge.rar", 0, 0, kHeaderBroken, false},
    {"read_format_rar5_distance_overflow.rar", 0, 0, kHeaderBroken, false},
    {"read_format_rar5_extra_field_version.rar", 2, 190},
    {"read_format_rar5_fileattr.rar", 8, 44},
    {"read_format_rar5_hardlink.rar", 2, 5},
    {"read_format_rar5_invalid_dict_reference.rar", 0, 0, kHeaderBroken, false},
    {"read_format_rar5_leftshift1.rar", 0, 0, kHeaderBroken, false},
    {"read_format_rar5_leftshift2.rar", 0, 0, kHeaderBroken, false},
    {"read_format_rar5_loop_bug.rar", 1, 0, kHuffmanCode},
    {"read_format_rar5_multiarchive.part01.rar", 2, 510280},
    {"read_format_rar5_multiarchive_solid.part01.rar", 9, 117398},
    {"read_format_rar5_multiple_files.rar", 4, 16384},
    {"read_format_rar5_multiple_files_solid.rar", 4, 16384},
    {"read_format_rar5_nonempty_dir_stream.rar", 0, 0, kHeaderBroken, false},
    {"read_format_rar5_owner.rar", 3, 15},
    {"read_format_rar5_readtables_overflow.rar", 0, 0, kHeaderBroken, false},
    {"read_format_rar5_sfx.exe", 1, 3},
    {"read_format_rar5_solid.rar", 7, 25776},
    {"read_format_rar5_stored.rar", 1, 29},
    {"read_format_rar5_stored_manyfiles.rar", 3, 2419},
    {"read_format_rar5_symlink.rar", 4, 5},
    {"read_format_rar5_truncated_huff.rar", 0, 0, kHeaderBroken, false},
    {"read_format_rar5_win32.rar", 8, 25776},
    {"read_format_rar5_window_buf_and_size_desync.rar", 0, 0, kHeaderBroken, false},
};

/// Writes an archive with all its volumes.
/// @return how many files that were
int writeVolumes(const fs::path& archives, const std::string& first, const TemporaryFolder& folder) {
    const std::size_t part = first.find(".part");
    const std::string start = part == std::string::npos ? first : first.substr(0, part + 5);
    int count = 0;
    for (const fs::path& file : filesBelow(archives)) {
        const std::string name = file.filename().string();
        if (!name.starts_with(start) || !name.ends_with(".uu")) continue;
        folder.write(name.substr(0, name.size() - 3), uudecode(contentOf(file)));
        ++count;
    }
    return count;
}

void compare(const Archive& expected, const OpenResult& opened) {
    EXPECT_EQ(opened.reader != nullptr, expected.isOpened);
    ReturnCode code = opened.code;
    std::size_t members = 0;
    std::uint64_t bytes = 0;
    Member member;
    ReturnCode end = opened.reader == nullptr ? kNoMoreEntries : opened.reader->next(member);
    for (; end == kOk; end = opened.reader->next(member)) {
        ++members;
        std::uint64_t size = 0;
        const ReturnCode read = opened.reader->read([&size](const char*, std::size_t count) {
            size += count;
            return true;
        });
        if (code == kOk) code = read;
        if (read == kOk) {
            EXPECT_EQ(size, member.originalSize) << member.name;
        }
        if (member.kind == MemberKind::kFile) bytes += size;
    }
    if (code == kOk && end != kNoMoreEntries) code = end;
    EXPECT_EQ(code, expected.reading) << std::hex << code;
    EXPECT_EQ(members, expected.members);
    EXPECT_EQ(bytes, expected.bytes);
}

TEST(LibarchiveRarCorpus, IsReadAsExpected) {
    const fs::path archives = corpus("libarchive") / "libarchive" / "test";
    if (!fs::is_directory(archives)) GTEST_SKIP() << "TOVAREX_CORPUS names no folder with libarchive's sources";
    int good = 0, refused = 0, files = 0;
    for (const Archive& each : kArchives) {
        SCOPED_TRACE(each.name);
        const std::string first = std::string("test_") + each.name;
        const TemporaryFolder folder;
        files += writeVolumes(archives, first, folder);
        compare(each, openRar(folder.path() / first));
        ++(each.reading == kOk ? good : refused);
    }
    std::cout << "[ COUNT    ] libarchive: " << std::size(kArchives) << " RAR archives in " << files << " files, "
              << good << " good, " << refused << " refused\n";
}

}  // namespace
}  // namespace archiver::test
