// The console host's commands that make and change archives, through the bundled libraries.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>

#include "host/console/console.h"
#include "recording/session.h"

namespace tovar::host {
namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::wstring>;
using Files = std::map<std::string, std::string>;

struct Recorder final : ConsoleOutput {
    std::string out, errors;
    bool seen = false;
    void write(std::string_view text) override { out += text; }
    void writeError(std::string_view text) override { errors += text; }
    bool errorsAreSeen() const override { return seen; }
};

/// In a folder of its own with some files, which is the current one.
class ConsolePacking : public testing::Test {
protected:
    ConsolePacking() : folder(recording::makeTemporaryFolder()), before_(fs::current_path()) {
        fs::current_path(folder);
        write("a.txt", "alpha");
        write("my docs/b,c.txt", std::string(50000, 'b'));
        write("my docs/deep/d.txt", "delta");
    }
    ~ConsolePacking() override {
        std::error_code ignored;
        fs::current_path(before_, ignored);
        fs::remove_all(folder, ignored);
    }

    void write(const fs::path& name, const std::string& bytes) const {
        fs::create_directories((folder / name).parent_path());
        std::ofstream(folder / name, std::ios::binary) << bytes;
    }
    int run(const Words& words) {
        output.out.clear();
        output.errors.clear();
        ConsoleMessages messages(output);
        SystemServices system(messages);
        return Console(output, system).run(parseArguments(words));
    }
    /// What the archive holds.
    Files unpacked(const std::wstring& archive) {
        fs::remove_all(folder / "out");
        EXPECT_EQ(run({L"extract", L"--to", L"out", archive}), kGood) << output.errors;
        Files files;
        for (const auto& each : fs::recursive_directory_iterator(folder / "out")) {
            if (!each.is_regular_file()) continue;
            std::ifstream stream(each.path(), std::ios::binary);
            files[each.path().lexically_relative(folder / "out").generic_string()] = {
                std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
        }
        return files;
    }

    const Files all{{"a.txt", "alpha"}, {"my docs/b,c.txt", std::string(50000, 'b')}, {"my docs/deep/d.txt", "delta"}};
    fs::path folder;
    Recorder output;

private:
    fs::path before_;
};

// More names than one call of the library takes: the rest is neither dropped nor taken twice.
TEST_F(ConsolePacking, TakesAsManyNamesAsAreGiven) {
#if defined(_WIN32)
    constexpr std::size_t kCount = 4005;  // making a file takes a millisecond there
#else
    constexpr std::size_t kCount = 12005;
#endif
    Words names;
    for (std::size_t each = 0; each < kCount; ++each) {
        names.push_back(L"n" + std::to_wstring(each) + L".txt");
        std::ofstream(fs::path(names.back()), std::ios::binary) << each;
    }
    Words words{L"create", L"many.zip"};
    words.insert(words.end(), names.begin(), names.end());
    ASSERT_EQ(run(words), kGood) << output.errors;
    EXPECT_NE(output.out.find(std::to_string(kCount) + " files are added\n"), std::string::npos);

    ASSERT_EQ(run({L"list", L"--json", L"many.zip"}), kGood) << output.errors;
    std::set<std::wstring> missing(names.begin(), names.end());
    std::size_t members = 0;
    const std::regex name(R"re("(n[0-9]+\.txt)")re");
    for (std::sregex_iterator each(output.out.begin(), output.out.end(), name), end; each != end; ++each, ++members) {
        const std::string text = (*each)[1];
        missing.erase(std::wstring(text.begin(), text.end()));
    }
    EXPECT_EQ(members, kCount);
    EXPECT_TRUE(missing.empty()) << missing.size();

    names.erase(names.begin());
    words = {L"delete", L"many.zip"};
    words.insert(words.end(), names.begin(), names.end());
    ASSERT_EQ(run(words), kGood) << output.errors;
    EXPECT_EQ(unpacked(L"many.zip"), (Files{{"n0.txt", "0"}}));
}

class PackedKind : public ConsolePacking, public testing::WithParamInterface<const wchar_t*> {
protected:
    std::wstring archive = std::wstring(L"new.") + GetParam();
};

TEST_P(PackedKind, IsCreatedOfFilesAndFolders) {
    EXPECT_EQ(run({L"create", archive, L"a.txt", L"my docs"}), kGood) << output.errors;
    EXPECT_NE(output.out.find("a.txt"), std::string::npos) << output.out;
    EXPECT_EQ(output.errors, "");
    EXPECT_EQ(unpacked(archive), all);
    EXPECT_EQ(run({L"test", archive}), kGood);
}

TEST_P(PackedKind, IsCreatedOfTheCurrentFolder) {
    EXPECT_EQ(run({L"create", archive, L"."}), kGood) << output.errors;
    EXPECT_EQ(unpacked(archive), all) << "and not of itself";
}

TEST_P(PackedKind, IsStoredAtLevel0) {
    EXPECT_EQ(run({L"create", L"--level", L"0", archive, L"my docs"}), kGood) << output.errors;
    EXPECT_GT(fs::file_size(archive), 50000U);
    EXPECT_EQ(run({L"create", L"--level", L"9", L"tight." + std::wstring(GetParam()), L"my docs"}), kGood);
    EXPECT_LT(fs::file_size(L"tight." + std::wstring(GetParam())), 5000U);
}

TEST_P(PackedKind, TakesNoFoldersWithoutRecursion) {
    EXPECT_EQ(run({L"create", L"--no-recurse", archive, L"a.txt", L"my docs/b,c.txt"}), kGood) << output.errors;
    EXPECT_EQ(unpacked(archive), (Files{{"a.txt", "alpha"}, {"my docs/b,c.txt", std::string(50000, 'b')}}));
}

TEST_P(PackedKind, IsNotCreatedOverAFile) {
    write(fs::path(archive), "precious");
    EXPECT_EQ(run({L"create", archive, L"a.txt"}), kBadArchive);
    EXPECT_NE(output.errors.find("this is there already"), std::string::npos) << output.errors;
    EXPECT_EQ(fs::file_size(archive), 8U);
}

TEST_P(PackedKind, IsNotCreatedOfWhatIsNotThere) {
    EXPECT_EQ(run({L"create", archive, L"a.txt", L"gone.txt"}), kNoMember);
    EXPECT_EQ(output.errors, "tovar: gone.txt: there is no such file or folder\n");
    EXPECT_FALSE(fs::exists(archive));
}

TEST_P(PackedKind, IsNotCreatedOfWhatLiesElsewhere) {
    EXPECT_EQ(run({L"create", archive, L"../x"}), kBadLine);
    EXPECT_EQ(output.errors, "tovar: ../x: this lies outside of the folder that names count from\n");
    EXPECT_FALSE(fs::exists(archive));
}

TEST_P(PackedKind, IsReportedAsJson) {
    EXPECT_EQ(run({L"create", L"--json", archive, L"a.txt"}), kGood) << output.errors;
    EXPECT_EQ(output.out.rfind("{\"archive\":\"", 0), 0U) << output.out;
    EXPECT_NE(output.out.find("\"from\":\""), std::string::npos);
    EXPECT_NE(output.out.find("\"good\":true,\"code\":0,\"message\":\"\",\"output\":["), std::string::npos)
        << output.out;
}

TEST_P(PackedKind, ShowsItsProgress) {
    output.seen = true;
    EXPECT_EQ(run({L"create", archive, L"a.txt"}), kGood);
    EXPECT_NE(output.errors.find("a.txt  "), std::string::npos) << output.errors;
    EXPECT_TRUE(output.errors.ends_with("\r\x1B[K")) << "gone in the end";
}

INSTANTIATE_TEST_SUITE_P(Kinds, PackedKind, testing::Values(L"zip", L"lzh", L"cab"), [](const auto& each) {
    const std::wstring name = each.param;
    return std::string(name.begin(), name.end());
});

class ChangedKind : public PackedKind {
protected:
    void SetUp() override { ASSERT_EQ(run({L"create", archive, L"a.txt", L"my docs"}), kGood) << output.errors; }
    void makeOld(const fs::path& file) const {
        fs::last_write_time(folder / file, fs::file_time_type::clock::now() - std::chrono::hours(24 * 400));
    }
};

TEST_P(ChangedKind, TakesMoreFilesAndReplacesOthers) {
    write("a.txt", "changed");
    write("new.txt", "new");
    EXPECT_EQ(run({L"add", archive, L"a.txt", L"new.txt"}), kGood) << output.errors;
    Files expected = all;
    expected["a.txt"] = "changed";
    expected["new.txt"] = "new";
    EXPECT_EQ(unpacked(archive), expected);
}

TEST_P(ChangedKind, IsMadeWhenItIsNotThere) {
    fs::remove(archive);
    EXPECT_EQ(run({L"add", archive, L"a.txt"}), kGood) << output.errors;
    EXPECT_EQ(unpacked(archive), (Files{{"a.txt", "alpha"}}));
}

TEST_P(ChangedKind, TakesOnlyNewerFiles) {
    write("a.txt", "older");
    write("new.txt", "new");
    makeOld("a.txt");
    EXPECT_EQ(run({L"add", L"--update", archive, L"a.txt", L"new.txt"}), kGood) << output.errors;
    Files expected = all;
    expected["new.txt"] = "new";
    EXPECT_EQ(unpacked(archive), expected);
    EXPECT_EQ(run({L"add", L"--update", archive, L"a.txt"}), kGood) << "nothing is newer";
    EXPECT_EQ(output.errors, "");
    EXPECT_EQ(run({L"add", L"--freshen", archive, L"a.txt"}), kGood);
    EXPECT_EQ(output.errors, "");
    EXPECT_EQ(run({L"add", L"--json", L"--update", archive, L"a.txt"}), kGood);
    EXPECT_NE(output.out.find(R"("good":true)"), std::string::npos) << output.out;
    EXPECT_EQ(unpacked(archive), expected);
}

TEST_P(ChangedKind, TakesOnlyFilesThatItHolds) {
    write("new.txt", "new");
    write("a.txt", "newer");
    fs::last_write_time(folder / "a.txt", fs::file_time_type::clock::now() + std::chrono::hours(24));
    EXPECT_EQ(run({L"add", L"--freshen", archive, L"a.txt", L"new.txt"}), kGood) << output.errors;
    Files expected = all;
    expected["a.txt"] = "newer";
    EXPECT_EQ(unpacked(archive), expected);
}

TEST_P(ChangedKind, TakesFilesAway) {
    write("moved.txt", "moved");
    EXPECT_EQ(run({L"add", L"--move", archive, L"moved.txt"}), kGood) << output.errors;
    EXPECT_FALSE(fs::exists("moved.txt"));
    EXPECT_EQ(unpacked(archive).at("moved.txt"), "moved");
}

TEST_P(ChangedKind, LosesMembers) {
    EXPECT_EQ(run({L"delete", archive, L"a.txt", L"my docs/deep/"}), kGood) << output.errors;
    EXPECT_EQ(unpacked(archive), (Files{{"my docs/b,c.txt", std::string(50000, 'b')}}));
}

TEST_P(ChangedKind, KnowsWhenNoMemberIsCalledSo) {
    EXPECT_EQ(run({L"delete", archive, L"nosuch.txt"}), kNoMember);
    EXPECT_EQ(output.errors, "tovar: " + fs::path(archive).string() + ": no member is called so\n");
    EXPECT_EQ(unpacked(archive), all);
}

TEST_P(ChangedKind, LosesNothingWhenItIsNotThere) {
    EXPECT_EQ(run({L"delete", L"none." + std::wstring(GetParam()), L"a.txt"}), kBadArchive);
    EXPECT_NE(output.errors.find("there is no such file"), std::string::npos) << output.errors;
}

INSTANTIATE_TEST_SUITE_P(Kinds, ChangedKind, testing::Values(L"zip", L"lzh"), [](const auto& each) {
    const std::wstring name = each.param;
    return std::string(name.begin(), name.end());
});

struct RefusedCase {
    const char* name;
    Words words;
    int code;
    std::string error;
};
class RefusedPacking : public ConsolePacking, public testing::WithParamInterface<RefusedCase> {};

TEST_P(RefusedPacking, SaysWhy) {
    EXPECT_EQ(run(GetParam().words), GetParam().code);
    EXPECT_EQ(output.errors, GetParam().error);
    EXPECT_EQ(output.out, "");
}

INSTANTIATE_TEST_SUITE_P(
    Lines, RefusedPacking,
    testing::Values(RefusedCase{"Rar",
                                {L"create", L"a.rar", L"a.txt"},
                                kBadLine,
                                "tovar: a.rar: archives of this kind can only be read\n"},
                    RefusedCase{"AddToTar",
                                {L"add", L"a.tgz", L"a.txt"},
                                kBadLine,
                                "tovar: a.tgz: archives of this kind can only be read\n"},
                    RefusedCase{"DeleteFromAce",
                                {L"delete", L"a.ace", L"a.txt"},
                                kBadLine,
                                "tovar: a.ace: archives of this kind can only be read\n"},
                    RefusedCase{"AddToCab",
                                {L"add", L"a.cab", L"a.txt"},
                                kBadLine,
                                "tovar: a.cab: cabinets cannot be changed; tovar create makes new ones\n"},
                    RefusedCase{"DeleteFromCab",
                                {L"delete", L"a.cab", L"a.txt"},
                                kBadLine,
                                "tovar: a.cab: cabinets cannot be changed; tovar create makes new ones\n"},
                    RefusedCase{"MoveToCab",
                                {L"create", L"--move", L"a.cab", L"a.txt"},
                                kBadLine,
                                "tovar: a.cab: files are not moved into cabinets\n"},
                    RefusedCase{"EncryptedLzh",
                                {L"create", L"--password", L"a.lzh", L"a.txt"},
                                kBadLine,
                                "tovar: a.lzh: archives of this kind cannot be encrypted\n"},
                    RefusedCase{"EncryptedCab",
                                {L"create", L"--password", L"a.cab", L"a.txt"},
                                kBadLine,
                                "tovar: a.cab: archives of this kind cannot be encrypted\n"},
                    RefusedCase{"NoArchivesName",
                                {L"create", L"a.txt", L"a.txt"},
                                kBadArchive,
                                "tovar: a.txt: this is no archive's name\n"}),
    [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace tovar::host
