#pragma once

// Numbers of the progress and the password dialog and of their controls, for code and resource scripts. The Cancel
// buttons are IDCANCEL.

#define IDD_ARC_PROGRESS 640
#define IDD_ARC_PASSWORD 641

#define IDC_PBAR1 6401
#define IDC_LBL_DIR 6402
#define IDC_LBL_FILE 6403
#define IDC_LBL_SIZE 6404
#define IDC_LBL_SUMMARY 6405

#define IDC_LBL_PROMPT 6410
#define IDC_LBL_ARCHIVE 6411
#define IDC_TXT_PASSWORD 6412
#define IDC_CHK_SHOW 6413
