; What the user sees, and the switches that say it beforehand.

!define MUI_ICON "${NSISDIR}\Contrib\Graphics\Icons\box-install.ico"
!define MUI_UNICON "${NSISDIR}\Contrib\Graphics\Icons\box-uninstall.ico"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_NOAUTOCLOSE
Page custom ScopePage ScopePageLeave
!define MUI_DIRECTORYPAGE_TEXT_TOP "The component, its archiver libraries and the sample host go into this folder."
!define MUI_PAGE_CUSTOMFUNCTION_SHOW FolderPageShow
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE FolderPageLeave
!insertmacro MUI_PAGE_DIRECTORY
!define MUI_INSTFILESPAGE_FINISHHEADER_TEXT "${NAME} is installed"
!define MUI_INSTFILESPAGE_FINISHHEADER_SUBTEXT "Hosts and scripts find it from now on."
!insertmacro MUI_PAGE_INSTFILES
UninstPage custom un.AskPage un.AskPageLeave
!define MUI_INSTFILESPAGE_FINISHHEADER_TEXT "${NAME} is removed"
!define MUI_INSTFILESPAGE_FINISHHEADER_SUBTEXT " "
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

Var UserButton
Var MachineButton
Var SettingsBox

; Where it goes when nobody says: where it is, or the usual place.
Function ChooseFolder
  ${If} $FolderGiven == yes
    Return
  ${EndIf}
  ReadRegStr $INSTDIR SHCTX "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $INSTDIR == ""
    ${If} $Scope == machine
      StrCpy $INSTDIR "$PROGRAMFILES32\${NAME}"
    ${Else}
      StrCpy $INSTDIR "$LOCALAPPDATA\Programs\${NAME}"
    ${EndIf}
  ${EndIf}
FunctionEnd

; /D=folder stands last and needs no quotes; a caller that quotes it all the same is understood too.
Function ReadFolder
  ${If} $INSTDIR == ""
    System::Call 'kernel32::GetCommandLineW() p .r0'
    System::Call 'shell32::CommandLineToArgvW(p r0, *i .r1) p .r2'
    StrCpy $3 $2
    ${For} $4 1 $1
      System::Call '*$3(w .r5)'
      StrCpy $6 $5 3
      ${If} $6 == "/D="
        StrCpy $INSTDIR $5 "" 3
      ${EndIf}
      IntPtrOp $3 $3 + 4
    ${Next}
    System::Call 'kernel32::LocalFree(p r2)'
  ${EndIf}
  StrCpy $0 $INSTDIR 1
  ${If} $0 == '"'
    StrCpy $INSTDIR $INSTDIR "" 1
  ${EndIf}
  StrCpy $0 $INSTDIR 1 -1
  ${If} $0 == '"'
    StrCpy $INSTDIR $INSTDIR -1
  ${EndIf}
  StrCpy $0 $INSTDIR 1 -1
  ${If} $0 == "\"
    StrCpy $INSTDIR $INSTDIR -1
  ${EndIf}
  ${If} $INSTDIR != ""
    StrCpy $FolderGiven yes
  ${EndIf}
FunctionEnd

; Result on the stack: 1 for a full path of a folder below a root.
Function IsFullPath
  Push $0
  Push $1
  Push $2
  StrCpy $0 $INSTDIR 2
  StrCpy $1 $INSTDIR 2 1
  StrLen $2 $INSTDIR
  ${If} $1 == ":\"
  ${AndIf} $2 > 3
    StrCpy $0 1
  ${ElseIf} $0 == "\\"
  ${AndIf} $2 > 6
    StrCpy $0 1
  ${Else}
    StrCpy $0 0
  ${EndIf}
  Pop $2
  Pop $1
  Exch $0
FunctionEnd

; A folder that belongs to everybody's installation cannot be one user's as well. Result on the stack: 1 when it does.
Function IsEverybodys
  Push $0
  ReadRegStr $0 HKLM "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $Scope == user
  ${AndIf} $0 == $INSTDIR
    StrCpy $0 1
  ${Else}
    StrCpy $0 0
  ${EndIf}
  Exch $0
FunctionEnd

; setup /Uninstall: removes the installation of the scope, waits for it and hands on its exit code.
Function UninstallInstead
  ReadRegStr $0 SHCTX "${UNINSTALL_KEY}" "InstallLocation"
  ReadRegStr $1 SHCTX "${UNINSTALL_KEY}" "UppermostFolder"
  ${If} $0 == ""
    MessageBox MB_OK|MB_ICONINFORMATION "${NAME} is not installed." /SD IDOK
    SetErrorLevel 0
  ${Else}
    Push $0
    Push $1
    Call RemoveInstallation
    Pop $0
    SetErrorLevel $0
  ${EndIf}
  Quit
FunctionEnd

