#pragma once
#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "shell/win32/confirmation_dialog_controls.h"
#include "win32/extraction/support/extraction_fixture.h"

namespace tovar::test {

/// Real archives changed by the browser's commands: with the real dialogs and the bundled libraries.
class ChangeFixture : public ExtractionFixture {
protected:
    void TearDown() override {
        EXPECT_TRUE(boxes.seen.empty()) << testing::PrintToString(boxes.seen.empty() ? L"" : boxes.seen[0].text);
        ExtractionFixture::TearDown();
    }

    void show(const wchar_t* data, const wchar_t* library) {
        libraries.bundled(library);
        create();
        archive = copyOfData(data);
        ASSERT_TRUE(open(archive));
        std::filesystem::create_directories(base());
    }
    void showZip() {
        libraries.bundled(L"InfoZip32.dll");
        show(L"zip\\zip.zip", L"UnZip32.dll");
    }
    void showLzh() { show(L"lzh\\unix-folders-level1.lzh", L"UnLha32.dll"); }
    /// Where files are that are added.
    [[nodiscard]] std::filesystem::path base() const { return std::filesystem::path(folder.path()) / L"to add"; }
    std::wstring write(const std::filesystem::path& name, const std::string& bytes) const {
        const std::filesystem::path path = base() / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << bytes;
        return path.native();
    }

    [[nodiscard]] Texts sortedNames() const {
        Texts names = browser().names();
        std::ranges::sort(names);
        return names;
    }
    [[nodiscard]] int rowOf(const std::wstring& name) const {
        const Texts names = browser().names();
        const auto found = std::ranges::find(names, name);
        EXPECT_NE(found, names.end()) << testing::PrintToString(names);
        return static_cast<int>(found - names.begin());
    }

    /// Answers the question that comes while something is done, and lets the work end.
    /// @return the question
    std::wstring answering(int answer, const std::function<void()>& act) const {
        std::wstring question;
        const DialogUser<IDC_LBL_QUESTION> user([&](HWND dialog) {
            question = textOf(::GetDlgItem(dialog, IDC_LBL_QUESTION));
            ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(answer, BN_CLICKED), 0);
        });
        act();
        EXPECT_TRUE(waitUntil([&] { return user.done(); }));
        runMessages();
        return question;
    }
    std::wstring change(BrowserCommand which, int answer) const {
        return answering(answer, [&] { command(which); });
    }
    void remove(const std::wstring& name, int answer = IDYES) const {
        browser().selectRow(rowOf(name));
        EXPECT_EQ(change(mnuEditDelete, answer), L"Delete the following files/folders ? ");
    }

    /// Leaves a copy of the archive where other programs can list it, if somebody has named a folder for that.
    void keep(const wchar_t* name) const {
        const wchar_t* const folderToKeep = ::_wgetenv(L"TOVAREX_KEEP_CHANGED");
        if (folderToKeep == nullptr) return;
        std::filesystem::copy_file(archive, std::filesystem::path(folderToKeep) / name,
                                   std::filesystem::copy_options::overwrite_existing);
    }

    std::wstring archive;
};

}  // namespace tovar::test
