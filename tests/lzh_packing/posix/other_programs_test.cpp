#include <cstdlib>
#include <string>

#include "lzh_packing/support/packing_fixture.h"

/// Other programs read the archives without a complaint, and give the same bytes.
namespace archiver::test {
namespace {

struct Program {
    const char* name;
    const char* call;  ///< unpacks ARC into the current folder
};

/// Methods and headers know nothing of each other: not every pair of them is tried.
struct Form {
    const char* method;
    const char* level;
};

class LzhOtherPrograms : public LzhPackingTest, public testing::WithParamInterface<std::tuple<Program, Form>> {};

TEST_P(LzhOtherPrograms, UnpackWhatIsPacked) {
    const auto& [program, form] = GetParam();
    if (std::system((std::string("command -v ") + program.name + " >/dev/null").c_str()) != 0) {
        GTEST_SKIP() << program.name << " is not installed";
    }
    Contents files = {{"empty", ""},
                      {"one", "1"},
                      {"equal", std::string(100000, 'e')},
                      {"random", randomBytes(70000)},
                      {"docs/text", textOf(300'000)},
                      {"docs/deep/far", randomBytes(65000) + randomBytes(65000) + randomBytes(8191)}};
    for (const auto& [name, bytes] : files) source(name, bytes);
    ASSERT_EQ(run(std::string("a -r2 -x1 ") + form.method + ' ' + form.level + " ARC BASE *.*"), kOk);
    const std::filesystem::path out = folder_.path() / "out";
    std::filesystem::create_directories(out);
    const std::string call = "cd '" + out.string() + "' && " + program.call + " >../log 2>&1";
    ASSERT_EQ(std::system(call.c_str()), 0) << readFile(folder_.path() / "log");
    for (const auto& [name, bytes] : files) EXPECT_TRUE(readFile(out / name) == bytes) << name;
}

INSTANTIATE_TEST_SUITE_P(Programs, LzhOtherPrograms,
                         testing::Combine(testing::Values(Program{"lha", "lha xq ../a.lzh"},
                                                          Program{"7zz", "7zz x -y ../a.lzh"},
                                                          Program{"bsdtar", "bsdtar -xf ../a.lzh"}),
                                          testing::Values(Form{"-jm2", "-h0"}, Form{"-jm2", "-h1"}, Form{"-jm2", "-h2"},
                                                          Form{"-jm3", "-h2"}, Form{"-jm4", "-h2"})),
                         [](const auto& each) {
                             return std::string(std::get<0>(each.param).name) + (std::get<1>(each.param).method + 1) +
                                    (std::get<1>(each.param).level + 1);
                         });

}  // namespace
}  // namespace archiver::test
