#pragma once

namespace tovar {

/// Lets the calling thread's pending window messages be processed. A request to end the program is left for its owner.
void runPendingMessages();

}  // namespace tovar
