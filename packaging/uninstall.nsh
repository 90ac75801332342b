; Taking everything away, and nothing else.

Var RemoveSettings ; yes when the user wants that
Var Kept           ; names of what stays in the folder

Function un.onInit
  StrCpy $Code 0
  StrCpy $RemoveSettings no
  ReadRegStr $0 HKLM "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $0 == $INSTDIR
    !insertmacro UseScope machine
  ${Else}
    !insertmacro UseScope user
  ${EndIf}
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/RemoveSettings" $1
  ${IfNot} ${Errors}
    StrCpy $RemoveSettings yes
  ${EndIf}
  Call un.MayWriteForAll
  Pop $1
  ${If} $Scope == machine
  ${AndIf} $1 = 0
    ${If} ${Silent}
      !insertmacro Refuse ${CODE_NO_RIGHTS} ""
    ${EndIf}
    Push $EXEPATH
    Push "$0 _?=$INSTDIR"
    Call un.RunElevated
    Pop $0
    ${If} $0 == ""
      StrCpy $0 ${CODE_NO_RIGHTS}
    ${EndIf}
    SetErrorLevel $0
    Quit
  ${EndIf}
  Call un.LockOutOthers
FunctionEnd

!macro un.CheckUse PATH SIZE CRC RULE
  ${If} $Code = 0
    Push "$INSTDIR\${PATH}"
    Call un.Obstacle
    Pop $0
    ${If} $0 = 32
      StrCpy $Code ${CODE_IN_USE}
      StrCpy $Message "$INSTDIR\${PATH} is being used by another program."
    ${ElseIf} $0 <> 0
      StrCpy $Code ${CODE_NOT_REMOVED}
      StrCpy $Message "$INSTDIR\${PATH} cannot be removed (error $0)."
    ${EndIf}
  ${EndIf}
!macroend

; Nothing has been touched yet when a program is in the way: it can be closed.
Function un.CheckAllUse
  ${Do}
    StrCpy $Code 0
    !insertmacro ForEachFile un.CheckUse
    ${If} $Code != ${CODE_IN_USE}
      ${Break}
    ${EndIf}
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$Message$\r$\nClose it, then try again." /SD IDCANCEL IDRETRY again
    ${Break}
    again:
  ${Loop}
FunctionEnd

!macro un.ForgetIdentity ID
  DeleteRegKey SHCTX "Software\Classes\CLSID\${ID}"
  DeleteRegKey SHCTX "Software\Classes\Interface\${ID}"
  DeleteRegKey SHCTX "Software\Classes\TypeLib\${ID}"
!macroend

; Another copy of the component may have been registered in the meantime: that stays.
Function un.Unregister
  Call un.RegisteredDll
  Pop $0
  ${If} $0 != "$INSTDIR\TovarEx.dll"
    Return
  ${EndIf}
  Push "$INSTDIR\TovarEx.dll"
  Push 0
  Call un.CallDllInstall
  Pop $0
  ${If} $0 <> 0 ; it is damaged, or gone
    DeleteRegKey SHCTX "Software\Classes\TovarEx.cTovar"
    !insertmacro ForEachIdentity un.ForgetIdentity
  ${EndIf}
FunctionEnd

; A file that a user has put in the place of ours is not ours.
!macro un.RemoveFile PATH SIZE CRC RULE
  ${If} ${FileExists} "$INSTDIR\${PATH}"
    !if ${RULE} == user
      Push "$INSTDIR\${PATH}"
      Call un.Identity
      Pop $0
      ${If} $0 == "${SIZE}|${CRC}"
        Delete "$INSTDIR\${PATH}"
      ${EndIf}
    !else
      Delete "$INSTDIR\${PATH}"
    !endif
    !if ${RULE} == ours
      ${If} ${FileExists} "$INSTDIR\${PATH}"
        StrCpy $Code ${CODE_NOT_REMOVED}
        StrCpy $Message "$INSTDIR\${PATH} could not be removed."
      ${EndIf}
    !endif
  ${EndIf}
!macroend

!macro un.RemoveFolder PATH
  RMDir "$INSTDIR\${PATH}"
!macroend

; The one value that is the component's, and the host's keys only when nothing is left in them.
!macro un.RemoveSetting HIVE
  DeleteRegValue ${HIVE} "${SETTING_KEY}" "${SETTING_VALUE}"
  DeleteRegKey /ifempty ${HIVE} "${SETTING_KEY}"
  DeleteRegKey /ifempty ${HIVE} "SOFTWARE\Vantrel"
