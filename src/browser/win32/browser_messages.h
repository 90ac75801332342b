#pragma once
#include <windows.h>

namespace tovar {

/// Messages that the browser window posts to itself, for what must not happen inside a control's own message.
enum BrowserMessage : UINT {
    kFocusMoved = WM_APP,  ///< the keyboard has come to one of the controls, or left it
    kFolderClosed,         ///< a folder of the tree was closed
    kOpenBandMenu,     ///< a menu of the band: wParam its letter, or 0; lParam else its identifier, and MenuBand::By
    kShowContextMenu,  ///< wParam, lParam: as of WM_CONTEXTMENU
    kRunCommand,       ///< wParam: the command
    kOpenRow,          ///< the row that was double-clicked
    kSortRows,         ///< wParam: the column; puts many rows in order
    kDragRows,         ///< wParam: the DragButton
    kFinishDrop,       ///< the shell has told where rows were dropped
    kShowFolder,       ///< wParam: the folder; the same for a folder that was selected
};

}  // namespace tovar
