#pragma once
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "create/zip_engine.h"
#include "shell/fakes/fake_file_system.h"
#include "shell/fakes/fake_message_boxes.h"
#include "shell/fakes/fake_system_paths.h"
#include "shell/fakes/fake_text_codec.h"

namespace tovar::test {

/// Keeps what the engine hands over, and acts as told. Its 8-bit texts are ISO 8859-1.
class FakeZipLibrary final : public ZipLibrary {
public:
    struct Call {
        archiver::zip_abi::Options options{};  ///< its pointers are not valid any more
        std::string date, rootFolder, temporaryFolder;
        std::int32_t count = 0;
        std::string archive;
        std::vector<std::string> slots;  ///< as many as the count says
    };

    FakeZipLibrary(const TextCodec& codec, const SystemPaths& system) : texts_(nullptr, codec, system) {}

    std::vector<Call> calls;
    std::vector<std::int32_t> answers;             ///< by call; 0 beyond the last
    std::function<void(ZipEvents&)> whileRunning;  ///< the library calls back

    LibraryTexts& texts() override { return texts_; }
    std::int32_t run(const archiver::zip_abi::Options& options, const archiver::zip_abi::Command& command,
                     ZipEvents& events) override {
        Call call{options, options.date, options.rootFolder, options.temporaryFolder, command.count, command.archive,
                  {}};
        for (std::int32_t slot = 0; slot < command.count; ++slot) call.slots.emplace_back(command.names[slot]);
        calls.push_back(std::move(call));
        if (whileRunning) whileRunning(events);
        return calls.size() <= answers.size() ? answers[calls.size() - 1] : 0;
    }

private:
    LibraryTexts texts_;
};

/// Progress dialogs that write down what they are told.
class FakeProgressDialogs final : public ProgressDialogs {
public:
    std::vector<std::wstring> log;  ///< such as "caption new.zip"
    float processed = 0, total = 0;
    bool cancelled = false;
    int open = 0, shown = 0;
    std::function<void()> onPump;  ///< whenever messages run
    WindowHandle owner = nullptr;

    std::unique_ptr<ArcProgress> show(WindowHandle window) override {
        owner = window;
        return std::make_unique<Dialog>(*this);
    }

private:
    class Dialog final : public ArcProgress {
    public:
        explicit Dialog(FakeProgressDialogs& to) : to_(to) { ++to_.shown, ++to_.open; }
        ~Dialog() override { --to_.open; }
        void SetCaption(std::wstring_view title) override { note(L"caption ", title); }
        void Summary(std::wstring_view text) override { note(L"summary ", text); }
        void SetPrg1(float processed, float total) override {
            if (processed >= 0) to_.processed = processed;
            if (total >= 0) to_.total = total;
            if (to_.onPump) to_.onPump();
        }
        [[nodiscard]] bool Canceled() const override { return to_.cancelled; }
        void showFolder(std::wstring_view path) override { note(L"folder ", path); }
        void showFile(std::wstring_view name) override { note(L"file ", name); }

    private:
        void note(const wchar_t* what, std::wstring_view text) { to_.log.push_back(what + std::wstring(text)); }
        FakeProgressDialogs& to_;
    };
};

struct FakeComments final : CommentSource {
    std::optional<std::wstring> answer;
    int asked = 0;
    std::optional<std::wstring> ask(WindowHandle) override {
        ++asked;
        return answer;
    }
};

struct FakePasswords final : PasswordSource {
    std::vector<std::optional<std::wstring>> answers;  ///< in order; none beyond the last
    std::vector<std::wstring> labels;
    std::optional<std::wstring> ask(WindowHandle, std::wstring_view label) override {
        labels.emplace_back(label);
        return labels.size() <= answers.size() ? answers[labels.size() - 1] : std::nullopt;
    }
};

/// A zip engine over fakes, with a folder of files.
class ZipFixture : public testing::Test {
protected:
    struct Libraries final : ZipLibraries {
        ZipLibrary* library = nullptr;
        ZipLibrary* get() override { return library; }
    };

    ZipFixture() {
        libraries.library = &library;
        files.addFile(LR"(C:\base\a.txt)", "12345");
        files.addFile(LR"(C:\base\b.txt)", "123");
        files.addFile(LR"(C:\base\dir\c.txt)", "1234567");
        files.addFile(LR"(C:\base\dir\deep\d.txt)", "12");
        files.addFolder(LR"(C:\before)");
        system.folders[L'C'] = LR"(C:\before)";
    }

    std::optional<bool> run(std::wstring_view command, std::wstring_view list) {
        return engine.run({owner, command, archive, list, LR"(C:\base)"});
    }
    static std::wstring manyNames(std::size_t count) {
        std::wstring list;
        for (std::size_t each = 1; each <= count; ++each) list += L"n" + std::to_wstring(each) + L"\r\n";
        return list;
    }
    [[nodiscard]] std::wstring boxes() const {
        std::wstring all;
        for (const auto& each : messages.shown) {
            all += L"[" + each.title + L"|" + each.text + L"]";
            EXPECT_EQ(each.icon, MessageIcon::Exclamation);
        }
        return all;
    }

    int window = 0;
    const WindowHandle owner = &window;
    std::wstring archive = LR"(C:\out\new.zip)";
    FakeFileSystem files;
    FakeSystemPaths system{files};
    FakeTextCodec codec;
    FakeMessageBoxes messages;
    FakeProgressDialogs progress;
    FakeComments comments;
    FakePasswords passwords;
    FakeZipLibrary library{codec, system};
    Libraries libraries;
    ZipEngine engine{{libraries, progress, comments, passwords, messages, files, system}};
};

}  // namespace tovar::test
