#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>

#include "archivers/formats/huffman_lz/block_encoder.h"
#include "archivers/formats/lzh/crc16.h"
#include "archivers/formats/lzh/lzh_reader.h"
#include "archivers/formats/lzh/new_header.h"
#include "fuzz/memory_file.h"

/// Packs any bytes by each method, in pieces whose length the first byte tells, and unpacks them again: they have to be
/// the same. No seeds are needed.
namespace archiver {
namespace {

using huffman_lz::BlockEncoder;
using huffman_lz::PackedBits;

std::string packed(std::span<const unsigned char> bytes, const huffman_lz::BlockShape& shape, std::size_t piece) {
    BlockEncoder encoder(shape);
    PackedBits whole;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t history = at < BlockEncoder::windowOf(shape) ? at : BlockEncoder::windowOf(shape);
        const std::size_t count = piece < bytes.size() - at ? piece : bytes.size() - at;
        PackedBits bits;
        encoder.encode(bytes.subspan(at - history, history + count), history, bits);
        whole.append(bits);
        at += count;
    }
    whole.fillByte();
    return whole.takeBytes();
}

void check(std::span<const unsigned char> bytes, const char* method, const huffman_lz::BlockShape& shape,
           std::size_t piece) {
    const std::string data = packed(bytes, shape, piece);
    lzh::NewMember member;
    member.name = "a";
    member.method = method;
    member.packedSize = data.size();
    member.originalSize = bytes.size();
    member.crc = lzh::crc16Of({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    const std::string archive = lzh::headerOf(member, {}) + data + '\0';
    const OpenResult opened = openLzh(
        std::make_unique<fuzz::MemoryFile>(reinterpret_cast<const std::uint8_t*>(archive.data()), archive.size()));
    std::string read;
    Member found;
    const auto sink = [&read](const char* some, std::size_t size) {
        read.append(some, size);
        return true;
    };
    if (!opened.reader || opened.reader->next(found) != kOk || opened.reader->read(sink) != kOk ||
        read != std::string(bytes.begin(), bytes.end())) {
        std::abort();
    }
}

}  // namespace
}  // namespace archiver

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const std::span<const unsigned char> bytes(data + 1, size - 1);
    const std::size_t piece = std::size_t{data[0]} * 64 + 300;
    archiver::check(bytes, "-lh5-", {14, 4}, piece);
    archiver::check(bytes, "-lh6-", {16, 5}, piece);
    archiver::check(bytes, "-lh7-", {17, 5}, piece);
    return 0;
}
