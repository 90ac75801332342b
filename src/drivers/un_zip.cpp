#include "drivers/un_zip.h"

#include <exception>

#include "drivers/return_codes.h"

namespace tovar {
namespace {

constexpr std::uint16_t kListsByFunctions = 80;  ///< from this version on
constexpr std::wstring_view kListCommand = L"-l ";

}  // namespace

constinit const DriverDescription cUnZip::kDescription{
    .library = L"UnZip32.dll",
    .prefix = "UnZip",
    .messageTitle = L"ZIP Message",
    .minimumVersion = 78,
    .changeable = true,
    .columns = {.crcHeader = L"CRC32"},
    .extract = {.base = L" -x -i --j", .keepFolder = L" --j", .flat = L" -j", .overwrite = L" -o", .skip = L" -n"},
};

cUnZip::cUnZip(ArchiverLibrary& library, MessageBoxes& messages, const RegionalSettings& regional)
    : CommonDriver(kDescription, library, messages, regional) {}

std::uint32_t cUnZip::SetArcFile(std::wstring_view fileName) {
    texts_.clear();
    if (Version() >= kListsByFunctions) return CommonDriver::SetArcFile(fileName);
    EntryTable& listed = beginListing();
    setCommandLine(std::wstring(kListCommand) +
                   std::wstring(fileName));  // such a library takes all behind the blank for the name
    if (ReturnCode() != return_code::kOk) {
        tellNotOpened(fileName);
        return 0;
    }
    try {
        setListingComplete(readTextListing(OutPut(), listed, texts_));
    } catch (const std::exception&) {
        // Memory ran out: what was read stays.
    }
    return listed.size();
}

std::wstring cUnZip::FileOriginal(std::uint32_t index) const {
    return index < texts_.size() ? text(ListedField::Original, index) : CommonDriver::FileOriginal(index);
}

std::wstring cUnZip::FilePacked(std::uint32_t index) const {
    return index < texts_.size() ? text(ListedField::Packed, index) : CommonDriver::FilePacked(index);
}

std::wstring cUnZip::FileRatio(std::uint32_t index) const {
    return index < texts_.size() ? text(ListedField::Ratio, index) : CommonDriver::FileRatio(index);
}

std::wstring cUnZip::FileDate(std::uint32_t index) const {
    const bool asText = index < texts_.size() && !dosDateOfText(text(ListedField::Date, index));
    return asText ? text(ListedField::Date, index) : CommonDriver::FileDate(index);
}

std::wstring cUnZip::FILETIME(std::uint32_t index) const {
    return index < texts_.size() ? text(ListedField::Time, index) : CommonDriver::FILETIME(index);
}

std::wstring cUnZip::FileCRC(std::uint32_t index) const {
    return index < texts_.size() ? text(ListedField::Crc, index) : CommonDriver::FileCRC(index);
}

}  // namespace tovar