!macroend

; What a user has chosen in the libraries' own dialogs.
!macro un.RemoveLibrarySettings PATH SIZE CRC RULE
  ${GetBaseName} "${PATH}" $1
  DeleteRegKey HKCU "${LIBRARIES_KEY}\$1"
!macroend

; The component writes it for the user and, where it may, for the machine. An installation that stays keeps its own.
Function un.RemoveSettingWhereOurs
  ReadRegStr $0 HKCU "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $0 == ""
    !insertmacro un.RemoveSetting HKCU
    !insertmacro ForEachFile un.RemoveLibrarySettings
    DeleteRegKey /ifempty HKCU "${LIBRARIES_KEY}"
    DeleteRegKey /ifempty HKCU "Software\TovarEx"
  ${EndIf}
  ReadRegStr $0 HKLM "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $0 == ""
    !insertmacro un.RemoveSetting HKLM
  ${EndIf}
FunctionEnd

; Names what is left in the folder in $Kept.
Function un.ListKept
  StrCpy $Kept ""
  StrCpy $2 0
  FindFirst $0 $1 "$INSTDIR\*.*"
  ${DoUntil} $1 == ""
    ${If} $1 != "."
    ${AndIf} $1 != ".."
    ${AndIf} $1 != "uninstall.exe"
      IntOp $2 $2 + 1
      ${If} $2 <= 10
        StrCpy $Kept "$Kept$\r$\n$1"
      ${ElseIf} $2 = 11
        StrCpy $Kept "$Kept$\r$\n..."
      ${EndIf}
    ${EndIf}
    FindNext $0 $1
  ${Loop}
  FindClose $0
FunctionEnd

; To be able to remove itself, the uninstaller runs from a copy in a folder for temporary files. The system removes that
; copy at its next start, and only for administrators; so another program waits for our end and does it.
Function un.RemoveCopy
  ${GetFileName} "$EXEDIR" $0
  StrCpy $0 $0 4
  ${If} $0 == "~nsu"
    SetOutPath "$TEMP"
    ExecShell open "$SYSDIR\cmd.exe" '/d /c ping -n 3 127.0.0.1 >nul & del /q "$EXEPATH" & rd "$EXEDIR"' SW_HIDE
  ${EndIf}
FunctionEnd

Function un.onGUIEnd
  Call un.RemoveCopy
FunctionEnd

Function un.Stop
  SetErrorLevel $Code
  MessageBox MB_OK|MB_ICONSTOP "$Message" /SD IDOK
  ${If} ${Silent}
    Call un.RemoveCopy
    Quit
  ${EndIf}
  SetDetailsPrint textonly
  Abort "Stopped."
FunctionEnd

Function un.Uninstall
  ; Started where nothing of ours is, or for the second time: then no file here is ours.
  ${IfNot} ${FileExists} "$INSTDIR\${LIST}"
    ${If} ${Silent}
      Call un.RemoveCopy
    ${EndIf}
    Return
  ${EndIf}
  Call un.CheckAllUse
  ${If} $Code <> 0
    Call un.Stop
  ${EndIf}
  Call un.Unregister
  !insertmacro ForEachFile un.RemoveFile
  !insertmacro ForEachFolder un.RemoveFolder
  SetOutPath "$TEMP"
  RMDir /r "$INSTDIR\${WORK}"
  ${If} $Code <> 0
    Call un.Stop ; it can be called again
  ${EndIf}
  StrCpy $3 ""
  ReadRegStr $0 SHCTX "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $0 == $INSTDIR
    ReadRegStr $3 SHCTX "${UNINSTALL_KEY}" "UppermostFolder"
    Delete "${SHORTCUT}"
    DeleteRegKey SHCTX "${UNINSTALL_KEY}"
  ${EndIf}
  ${If} $RemoveSettings == yes
    Call un.RemoveSettingWhereOurs
  ${EndIf}
  Delete "$INSTDIR\${LIST}"
  Delete "$INSTDIR\uninstall.exe"
  Call un.ListKept
  Push $INSTDIR
  Push $3
  Call un.RemoveFolders
  ${If} $Kept != ""
    MessageBox MB_OK|MB_ICONINFORMATION "These did not come with ${NAME} and stay in $INSTDIR:$\r$\n$Kept" /SD IDOK
  ${EndIf}
  ${If} ${Silent}
    Call un.RemoveCopy
  ${EndIf}
FunctionEnd
