#pragma once

// Numbers of the confirmation dialog and of its controls, for code and resource scripts. The buttons are IDYES and
// IDCANCEL: so Escape and the close box are No.

#define IDD_CONFIRMATION 625

#define IDC_LBL_QUESTION 6251
#define IDC_TXT_LIST 6252
#define IDC_LBL_NOTE 6253
#define IDC_PRG_WORK 6254
#define IDC_IMG_QUESTION 6255
