#pragma once
#include "drivers/common_driver.h"
#include "drivers/text_listing.h"

namespace tovar {

/// ZIP, by "UnZip32.dll". Libraries below version 80 give no members through the functions of the convention, or not
/// all of them: what they write for their "-l" command is read.
class cUnZip final : public CommonDriver {
public:
    static const DriverDescription kDescription;

    cUnZip(ArchiverLibrary& library, MessageBoxes& messages, const RegionalSettings& regional);

    /// The check mode, under the name that it has for this library.
    [[nodiscard]] std::int16_t TestMode() const noexcept { return CheckMode(); }
    void setTestMode(std::int16_t mode) noexcept { setCheckMode(mode); }

    std::uint32_t SetArcFile(std::wstring_view fileName) override;

    // In a listing of text, all but the date are as the text says them.
    [[nodiscard]] std::wstring FileOriginal(std::uint32_t index) const override;
    [[nodiscard]] std::wstring FilePacked(std::uint32_t index) const override;
    [[nodiscard]] std::wstring FileRatio(std::uint32_t index) const override;
    [[nodiscard]] std::wstring FileDate(std::uint32_t index) const override;
    [[nodiscard]] std::wstring FILETIME(std::uint32_t index) const override;
    [[nodiscard]] std::wstring FileCRC(std::uint32_t index) const override;
    [[nodiscard]] bool textsFollowRecords() const override { return texts_.empty(); }

private:
    [[nodiscard]] const std::wstring& text(ListedField field, std::uint32_t index) const {
        return texts_[index][static_cast<std::size_t>(field)];
    }

    ListedTexts texts_;  ///< empty unless the listing was one of text
};

}  // namespace tovar
