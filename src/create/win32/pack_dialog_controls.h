#pragma once

// Numbers of the dialogs for creating archives and of their controls, for code and resource scripts.

#define IDD_ARC_PACK 650
#define IDD_ARC_MESSAGES 651
#define IDD_ARC_COMMENT 652

#define IDC_CMB_PACKER 6501
#define IDC_CMB_ACTION 6502
#define IDC_CMB_LEVEL 6503
#define IDC_TXT_ARC_FILE 6504
#define IDC_CMD_ARC_FILE 6505
#define IDC_LST_ARC_LIST 6506
#define IDC_CMD_ARC_LIST 6507
// The members of an array follow each other.
#define IDC_CHK_ARC 6510
#define IDC_CHK_ARC_FOLDER_INFO 6511
#define IDC_CHK_ARC_PASSWORD 6512
#define IDC_CHK_ARC_SYSTEM 6513
#define IDC_CHK_ARC_FULL_MESSAGE 6514
#define IDC_GRP_PACKER 6530
#define IDC_GRP_COMPRESSION 6531
#define IDC_GRP_OPTION 6532
#define IDC_LBL_ACTION 6533
#define IDC_LBL_LEVEL 6534
#define IDC_LBL_ARC_FILE 6535
#define IDC_LBL_ARC_LIST 6536

#define IDC_TXT_MESSAGES 6541
#define IDC_CMD_COPY 6542

#define IDC_LBL_COMMENT 6551
#define IDC_TXT_COMMENT 6552
