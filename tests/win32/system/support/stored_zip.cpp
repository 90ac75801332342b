#include "win32/system/support/stored_zip.h"

#include <array>
#include <stdexcept>

namespace tovar::test {
namespace {

constexpr std::uint16_t kVersion = 10, kZip64Version = 45, kTime = 0x8BDD, kDate = 0x2AB1;

void append(std::string& bytes, std::uint64_t value, int count) {
    for (int index = 0; index < count; ++index) bytes += static_cast<char>(value >> (8 * index) & 0xFF);
}

constexpr std::array<std::uint32_t, 256> makeCrcTable() {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t byte = 0; byte < table.size(); ++byte) {
        std::uint32_t crc = byte;
        for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ ((crc & 1) != 0 ? 0xEDB88320 : 0);
        table[byte] = crc;
    }
    return table;
}

std::uint32_t crcOf(std::string_view content) {
    static constexpr std::array<std::uint32_t, 256> kTable = makeCrcTable();
    std::uint32_t crc = 0xFFFFFFFF;
    for (const char byte : content) crc = crc >> 8 ^ kTable[(crc ^ static_cast<unsigned char>(byte)) & 0xFF];
    return ~crc;
}

/// What local and directory header have in common.
std::string commonFields(std::string_view name, std::string_view content) {
    std::string fields;
    append(fields, kVersion, 2);
    append(fields, 0, 2);  // flags
    append(fields, 0, 2);  // stored
    append(fields, kTime, 2);
    append(fields, kDate, 2);
    append(fields, crcOf(content), 4);
    append(fields, content.size(), 4);
    append(fields, content.size(), 4);
    append(fields, name.size(), 2);
    append(fields, 0, 2);  // extra fields
    return fields;
}

}  // namespace

StoredZip::StoredZip(const std::filesystem::path& file) : file_(::_wfopen(file.c_str(), L"wb")) {
    if (!file_) throw std::runtime_error("the archive cannot be made");
    std::setvbuf(file_.get(), nullptr, _IOFBF, 1 << 20);
}

void StoredZip::add(std::string_view name, std::string_view content) {
    const std::string fields = commonFields(name, content);
    directory_ += "PK\x01\x02";
    append(directory_, kVersion, 2);  // made on MS-DOS
    directory_ += fields;
    append(directory_, 0, 2);  // comment
    append(directory_, 0, 2);  // disk
    append(directory_, 0, 2);  // internal attributes
    append(directory_, 0, 4);  // external attributes
    append(directory_, size_, 4);
    directory_ += name;
    write("PK\x03\x04");
    write(fields);
    write(name);
    write(content);
    ++members_;
}

std::uint64_t StoredZip::finish() {
    const std::uint64_t start = size_, length = directory_.size();
    write(directory_);
    const bool many = members_ > 0xFFFE;
    std::string end;
    if (many) {
        end += "PK\x06\x06";
        append(end, 44, 8);  // what follows of this record
        append(end, kZip64Version, 2);
        append(end, kZip64Version, 2);
        append(end, 0, 4);
        append(end, 0, 4);
        append(end, members_, 8);
        append(end, members_, 8);
        append(end, length, 8);
        append(end, start, 8);
        end += "PK\x06\x07";
        append(end, 0, 4);
        append(end, start + length, 8);
        append(end, 1, 4);
    }
    end += "PK\x05\x06";
    append(end, 0, 4);  // disks
    append(end, many ? 0xFFFF : members_, 2);
    append(end, many ? 0xFFFF : members_, 2);
    append(end, length, 4);
    append(end, start, 4);
    append(end, 0, 2);
    write(end);
    if (std::fflush(file_.get()) != 0) throw std::runtime_error("the archive cannot be written");
    file_.reset();
    return size_;
}

void StoredZip::write(std::string_view bytes) {
    if (std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) != bytes.size()) {
        throw std::runtime_error("the archive cannot be written");
    }
    size_ += bytes.size();
}

}  // namespace tovar::test
