; Putting the files into their places, all or none.

Var Previous      ; folder of the installation that is there for the same scope, or empty
Var PreviousMade  ; the uppermost folder that it made
Var Other         ; when installing for everybody: folder of this user's own installation, or empty
Var OtherMade
Var Made          ; the uppermost folder that this installation makes, or empty
Var Identity
Var Rule
Var Registered    ; yes from when the class is registered
Var WasRegistered ; the DLL that was registered before, or empty
Var Open          ; yes while there is something to take back

!macro SetFailure CODE TEXT
  StrCpy $Code ${CODE}
  StrCpy $Message "${TEXT}"
!macroend

; Everything that is installed but cannot be in the list: the list itself, and the uninstaller.
!macro ForEachInstalled ACTION
  !insertmacro ForEachFile ${ACTION}
  !insertmacro ${ACTION} "${LIST}" 0 0 ours
  !insertmacro ${ACTION} "uninstall.exe" 0 0 ours
!macroend

Function FindWhatIsThere
  ReadRegStr $Previous SHCTX "${UNINSTALL_KEY}" "InstallLocation"
  ReadRegStr $PreviousMade SHCTX "${UNINSTALL_KEY}" "UppermostFolder"
  StrCpy $Other ""
  ${If} $Scope == machine
    ReadRegStr $Other HKCU "${UNINSTALL_KEY}" "InstallLocation"
    ReadRegStr $OtherMade HKCU "${UNINSTALL_KEY}" "UppermostFolder"
  ${EndIf}
  Call RegisteredDll
  Pop $WasRegistered
  ; which folders will be new
  StrCpy $Made ""
  StrCpy $0 $INSTDIR
  ${DoUntil} ${FileExists} "$0\*.*"
    StrCpy $Made $0
    ${GetParent} $0 $0
    ${If} $0 == ""
      ${Break}
    ${EndIf}
  ${Loop}
FunctionEnd

!macro MakeFolder PATH
  CreateDirectory "$INSTDIR\${WORK}\new\${PATH}"
!macroend

; One by one, as the order in which a folder is read is not the same everywhere.
!macro UnpackFile PATH SIZE CRC RULE
  File "/oname=$INSTDIR\${WORK}\new\${PATH}" "${STAGE}/${PATH}"
!macroend

Function Unpack
  !insertmacro SetFailure ${CODE_NOT_WRITTEN} "The files could not be written to $INSTDIR."
  SetOverwrite try
  ClearErrors
  CreateDirectory "$INSTDIR\${WORK}\new"
  ${If} ${Errors}
    Return
  ${EndIf}
  !insertmacro ForEachFolder MakeFolder
  !insertmacro ForEachFile UnpackFile
  !insertmacro UnpackFile "${LIST}" 0 0 ours
  WriteUninstaller "$INSTDIR\${WORK}\new\uninstall.exe"
  ${IfNot} ${Errors}
    StrCpy $Code 0
  ${EndIf}
FunctionEnd

; Whether $Path may be replaced. A user's own file stays: then the new one leaves the work folder.
Function CheckPlace
  ${If} $Code != 0
  ${OrIfNot} ${FileExists} "$INSTDIR\$Path"
    Return
  ${EndIf}
  Push "$INSTDIR\$Path"
  Call Identity
  Pop $0
  Call AskList
  ${If} $Path == "${LIST}"
  ${OrIf} $Path == "uninstall.exe"
    ; ours when there is a list at all
    ${If} ${FileExists} "$INSTDIR\${LIST}"
      StrCpy $Listed $0
    ${EndIf}
  ${EndIf}
  ${If} $0 != ""
  ${AndIf} $0 != $Identity
    ${If} $Rule == user
    ${AndIf} $0 != $Listed
      Delete "$INSTDIR\${WORK}\new\$Path"
      Return
    ${ElseIf} $Listed == ""
      !insertmacro SetFailure ${CODE_FOLDER} "$INSTDIR has a file $Path that does not belong to ${NAME}. Choose another folder."
      Return
    ${EndIf}
  ${EndIf}
  Push "$INSTDIR\$Path"
  Call CheckUse
FunctionEnd

; Stack: path of a file that is going to be replaced or removed
Function CheckUse
  Exch $1
  Push $1
  Call Obstacle
  Pop $0
  ${If} $0 = 32
    !insertmacro SetFailure ${CODE_IN_USE} "$1 is being used by another program."
  ${ElseIf} $0 <> 0
    !insertmacro SetFailure ${CODE_NOT_WRITTEN} "$1 cannot be replaced (error $0)."
  ${EndIf}
  Pop $1
