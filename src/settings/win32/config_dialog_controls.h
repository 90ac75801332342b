#pragma once

// Numbers of the configuration dialog and of its controls, for code and resource scripts.

#define IDD_CONFIG 660

// The members of an array follow each other.
#define IDC_CHK_PACKER 6600
#define IDC_CHK_PACKER_LHA 6601
#define IDC_CHK_PACKER_CAB 6602
#define IDC_CHK_UNPACKER 6610
#define IDC_CHK_UNPACKER_RAR 6611
#define IDC_CHK_UNPACKER_ARJ 6612
#define IDC_CHK_UNPACKER_LHA 6613
#define IDC_CHK_UNPACKER_CAB 6614
#define IDC_CHK_UNPACKER_TAR 6615
#define IDC_CHK_UNPACKER_ACE 6616
#define IDC_GRP_USE_PACKER 6620
#define IDC_GRP_USE_UNPACKER 6621
#define IDC_LBL_HINT 6622
#define IDC_CMD_DETAILS 6623
#define IDC_LBL_LIBRARIES 6624
#define IDC_LST_LIBRARIES 6625
