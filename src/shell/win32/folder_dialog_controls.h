#pragma once

// Numbers of the folder dialogs and of their controls, for code and resource scripts.

#define IDD_NEW_FOLDER 620
#define IDD_SELECT 621

#define IDC_TXT_NAME 6201
#define IDC_WEN_FOLDER_BROWSER 6211