Function .onInit
  ${IfNot} ${AtLeastWin7}
    !insertmacro Refuse 2 "${NAME} needs Windows 7 or newer."
  ${EndIf}
  Call ReadFolder
  ${GetParameters} $R0
  !insertmacro UseScope user
  ClearErrors
  ${GetOptions} $R0 "/CurrentUser" $R1
  ${IfNot} ${Errors}
    StrCpy $ScopeFixed yes
  ${EndIf}
  ClearErrors
  ${GetOptions} $R0 "/AllUsers" $R1
  ${IfNot} ${Errors}
    StrCpy $ScopeFixed yes
    !insertmacro UseScope machine
  ${EndIf}
  ClearErrors
  ${GetOptions} $R0 "/NoShortcut" $R1
  ${IfNot} ${Errors}
    StrCpy $NoShortcut yes
  ${EndIf}
  ${If} $Scope == machine
    Call MayWriteForAll
    Pop $0
    ${If} $0 = 0
      ${If} ${Silent}
        !insertmacro Refuse ${CODE_NO_RIGHTS} ""
      ${EndIf}
      Call GoOnElevated
    ${EndIf}
  ${EndIf}
  Call LockOutOthers
  ClearErrors
  ${GetOptions} $R0 "/Uninstall" $R1
  ${IfNot} ${Errors}
    Call UninstallInstead
  ${EndIf}
  Call ChooseFolder
  Call IsFullPath
  Pop $0
  ${If} $0 = 0
    !insertmacro Refuse ${CODE_FOLDER} "$INSTDIR is not the full path of a folder."
  ${EndIf}
  ${If} ${Silent}
    Call IsEverybodys
    Pop $0
    ${If} $0 = 1
      !insertmacro Refuse ${CODE_FOLDER} ""
    ${EndIf}
  ${EndIf}
FunctionEnd

; Another process with the rights does it; this one waits and hands on its exit code.
Function GoOnElevated
  ${GetParameters} $0
  ${If} $ScopeFixed != yes
    StrCpy $0 "$0 /AllUsers"
  ${EndIf}
  ${If} $FolderGiven == yes
    StrCpy $0 "$0 /D=$INSTDIR"
  ${EndIf}
  Push $EXEPATH
  Push $0
  Call RunElevated
  Pop $0
  ${If} $0 == ""
    ${If} $ScopeFixed != yes
      Return ; refused: the page stays
    ${EndIf}
    StrCpy $0 ${CODE_NO_RIGHTS}
  ${EndIf}
  SetErrorLevel $0
  Quit
FunctionEnd

Function ScopePage
  ${If} $ScopeFixed == yes
    Abort
  ${EndIf}
  !insertmacro MUI_HEADER_TEXT "Install ${NAME} ${VERSION}" "For whom is it?"
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateRadioButton} 0 0 100% 12u "Only for &me"
  Pop $UserButton
  ${NSD_AddStyle} $UserButton ${WS_GROUP}
  ${NSD_CreateLabel} 12u 13u 95% 20u "Needs no administrator's rights."
  Pop $0
  ${NSD_CreateRadioButton} 0 40u 100% 12u "For &everybody who uses this computer"
  Pop $MachineButton
  ${NSD_CreateLabel} 12u 53u 95% 20u "Windows asks for an administrator's consent."
  Pop $0
  ${If} $Scope == machine
    ${NSD_Check} $MachineButton
    ${NSD_SetFocus} $MachineButton
  ${Else}
    ${NSD_Check} $UserButton
    ${NSD_SetFocus} $UserButton
  ${EndIf}
  nsDialogs::Show
FunctionEnd

Function ScopePageLeave
  ${NSD_GetState} $MachineButton $0
  ${If} $0 == ${BST_CHECKED}
    Call MayWriteForAll
    Pop $0
    ${If} $0 = 0
      HideWindow
      Call GoOnElevated
      ShowWindow $HWNDPARENT ${SW_SHOW}
      Abort
    ${EndIf}
    !insertmacro UseScope machine
  ${Else}
    !insertmacro UseScope user
  ${EndIf}
  Call ChooseFolder
FunctionEnd

; There is nothing before it when a switch has answered the first page.
Function FolderPageShow
  ${If} $ScopeFixed == yes
    GetDlgItem $0 $HWNDPARENT 3
    ShowWindow $0 ${SW_HIDE}
  ${EndIf}
FunctionEnd

Function FolderPageLeave
  Call IsFullPath
  Pop $0
  ${If} $0 = 0
    MessageBox MB_OK|MB_ICONEXCLAMATION "Give the full path of a folder."
    Abort
  ${EndIf}
  Call IsEverybodys
  Pop $0
  ${If} $0 = 1
    MessageBox MB_OK|MB_ICONEXCLAMATION "This folder belongs to the installation for everybody. Choose another one."
    Abort
  ${EndIf}
FunctionEnd

Function un.AskPage
  !insertmacro MUI_HEADER_TEXT "Remove ${NAME} ${VERSION}" "The component and everything that came with it is removed."
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateLabel} 0 0 100% 24u "${NAME} will be removed from $INSTDIR"
  Pop $0
  ${NSD_CreateCheckBox} 0 32u 100% 12u "Remove my &settings too: the allowed kinds of archives, and the libraries' options"
  Pop $SettingsBox
  ${If} $RemoveSettings == yes
    ${NSD_Check} $SettingsBox
  ${EndIf}
  GetDlgItem $0 $HWNDPARENT 1
  SendMessage $0 ${WM_SETTEXT} 0 "STR:&Remove"
  nsDialogs::Show
FunctionEnd

Function un.AskPageLeave
  ${NSD_GetState} $SettingsBox $0
  ${If} $0 == ${BST_CHECKED}
    StrCpy $RemoveSettings yes
  ${Else}
    StrCpy $RemoveSettings no
  ${EndIf}
FunctionEnd