FunctionEnd

!macro CheckPlaceOf PATH SIZE CRC RULE
  StrCpy $Path "${PATH}"
  StrCpy $Identity "${SIZE}|${CRC}"
  StrCpy $Rule ${RULE}
  Call CheckPlace
!macroend

!macro CheckUseIn PATH SIZE CRC RULE
  ${If} $Code = 0
    Push "$R8\${PATH}"
    Call CheckUse
  ${EndIf}
!macroend

; $R8: folder of an installation that is going to be removed
Function CheckUseThere
  ${If} $R8 != ""
  ${AndIf} $R8 != $INSTDIR
    !insertmacro ForEachFile CheckUseIn
  ${EndIf}
FunctionEnd

; Nothing has been touched yet when a program is in the way: it can be closed.
Function CheckPlaces
  ${Do}
    StrCpy $Code 0
    !insertmacro ForEachInstalled CheckPlaceOf
    StrCpy $R8 $Previous
    Call CheckUseThere
    StrCpy $R8 $Other
    Call CheckUseThere
    ${If} $Code != ${CODE_IN_USE}
      ${Break}
    ${EndIf}
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$Message$\r$\nClose it, then try again." /SD IDCANCEL IDRETRY again
    ${Break}
    again:
  ${Loop}
FunctionEnd

!macro TellOurs PATH SIZE CRC RULE
  ${If} $Line == "${PATH}"
    StrCpy $R9 yes
  ${EndIf}
!macroend

; Moves aside what the version that is there has brought and this one does not.
Function MoveLeftovers
  ClearErrors
  FileOpen $ListFile "$INSTDIR\${LIST}" r
  ${If} ${Errors}
    Return
  ${EndIf}
  ${Do}
    Call ReadListLine
    ${If} $Line == ""
    ${OrIf} $Code != 0
      ${Break}
    ${EndIf}
    StrCpy $R9 no
    !insertmacro ForEachInstalled TellOurs
    ${If} $R9 == no
    ${AndIf} ${FileExists} "$INSTDIR\$Line"
      Push "$INSTDIR\$Line"
      Call Identity
      Pop $0
      ${If} $ListedRule != user
      ${OrIf} $0 == $Listed
        StrCpy $Path $Line
        Call MoveAside
        ${GetParent} "$INSTDIR\$Path" $0
        ${If} $0 != $INSTDIR
          RMDir "$0" ; when that was its last file
        ${EndIf}
      ${EndIf}
    ${EndIf}
  ${Loop}
  FileClose $ListFile
FunctionEnd

Function PutInPlace
  ${If} $Code != 0
  ${OrIfNot} ${FileExists} "$INSTDIR\${WORK}\new\$Path"
    Return
  ${EndIf}
  ${If} ${FileExists} "$INSTDIR\$Path"
    Call MoveAside
    ${If} $Code != 0
      Return
    ${EndIf}
  ${EndIf}
  !insertmacro WriteJournal P
  ${GetParent} "$INSTDIR\$Path" $R0
  CreateDirectory "$R0"
  ClearErrors
  Rename "$INSTDIR\${WORK}\new\$Path" "$INSTDIR\$Path"
  ${If} ${Errors}
    !insertmacro SetFailure ${CODE_NOT_WRITTEN} "$INSTDIR\$Path could not be written."
  ${EndIf}
FunctionEnd

!macro PutInPlaceOf PATH SIZE CRC RULE
  StrCpy $Path "${PATH}"
  Call PutInPlace
!macroend

Function Register
  Push "$INSTDIR\TovarEx.dll"
  Push 1
  Call CallDllInstall
  Pop $0
  ${If} $0 = 0
    StrCpy $Registered yes
  ${Else}
    IntFmt $0 "0x%08X" $0
    !insertmacro SetFailure ${CODE_NOT_REGISTERED} "The component could not be registered ($0)."
  ${EndIf}
FunctionEnd

; What Apps & features shows.
Function WriteEntry
  ClearErrors
  ${If} $Scope == machine
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayName" "${NAME} (all users)"
  ${Else}
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayName" "${NAME}"
  ${EndIf}
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\uninstall.exe"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "Publisher" "TovarEx project"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "UppermostFolder" "$Made"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "EstimatedSize" ${SIZE}
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoRepair" 1
  ${If} ${Errors}
    !insertmacro SetFailure ${CODE_NOT_REGISTERED} "The entry among the installed programs could not be written."
    ${If} $Previous == ""
      DeleteRegKey SHCTX "${UNINSTALL_KEY}"
    ${EndIf}
  ${EndIf}
