#pragma once
#include <string>
#include <vector>

#include "drivers/common_driver.h"
#include "drivers/fakes/fake_archiver_library.h"
#include "shell/fakes/fake_message_boxes.h"

namespace tovar::test {

/// A driver over a fake library, with everything it needs.
struct DriverFixture {
    using Calls = std::vector<std::wstring>;

    const DriverDescription description{.library = L"Some32.dll", .prefix = "Some", .messageTitle = L"Some Message"};
    FakeArchiverLibrary library;
    FakeMessageBoxes messages;
    RegionalSettings regional;
    CommonDriver driver{description, library, messages, regional};
    int window = 0;
    const WindowHandle owner = &window;
};

}  // namespace tovar::test
