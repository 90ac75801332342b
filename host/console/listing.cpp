#include "host/console/listing.h"

#include <cstdio>

#include "host/console/json_text.h"

namespace tovar::host {
namespace {

/// Appends a field, filled up with blanks to a width; `right` puts the blanks before it.
void appendField(std::string& out, std::wstring_view text, std::size_t width, bool right) {
    const std::size_t blanks = text.size() < width ? width - text.size() : 0;
    if (right) out.append(blanks, ' ');
    appendPrintable(out, text);
    if (!right) out.append(blanks, ' ');
    out += "  ";
}

/// Where the member lies and how it is called, as one path; nothing before it for one in the root.
std::wstring pathAndName(const ArchiveDriver& driver, std::uint32_t index) {
    std::wstring path = driver.FilePath(index);
    if (path == L"\\") path.clear();
    return path + driver.FileName(index);
}

}  // namespace

const char* const kListHeading =
    "      Original         Packed   Ratio  Date      Time      Attr  Type     CRC   Name\n";

void appendLine(std::string& out, const ArchiveDriver& driver, std::uint32_t index) {
    appendField(out, driver.FileOriginal(index), 14, true);
    appendField(out, driver.FilePacked(index), 13, true);
    appendField(out, driver.FileRatio(index), 6, true);
    appendField(out, driver.FileDate(index), 8, false);
    appendField(out, driver.FILETIME(index), 8, false);
    appendField(out, driver.FileAttr(index), 4, false);
    appendField(out, driver.FileType(index), 7, false);
    appendField(out, driver.FileCRC(index), 4, false);
    appendPrintable(out, pathAndName(driver, index));
    out += '\n';
}

void appendJsonEntry(std::string& out, const ArchiveDriver& driver, std::uint32_t index) {
    const auto& record = driver.entries().record(index);
    char numbers[160];
    out += "{\"path\":";
    appendJson(out, driver.FilePath(index));
    out += ",\"name\":";
    appendJson(out, driver.FileName(index));
    std::snprintf(numbers, sizeof numbers, ",\"original\":%llu,\"packed\":%llu,\"ratio\":%s%d.%d,",
                  static_cast<unsigned long long>(record.original), static_cast<unsigned long long>(record.packed),
                  record.ratio < 0 ? "-" : "", record.ratio < 0 ? -record.ratio / 10 : record.ratio / 10,
                  record.ratio < 0 ? -record.ratio % 10 : record.ratio % 10);
    out += numbers;
    if (const auto date = driver.calendarDate(index)) {
        std::snprintf(numbers, sizeof numbers, "\"date\":\"%04d-%02d-%02d\",", date->year, date->month, date->day);
        out += numbers;
    } else {
        out += "\"date\":null,";
    }
    if (const auto time = driver.clockTime(index)) {  // the second counts steps of two
        std::snprintf(numbers, sizeof numbers, "\"time\":\"%02d:%02d:%02d\",", time->hour, time->minute,
                      time->second * 2);
        out += numbers;
    } else {
        out += "\"time\":null,";
    }
    out += "\"attributes\":";
    appendJson(out, driver.FileAttr(index));
    out += ",\"type\":";
    appendJson(out, driver.FileType(index));
    std::snprintf(numbers, sizeof numbers, ",\"crc\":\"%08x\"}", static_cast<unsigned>(record.crc));
    out += numbers;
}

}  // namespace tovar::host
