#include <gtest/gtest.h>

#include "unpacking/fakes/unpack_scene.h"

namespace archiver::test {
namespace {

struct PrintScene : UnpackScene {
    using UnpackScene::UnpackScene;
    std::string printed;
    std::size_t most = static_cast<std::size_t>(-1);

    ReturnCode print() {
        events.onBegin = [this](const Member& member) {
            printed += "[" + member.name + "]";
            return true;
        };
        summary = printMembers(reader, chosen, password, events, [this](const char* bytes, std::size_t size) {
            printed.append(bytes, size);
            return printed.size() < most;
        });
        return summary.code;
    }
};

TEST(PrintMembers, GivesTheBytesOfOneAfterTheOther) {
    PrintScene scene({folder("d/"), file("a", "one"), file("b", "two")});
    scene.reader.detaches = true;
    EXPECT_EQ(scene.print(), kOk);
    EXPECT_EQ(scene.printed, "[a]one[b]two");
    EXPECT_EQ(scene.summary.bytes, 6U);
    EXPECT_EQ(scene.events.reports, (Lines{"tested a", "tested b"}));
}

TEST(PrintMembers, EndsWhenThereIsEnough) {
    PrintScene scene({file("a", "one"), file("b", "two")});
    scene.most = 6;
    EXPECT_EQ(scene.print(), kUserCancel);
    EXPECT_EQ(scene.printed, "[a]one");
}

TEST(PrintMembers, GivesNothingThatAWrongPasswordMade) {
    FakeMember member = encrypted("a", "pw", "secret");
    member.garbage = true;
    member.wrong = kFileCrc;
    PrintScene scene({member});
    scene.password = "wrong";
    scene.events.passwords = {"pw"};
    EXPECT_EQ(scene.print(), kOk);
    EXPECT_EQ(scene.printed, "[a]secret");
    EXPECT_EQ(scene.summary.bytes, 6U);
}

TEST(PrintMembers, GoesOnAfterADamagedOne) {
    FakeMember bad = file("a", "on");
    bad.code = kFileCrc;
    PrintScene scene({bad, file("b", "two")});
    EXPECT_EQ(scene.print(), kFileCrc);
    EXPECT_EQ(scene.printed, "[a]on[b]two");
}

}  // namespace
}  // namespace archiver::test
