#pragma once

// Identifiers of the dialog in icons_tests.rc.
#define IDD_TEST 100
#define IDC_TEXT 101
#define IDC_THROW 102
