#pragma once

// Numbers of the extraction dialog and of its controls, for code and resource scripts.

#define IDD_ARC_UNPACK 630

#define IDC_WEN_FOLDER_TREE_VIEW1 6301
#define IDC_LBL_FOLDER 6302
#define IDC_CMD_NEW_FOLDER 6303
#define IDC_TXT_EXTENSION 6304
// The members of an array follow each other.
#define IDC_OPT_EXTRACT 6310
#define IDC_OPT_EXTRACT_ALL 6311
#define IDC_OPT_EXTRACT_MATCHING 6312
#define IDC_CHK_OPT 6320
#define IDC_CHK_OPT_KEEP_FOLDERS 6321
#define IDC_GRP_FILES 6330
#define IDC_GRP_OPTIONS 6331
#define IDC_LBL_PATTERN 6332
#define IDC_LBL_TREE 6333
