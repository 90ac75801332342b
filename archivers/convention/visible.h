#pragma once

/// Marks what a library exports: elsewhere than in Windows, all else is hidden.
#if defined(_WIN32)
#define ARCHIVER_VISIBLE  // the module definition file exports them, undecorated
#else
#define ARCHIVER_VISIBLE __attribute__((visibility("default")))
#endif
