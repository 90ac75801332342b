#pragma once
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

#include "browser/browser_commands.h"
#include "win32/extraction/support/dialog_user.h"
#include "win32/system/support/system_fixture.h"
#include "win32/system/support/waiting.h"

namespace tovar::test {

/// CRC-32 of ISO 3309, as archives keep it.
inline std::uint32_t crc32(const std::string& bytes) {
    std::uint32_t crc = ~0U;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ (0xEDB88320U & (0U - (crc & 1U)));
    }
    return ~crc;
}

inline std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// What a file holds.
struct Content {
    std::size_t size = 0;
    std::uint32_t crc = 0;
    bool operator==(const Content&) const = default;
};
/// By the path below a folder, with "/".
using Files = std::map<std::string, Content>;

inline void PrintTo(const Content& content, std::ostream* stream) {
    *stream << content.size << " bytes, CRC " << std::hex << content.crc << std::dec;
}

inline Files filesBelow(const std::filesystem::path& folder) {
    Files files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file()) continue;
        const std::string bytes = contentOf(entry.path());
        const std::u8string name = std::filesystem::relative(entry.path(), folder).generic_u8string();
        files[std::string(name.begin(), name.end())] = {bytes.size(), crc32(bytes)};
    }
    return files;
}

/// A browser whose user extracts members with the real dialog.
class ExtractionFixture : public SystemFixture {
protected:
    /// Chooses a command of the browser's menu.
    void command(BrowserCommand which) const {
        ::PostMessageW(browser().window(), WM_COMMAND, MAKEWPARAM(which, 0), 0);
    }

    /// Extracts as the user does; returns when the dialog is closed.
    /// @param use  ends by pressing OK or Cancel
    void extract(const std::function<void(const UnpackControls&)>& use) const {
        const UnpackDialogUser user([&](HWND dialog) { use({dialog}); });
        command(mnuEditExtract);
        ASSERT_TRUE(waitUntil([&] { return user.done(); }));
        runMessages();
    }

    void selectAll() const {
        for (int row = 0; row < browser().rowCount(); ++row) browser().selectRow(row);
    }

    /// A file of the test data, copied into the test's folder.
    std::wstring copyOfData(const std::wstring& name) const {
        const std::filesystem::path from = staged::productsFolder() / L"data" / name;
        const std::filesystem::path to = folder / from.filename().native();
        std::filesystem::copy_file(from, to);
        return to.native();
    }
};

}  // namespace tovar::test