FunctionEnd

; Makes everything as it was.
Function TakeBack
  StrCpy $Open no
  ${If} $Registered == yes
    Push "$INSTDIR\TovarEx.dll"
    Push 0
    Call CallDllInstall
    Pop $0
  ${EndIf}
  Call TakeBackFiles
  ${If} $WasRegistered != ""
  ${AndIf} ${FileExists} "$WasRegistered"
    Push $WasRegistered
    Push 1
    Call CallDllInstall
    Pop $0
  ${EndIf}
  ${If} $Made != ""
    Push $INSTDIR
    Push $Made
    Call RemoveFolders
  ${EndIf}
FunctionEnd

; Runs another installation's uninstaller. Stack: the uppermost folder that it made, its folder; result: exit code
Function RemoveInstallation
  Exch $0 ; uppermost
  Exch
  Exch $1 ; folder
  Push $2
  StrCpy $2 0
  ${If} ${FileExists} "$1\uninstall.exe"
    ${GetParameters} $2
    ClearErrors
    ${GetOptions} $2 "/RemoveSettings" $2
    ${If} ${Errors}
      ExecWait '"$1\uninstall.exe" /S /Child _?=$1' $2
    ${Else}
      ExecWait '"$1\uninstall.exe" /S /Child /RemoveSettings _?=$1' $2
    ${EndIf}
    ${If} $2 == 0
      Delete "$1\uninstall.exe" ; it cannot remove itself while it runs there
      Push $1
      Push $0
      Call RemoveFolders
    ${EndIf}
  ${EndIf}
  StrCpy $0 $2
  Pop $2
  Pop $1
  Exch $0
FunctionEnd

; The user's own installation in the very folder that now belongs to everybody: only what points to it goes.
Function ForgetOwn
  !insertmacro UseScope user
  Push "$INSTDIR\TovarEx.dll"
  Push 0
  Call CallDllInstall
  Pop $0
  Delete "${SHORTCUT}"
  DeleteRegKey HKCU "${UNINSTALL_KEY}"
  !insertmacro UseScope machine
FunctionEnd

Function Finish
  StrCpy $Open no
  SetOutPath "$TEMP"
  RMDir /r "$INSTDIR\${WORK}"
  ${If} $NoShortcut != yes
    SetOutPath "$INSTDIR" ; where the program starts
    CreateShortCut "${SHORTCUT}" "$INSTDIR\SampleHost.exe"
    SetOutPath "$TEMP"
  ${EndIf}
  ${If} $Previous != ""
  ${AndIf} $Previous != $INSTDIR
    Push $Previous
    Push $PreviousMade
    Call RemoveInstallation
    Pop $0
  ${EndIf}
  ${If} $Other == $INSTDIR
    Call ForgetOwn
  ${ElseIf} $Other != ""
    Push $Other
    Push $OtherMade
    Call RemoveInstallation
    Pop $0
  ${EndIf}
FunctionEnd

Function Install
  StrCpy $Code 0
  StrCpy $Registered no
  Call TakeBackFiles ; of a run that was interrupted
  Call FindWhatIsThere
  StrCpy $Open yes
  Call Unpack
  ${If} $Code = 0
    Call CheckPlaces
  ${EndIf}
  ${If} $Code = 0
    Call MoveLeftovers
  ${EndIf}
  ${If} $Code = 0
    !insertmacro ForEachInstalled PutInPlaceOf
  ${EndIf}
  ${If} $Code = 0
    Call Register
  ${EndIf}
  ${If} $Code = 0
    ${If} $Made == ""
    ${AndIf} $Previous == $INSTDIR
      StrCpy $Made $PreviousMade
      Call WriteEntry
      StrCpy $Made ""
    ${Else}
      Call WriteEntry
    ${EndIf}
  ${EndIf}
  ${If} $Code = 0
    Call Finish
    Return
  ${EndIf}
  Call TakeBack
  SetErrorLevel $Code
  MessageBox MB_OK|MB_ICONSTOP "$Message$\r$\n$\r$\nNothing has been changed." /SD IDOK
  ${If} ${Silent}
    Quit
  ${EndIf}
  SetDetailsPrint textonly
  Abort "Stopped."
FunctionEnd

; When the system stops the unpacking, say, because the disk is full.
Function .onInstFailed
  ${If} $Open == yes
    Call TakeBack
    SetErrorLevel ${CODE_NOT_WRITTEN}
  ${EndIf}
FunctionEnd
