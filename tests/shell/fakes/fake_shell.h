#pragma once
#include "shell/fakes/fake_file_system.h"
#include "shell/fakes/fake_message_boxes.h"
#include "shell/fakes/fake_system_information.h"
#include "shell/fakes/fake_system_paths.h"
#include "shell/path_operations.h"

namespace tovar::test {

/// The path operations with every port faked. There is a drive C with an empty root as current folder.
struct FakeShell {
    FakeFileSystem files;
    FakeSystemPaths paths{files};
    FakeSystemInformation information;
    FakeMessageBoxes messages;
    PathOperations operations{files, paths, information, messages};

    FakeShell() { files.addFolder(LR"(C:\)"); }
};

}  // namespace tovar::test
